#pragma once

@class MorvaTTViewControllerKV2;

namespace tandemtrim {
class MorvaTTViewControllerKV2;
namespace platform {
class NibOwner;
}
}  // namespace tandemtrim

/// The view controllers that are alive, each beside the core's: the core asks its platform for a nib and for
/// notifications in its own terms, and the toolkit has to be given its own controller.
namespace tandemtrim::platform::appkit {

/// Adds a controller, without retaining it. It must be removed before it goes.
void addController(::MorvaTTViewControllerKV2* controller, const tandemtrim::MorvaTTViewControllerKV2* core);
void removeController(::MorvaTTViewControllerKV2* controller);

/// The controller beside the core's that owns nibs or observes under this address; nil when there is none.
::MorvaTTViewControllerKV2* controllerOf(const NibOwner& owner);
::MorvaTTViewControllerKV2* controllerOf(const void* observer);

}  // namespace tandemtrim::platform::appkit
