#include "adapters/linux/files/property_list.hpp"
#include "platform/property_list.hpp"

namespace tandemtrim::platform {

std::shared_ptr<const Dictionary> dictionaryWithContentsOfFile(const std::optional<std::string>& path) {
  std::string ignored;
  return path ? linux::readPropertyList(*path, ignored) : nullptr;
}

}  // namespace tandemtrim::platform
