#pragma once

namespace tandemtrim::host {

/// Removes the settings in the environment by which the toolkit would request its dialogs from the desktop's
/// portal: the portal would request them from this service, which would wait for itself. Must be called
/// before any thread starts.
void removePortalVariables();

}  // namespace tandemtrim::host
