#include "adapters/linux/files/property_list.hpp"

#include <algorithm>

#include "adapters/linux/files/property_list_text.hpp"
#include "adapters/linux/files/regular_file.hpp"
#include "adapters/linux/files/strings_decoding.hpp"

namespace tandemtrim::platform::linux {
namespace {

constexpr std::size_t kLargestFile = 4UL << 20U;

}  // namespace

std::shared_ptr<const Dictionary> propertyListIn(const std::string& bytes, std::string& fault) {
  if (bytes.starts_with("bplist")) {
    fault = ": a property list in binary form; only XML is read";
    return nullptr;
  }
  const auto decoded = decodeUtf16(bytes);
  std::size_t line = 0;
  ObjectRef root;
  if (decoded && !decoded->whole) {
    line =
        1 + static_cast<std::size_t>(std::ranges::count(decoded->text, '\n'));  // the text ends at the fault
  } else {
    root = parsePropertyList(decoded ? decoded->text : bytes, line);
  }
  const auto* dictionary = root ? root->as<Dictionary>() : nullptr;
  if (!root) {
    fault = ":" + std::to_string(line) + ": not a valid XML property list";
  } else if (dictionary == nullptr) {
    fault = ": its root is not a dictionary";
  }
  return {root, dictionary};
}

std::shared_ptr<const Dictionary> readPropertyList(const std::string& path, std::string& fault) {
  std::string reason;
  const auto bytes = contentsOfRegularFile(path, kLargestFile, &reason);
  if (!bytes) reason.insert(0, ": ");
  auto list = bytes ? propertyListIn(*bytes, reason) : nullptr;
  if (!list) fault = path + reason;
  return list;
}

}  // namespace tandemtrim::platform::linux
