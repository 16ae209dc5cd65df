#include "adapters/appkit/controllers.hpp"

#include <vector>

#include "adapters/appkit/view_controller.h"

namespace tandemtrim::platform::appkit {
namespace {

struct Entry {
  ::MorvaTTViewControllerKV2* controller;
  const tandemtrim::MorvaTTViewControllerKV2* core;
};

std::vector<Entry>& entries() {
  static std::vector<Entry> living;
  return living;
}

template <class Fits>
::MorvaTTViewControllerKV2* find(Fits fits) {
  for (const auto& entry : entries()) {
    if (fits(entry.core)) return entry.controller;
  }
  return nil;
}

}  // namespace

void addController(::MorvaTTViewControllerKV2* controller, const tandemtrim::MorvaTTViewControllerKV2* core) {
  entries().push_back({controller, core});
}

void removeController(::MorvaTTViewControllerKV2* controller) {
  std::erase_if(entries(), [&](const Entry& entry) { return entry.controller == controller; });
}

::MorvaTTViewControllerKV2* controllerOf(const NibOwner& owner) {
  return find([&](const NibOwner* core) { return core == &owner; });
}

::MorvaTTViewControllerKV2* controllerOf(const void* observer) {
  return find([&](const void* core) { return core == observer; });
}

}  // namespace tandemtrim::platform::appkit
