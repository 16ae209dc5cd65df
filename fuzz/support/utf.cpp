#include "fuzz/support/utf.hpp"

#include <optional>

#include <iconv.h>

namespace tandemtrim::fuzz {
namespace {

std::optional<std::string> converted(std::string text, const char* from, const char* to) {
  std::string result(text.size() * 4 + 4, '\0');
  char* in = text.data();
  char* out = result.data();
  std::size_t inLeft = text.size();
  std::size_t outLeft = result.size();
  auto* const converter = iconv_open(to, from);
  const auto status = iconv(converter, &in, &inLeft, &out, &outLeft);
  iconv_close(converter);
  if (status != 0) return std::nullopt;
  result.resize(result.size() - outLeft);
  return result;
}

}  // namespace

bool isUtf8(std::string_view text) { return converted(std::string(text), "UTF-8", "UTF-32LE").has_value(); }

std::string utf16(std::string_view text, const char* encoding) {
  return converted("\xEF\xBB\xBF" + std::string(text), "UTF-8", encoding).value();
}

}  // namespace tandemtrim::fuzz
