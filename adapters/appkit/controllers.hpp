#pragma once

#include "view/view_controller.hpp"

@class MorvaTTViewControllerKV2;

/// The core asks its platform for a nib and for notifications in its own terms, and the toolkit has to be
/// given its own controller, which the core's points to.
namespace tandemtrim::platform::appkit {

/// The controller beside the core's that owns nibs, or nil.
inline ::MorvaTTViewControllerKV2* controllerOf(const NibOwner& owner) {
  return static_cast<::MorvaTTViewControllerKV2*>(owner.platformObject());
}
/// The same of one that observes under this address. Nothing else observes here.
inline ::MorvaTTViewControllerKV2* controllerOf(const void* observer) {
  return controllerOf(*static_cast<const tandemtrim::MorvaTTViewControllerKV2*>(observer));
}

}  // namespace tandemtrim::platform::appkit
