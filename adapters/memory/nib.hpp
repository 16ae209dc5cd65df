#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string_view>

#include "platform/nib.hpp"

namespace tandemtrim::platform::memory {

/// The contents of the nib "TandemTrim" on this platform: every outlet, three positions and two directions.
/// Tests change it to get a nib that lacks an outlet or has other menus.
struct NibDescription {
  std::set<std::string_view> missingOutlets;
  std::size_t positionItems = 3;
  std::size_t directionItems = 2;
  /// Called when a loaded nib is destroyed, if set.
  std::function<void()> onRelease;
};

/// The description that loadNibNamed() uses; the caller may change it.
NibDescription& nibDescription();

}  // namespace tandemtrim::platform::memory
