#include "host/dialog/asking/message.hpp"

#include <algorithm>

namespace tandemtrim::host {
namespace {

constexpr std::size_t kLongestHeading = 200;  // bytes

}  // namespace

Message messageOf(const std::string& text) {
  const auto end = std::min(text.find('\n'), text.size());
  const auto rest = end > kLongestHeading ? 0 : text.find_first_not_of('\n', end);
  Message message{text.substr(0, end)};
  if (rest != std::string::npos) message.sentences.push_back(text.substr(rest));
  return message;
}

std::string linesOf(const Message& message) {
  std::string lines;
  for (const auto& sentence : message.sentences) lines += (lines.empty() ? "" : "\n") + sentence;
  return lines;
}

}  // namespace tandemtrim::host
