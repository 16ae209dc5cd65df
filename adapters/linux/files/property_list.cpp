#include "adapters/linux/files/property_list.hpp"

#include "adapters/linux/files/property_list_text.hpp"
#include "adapters/linux/files/regular_file.hpp"
#include "adapters/linux/files/strings_decoding.hpp"
#include "platform/property_list.hpp"

namespace tandemtrim::platform {
namespace linux {
namespace {

constexpr std::size_t kLargestFile = 4UL << 20U;

}  // namespace

std::shared_ptr<const Dictionary> readPropertyList(const std::string& path, std::string& fault) {
  const auto bytes = contentsOfRegularFile(path, kLargestFile, &fault);
  if (!bytes) {
    fault.insert(0, path + ": ");
    return nullptr;
  }
  if (bytes->starts_with("bplist")) {
    fault = path + ": a property list in binary form; only XML is read";
    return nullptr;
  }
  const auto decoded = decodeUtf16(*bytes);
  std::size_t line = 0;
  const auto root = parsePropertyList(decoded ? decoded->text : *bytes, line);
  const auto* dictionary = root ? root->as<Dictionary>() : nullptr;
  if (!root) {
    fault = path + ":" + std::to_string(line) + ": not the form of an XML property list";
  } else if (dictionary == nullptr) {
    fault = path + ": its root is no dictionary";
  }
  return {root, dictionary};
}

}  // namespace linux

std::shared_ptr<const Dictionary> dictionaryWithContentsOfFile(const std::optional<std::string>& path) {
  std::string ignored;
  return path ? linux::readPropertyList(*path, ignored) : nullptr;
}

}  // namespace tandemtrim::platform
