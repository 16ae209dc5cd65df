#include "adapters/memory/nib.hpp"

#include <memory>

#include "adapters/memory/panel.hpp"

namespace tandemtrim::platform {

bool loadNibNamed(std::string_view name, NibOwner& owner) {
  if (name != "TandemTrim") return false;
  auto panel = std::make_unique<memory::Panel>(memory::nibDescription(), owner);
  auto& loaded = *panel;
  owner.keepLoadedNib(std::move(panel));
  loaded.connectOutlets(owner);
  return true;
}

namespace memory {

NibDescription& nibDescription() {
  static NibDescription description;
  return description;
}

}  // namespace memory
}  // namespace tandemtrim::platform
