#include "host/job/option_syntax.hpp"

#include <algorithm>

#include <strings.h>

namespace tandemtrim::host {
namespace {

constexpr std::string_view kSpace = "\f\n\r\t\v ";

bool isSpace(char character) { return kSpace.find(character) != std::string_view::npos; }

// Parses the text of an -o by libcups's rules and returns the first mistake, which libcups would ignore.
class SyntaxCheck {
 public:
  explicit SyntaxCheck(std::string_view text) : rest_(text) {}

  std::optional<std::string> mistake() {
    if (rest_.starts_with('{') && rest_.ends_with('}')) rest_ = rest_.substr(1, rest_.size() - 2);
    skip(kSpace);
    if (rest_.empty()) return "it contains no option";
    while (!rest_.empty()) {
      const auto keyword = rest_.substr(0, rest_.find_first_of("=\f\n\r\t\v "));
      rest_.remove_prefix(keyword.size());
      skip(kSpace);
      const bool hasValue = rest_.starts_with('=');
      // A keyword alone is a switch; "no" before it turns it off.
      if (keyword.empty() || (!hasValue && strcasecmp(std::string(keyword).c_str(), "no") == 0))
        return "a keyword is empty";
      if (hasValue) {
        rest_.remove_prefix(1);
        if (auto found = mistakeInValue()) return found;
      }
      skip(kSpace);
    }
    return std::nullopt;
  }

 private:
  void skip(std::string_view characters) {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(characters), rest_.size()));
  }

  // One character, or a backslash and the character that it escapes.
  void skipCharacter() { rest_.remove_prefix(rest_[0] == '\\' && rest_.size() > 1 ? 2 : 1); }

  std::optional<std::string> mistakeInValue() {
    while (!rest_.empty() && !isSpace(rest_[0])) {
      if (rest_[0] == ',') {
        rest_.remove_prefix(1);
      } else if (rest_[0] == '\'' || rest_[0] == '"') {
        if (!skipQuoted()) return "a quote is not closed";
      } else if (rest_[0] == '{') {
        if (!skipCollection()) return "a brace is not closed";
      } else {
        while (!rest_.empty() && !isSpace(rest_[0])) skipCharacter();
      }
    }
    return std::nullopt;
  }

  bool skipQuoted() {
    const char quote = rest_[0];
    rest_.remove_prefix(1);
    while (!rest_.empty() && rest_[0] != quote) skipCharacter();
    if (rest_.empty()) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool skipCollection() {
    for (int depth = 0; !rest_.empty();) {
      if (rest_[0] == '{') ++depth;
      const bool ended = rest_[0] == '}' && --depth == 0;
      skipCharacter();
      if (ended) return true;
    }
    return false;
  }

  std::string_view rest_;
};

}  // namespace

std::optional<std::string> optionSyntaxMistake(std::string_view text) { return SyntaxCheck(text).mistake(); }

}  // namespace tandemtrim::host
