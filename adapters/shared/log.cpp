#include "platform/log.hpp"

#include <syslog.h>

namespace tandemtrim::platform {
namespace {

bool isPlain(std::string_view item) {
  constexpr std::string_view kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_$/:.-";
  return !item.empty() && item.find_first_not_of(kPlain) == std::string_view::npos;
}

// Escapes quotes and control characters, so that the item stays on one line and distinct from its neighbours.
std::string quoted(std::string_view item) {
  std::string text = "\"";
  for (const char character : item) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte == 0x7F) {
      constexpr std::string_view kDigits = "01234567";
      text += '\\';
      for (const unsigned shift : {6U, 3U, 0U}) text += kDigits[byte >> shift & 7U];
      continue;
    }
    if (character == '"' || character == '\\') text += '\\';
    text += character;
  }
  return text += '"';
}

// "(first, second)", on one line as the system log needs it.
std::string descriptionOf(std::span<const std::string> list) {
  std::string text = "(";
  for (const auto& item : list) {
    if (text.size() > 1) text += ", ";
    text += isPlain(item) ? item : quoted(item);
  }
  return text += ')';
}

}  // namespace

void NSLog(std::string_view format, std::span<const std::string> list) {
  constexpr std::string_view kObject = "%@";
  const auto description = descriptionOf(list);
  std::string line;
  for (auto offset = format.find(kObject); offset != std::string_view::npos; offset = format.find(kObject)) {
    line.append(format.substr(0, offset)).append(description);
    format.remove_prefix(offset + kObject.size());
  }
  line += format;
  syslog(LOG_NOTICE, "%s", line.c_str());
}

}  // namespace tandemtrim::platform
