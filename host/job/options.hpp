#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <cups/cups.h>

#include "host/fact.hpp"

namespace tandemtrim::host {

/// Of an option that would not arrive as it is.
inline constexpr auto kUnsendable = "the value of [option] cannot be sent: [value]"_fact;

/// One job option: a keyword and its value, exactly as the printer's filters are to see them.
struct Option {
  std::string keyword;
  std::string value;

  friend bool operator==(const Option&, const Option&) = default;
};
using Options = std::vector<Option>;

/// Reads options in the form of -o, as libcups does whatever is wrong with them.
Options readOptions(const std::string& text);

/// Reads the text of one -o as lp does: "keyword=value keyword='two words' landscape nocollate". Failure with
/// the status of a wrong command line for a text without an option, an empty keyword and a quote or brace
/// that nothing ends.
Options parseOptions(const std::string& text);

/// Whether two keywords are the same: letter case does not tell them apart, as in libcups.
bool isSameKeyword(const std::string& one, const std::string& other);

/// Sets an option, in the place of an earlier one of the same keyword.
void setOption(Options& options, Option option);

/// The options but those of these keywords.
Options withoutKeywords(Options options, const std::vector<std::string>& keywords);

/// The options but those that are chosen for one job and never kept for others: its title, copies, pages and
/// when it is printed.
Options withoutThoseOfOneJob(Options options);

/// "keyword=value", quoted so that parseOptions and lp -o read it back.
std::string optionText(const Option& option);

/// The text as one word of a shell's command line, which a terminal may show: in the quotes $'...' where it
/// holds control characters or what is not UTF-8.
std::string shellWord(const std::string& text);

/// Raises a Failure that names the first option whose value CUPS would lose on the way to the filters.
void refuseLossyValues(const Options& options);

/// The same for a job's title, which CUPS would replace by one of its own.
void refuseLossyTitle(const std::string& title);

/// The same options in libcups's own form.
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
