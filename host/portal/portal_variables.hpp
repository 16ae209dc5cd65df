#pragma once

namespace tandemtrim::host {

/// Removes from the environment what makes the toolkit ask the desktop's portal for dialogs: the portal would
/// ask this service, which would wait for itself. Must be called before any thread starts.
void removePortalVariables();

}  // namespace tandemtrim::host
