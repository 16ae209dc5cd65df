#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <cups/cups.h>

#include "host/fact.hpp"

namespace tandemtrim::host {

/// The fact about an option that would not arrive unchanged.
inline constexpr auto kUnsendable = "the value of [option] cannot be sent: [value]"_fact;

/// One job option: a keyword and its value, exactly as the printer's filters must get them.
struct Option {
  std::string keyword;
  std::string value;

  friend bool operator==(const Option&, const Option&) = default;
};
using Options = std::vector<Option>;

/// Reads options in the form of -o as libcups does, which ignores mistakes.
Options readOptions(const std::string& text);

/// The same for several texts. A later option replaces the value of an earlier one with the same keyword; the
/// keyword keeps its earlier spelling.
Options readOptions(std::span<const std::string> texts);

/// Reads the text of one -o as lp does: "keyword=value keyword='two words' landscape nocollate". Failure with
/// the status of a wrong command line for a text without an option, an empty keyword and an unclosed quote or
/// brace.
Options parseOptions(const std::string& text);

/// Whether two keywords are the same. Letter case is ignored, as in libcups.
bool isSameKeyword(const std::string& one, const std::string& other);

/// Sets an option, replacing an earlier one of the same keyword.
void setOption(Options& options, Option option);

/// The options except those of these keywords.
Options withoutKeywords(Options options, const std::vector<std::string>& keywords);

[[nodiscard]] std::vector<std::string> keywordsOf(const Options& options);

/// The options except those that concern a single job and are never stored: its title, copies, pages, the
/// time of printing and notifications.
Options withoutThoseOfOneJob(Options options);

/// "keyword=value", quoted so that parseOptions and lp -o read it back.
std::string optionText(const Option& option);

/// The text as one word of a shell's command line, safe to show on a terminal: in the quotes $'...' when it
/// contains control characters or invalid UTF-8.
std::string shellWord(const std::string& text);

/// Throws a Failure that names the first option whose value CUPS would lose on the way to the filters.
void refuseLossyValues(const Options& options);

/// The same for a job's title that CUPS would replace.
void refuseLossyTitle(const std::string& title);

/// Options in libcups's form.
class OptionList {
 public:
  explicit OptionList(const Options& options);
  OptionList(const OptionList&) = delete;
  OptionList& operator=(const OptionList&) = delete;
  ~OptionList() { cupsFreeOptions(count_, options_); }

  [[nodiscard]] int count() const noexcept { return count_; }
  [[nodiscard]] cups_option_t* get() const noexcept { return options_; }

 private:
  int count_ = 0;
  cups_option_t* options_ = nullptr;
};

}  // namespace tandemtrim::host
