#pragma once

#include "view/view_controller.hpp"

@class MorvaTTViewControllerKV2;

/// The core loads nibs and observes notifications for its own controller; the toolkit needs the Objective-C
/// controller, to which the core's controller has a pointer.
namespace tandemtrim::platform::appkit {

/// The Objective-C controller of a nib's owner, or nil.
inline ::MorvaTTViewControllerKV2* controllerOf(const NibOwner& owner) {
  return static_cast<::MorvaTTViewControllerKV2*>(owner.platformObject());
}
/// The same for an observer; only the core's controllers observe on this platform.
inline ::MorvaTTViewControllerKV2* controllerOf(const void* observer) {
  return controllerOf(*static_cast<const tandemtrim::MorvaTTViewControllerKV2*>(observer));
}

}  // namespace tandemtrim::platform::appkit
