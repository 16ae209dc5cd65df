#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string_view>

#include "platform/nib.hpp"

namespace tandemtrim::platform::memory {

/// What the nib "TandemTrim" holds on this platform: every outlet, three positions and two directions. Tests
/// alter it to see what becomes of a nib that lacks an outlet or has other menus.
struct NibDescription {
  std::set<std::string_view> missingOutlets;
  std::size_t positionItems = 3;
  std::size_t directionItems = 2;
  /// Called when a loaded nib goes, if set.
  std::function<void()> onRelease;
};

/// The description that loadNibNamed() follows from now on.
NibDescription& nibDescription();

}  // namespace tandemtrim::platform::memory
