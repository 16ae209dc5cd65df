#include "adapters/linux/files/strings_table.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "adapters/linux/files/strings_decoding.hpp"
#include "platform/utf8.hpp"

namespace tandemtrim::platform::linux {
namespace {

constexpr bool isBlank(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

constexpr bool isWordCharacter(char character) {
  constexpr std::string_view kMarks = "_$/:.-";
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || kMarks.find(character) != std::string_view::npos;
}

// The characters that a letter after a backslash means; any other character means itself.
constexpr std::array kEscapes{std::pair{'a', '\a'}, std::pair{'b', '\b'}, std::pair{'f', '\f'},
                              std::pair{'n', '\n'}, std::pair{'r', '\r'}, std::pair{'t', '\t'},
                              std::pair{'v', '\v'}};

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  bool parse(StringsTable& table) {
    for (skipBlanks(); !rest().empty(); skipBlanks()) {
      if (!entry(table)) return false;
    }
    return true;
  }

  // How far the parser has read; after a fault, where it stopped.
  [[nodiscard]] std::size_t offset() const { return offset_; }

 private:
  [[nodiscard]] std::string_view rest() const { return text_.substr(offset_); }

  bool take(std::string_view token) {
    if (!rest().starts_with(token)) return false;
    offset_ += token.size();
    return true;
  }

  // Stops at an unterminated comment. That is then a fault, since no entry begins or continues with a
  // comment.
  void skipBlanks() {
    for (;;) {
      while (offset_ < text_.size() && isBlank(text_[offset_])) ++offset_;
      if (rest().starts_with("//")) {
        offset_ = std::min(text_.find('\n', offset_), text_.size());
      } else if (rest().starts_with("/*")) {
        const auto end = text_.find("*/", offset_ + 2);
        if (end == std::string_view::npos) return;
        offset_ = end + 2;
      } else {
        return;
      }
    }
  }

  bool entry(StringsTable& table) {
    std::string key;
    if (!string(key)) return false;
    skipBlanks();
    std::string value = key;
    if (take("=")) {
      value.clear();
      skipBlanks();
      if (!string(value)) return false;
      skipBlanks();
    }
    table.insert_or_assign(std::move(key), std::move(value));
    return take(";");
  }

  bool string(std::string& out) {
    for (const auto* const mark : {"\"", "'"}) {
      if (take(mark)) return quoted(*mark, out);
    }
    const auto word = rest();
    const auto* const end = std::find_if_not(word.begin(), word.end(), isWordCharacter);
    out.assign(word.begin(), end);
    offset_ += out.size();
    return !out.empty();
  }

  // An unterminated string is a fault at its beginning.
  bool quoted(char mark, std::string& out) {
    const auto begin = offset_;
    for (;;) {
      const auto text = rest();
      const auto* const stop = std::find_if(text.begin(), text.end(), [mark](char character) {
        return character == mark || character == '\\';
      });
      out.append(text.begin(), stop);
      offset_ += static_cast<std::size_t>(stop - text.begin());
      if (stop == text.end()) break;
      ++offset_;
      if (*stop == mark) return true;
      if (!escape(out)) return false;
    }
    offset_ = begin;
    return false;
  }

  // At the end of the text there is nothing to escape; quoted() then finds the string unterminated.
  bool escape(std::string& out) {
    if (take("U") || take("u")) return unicode(out);
    char32_t octal = 0;
    if (number(8, 3, octal)) return appendPoint(out, octal);
    if (rest().empty()) return true;
    const char character = text_[offset_++];
    const auto* const known = std::find_if(kEscapes.begin(), kEscapes.end(),
                                           [character](const auto& pair) { return pair.first == character; });
    out.push_back(known == kEscapes.end() ? character : known->second);
    return true;
  }

  bool unicode(std::string& out) {
    char32_t unit = 0;
    if (!number(16, 4, unit)) return false;
    if (isHighSurrogate(unit)) {
      char32_t low = 0;
      if (!(take("\\U") || take("\\u")) || !number(16, 4, low) || !isLowSurrogate(low)) return false;
      unit = joinSurrogates(unit, low);
    }
    return appendPoint(out, unit);
  }

  // Reads a number of at most `limit` digits; false if there is no digit.
  bool number(int base, std::size_t limit, char32_t& value) {
    const auto digits = rest().substr(0, limit);
    std::uint32_t read = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), read, base);
    if (result.ec != std::errc()) return false;
    offset_ += static_cast<std::size_t>(result.ptr - digits.data());
    value = read;
    return true;
  }

  // A text must contain neither NUL nor an unpaired surrogate.
  static bool appendPoint(std::string& out, char32_t point) {
    if (point == 0 || isLowSurrogate(point)) return false;
    appendUtf8(out, point);
    return true;
  }

  std::string_view text_;
  std::size_t offset_ = 0;
};

}  // namespace

std::optional<StringsTable> parseStringsTable(std::string_view bytes, std::size_t* line) {
  const auto decoded = decodeText(bytes);
  const std::string_view text = decoded.text;
  Parser parser(text);
  StringsTable table;
  if (decoded.whole && parser.parse(table)) return table;
  const auto sound = text.substr(0, decoded.whole ? parser.offset() : text.size());
  if (line != nullptr) *line = 1 + static_cast<std::size_t>(std::count(sound.begin(), sound.end(), '\n'));
  return std::nullopt;
}

}  // namespace tandemtrim::platform::linux
