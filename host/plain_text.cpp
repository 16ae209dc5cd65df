#include "host/plain_text.hpp"

#include "platform/utf8.hpp"

namespace tandemtrim::host {
namespace {

constexpr std::size_t kLongest = 200;

// The length of the text's first character, in bytes; a byte that is not UTF-8 counts as a character.
std::size_t lengthOfCharacter(std::string_view text) {
  for (std::size_t length = 1; length <= 4 && length <= text.size(); ++length) {
    if (platform::isUtf8(text.substr(0, length))) return length;
  }
  return 1;
}

bool isShowable(std::string_view character) {
  if (character.size() == 1) return character >= " " && character < "\x7F";
  if (character.size() == 2) return character >= "\u00A0";
  // U+2028 to U+202E and U+2066 to U+2069.
  const auto start = character.substr(0, 2);
  const bool isFormatting = (start == "\xE2\x80" && character[2] >= '\xA8' && character[2] <= '\xAE') ||
                            (start == "\xE2\x81" && character[2] >= '\xA6' && character[2] <= '\xA9');
  return !isFormatting;
}

// The beginning of a text, up to the first character boundary at or after this many bytes.
std::string beginning(std::string_view text, std::size_t longest,
                      const std::function<std::string(std::string_view)>& inPlace) {
  std::string plain;
  while (!text.empty() && plain.size() < longest) {
    const auto character = text.substr(0, lengthOfCharacter(text));
    plain += isShowable(character) ? std::string(character) : inPlace(character);
    text.remove_prefix(character.size());
  }
  if (!text.empty()) plain += "...";
  return plain;
}

std::string replacementCharacter(std::string_view /*character*/) { return "\uFFFD"; }

}  // namespace

std::string withoutControls(std::string_view text,
                            const std::function<std::string(std::string_view)>& inPlace) {
  return beginning(text, std::string::npos, inPlace);
}

std::string plainText(std::string_view text) { return withoutControls(text, replacementCharacter); }

std::string shortText(std::string_view text) { return beginning(text, kLongest, replacementCharacter); }

}  // namespace tandemtrim::host
