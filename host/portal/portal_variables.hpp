#pragma once

namespace tandemtrim::host {

/// Takes out of the environment what makes the toolkit ask the desktop's portal for dialogs: this service is
/// whom the portal asks, and would wait for itself. To be called before any thread starts.
void removePortalVariables();

}  // namespace tandemtrim::host
