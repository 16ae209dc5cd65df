#pragma once

#include "host/report.hpp"

namespace tandemtrim::host {

/// Whether the user wants a notification after printing, as chosen last; true when nothing was chosen yet.
/// The choice is stored in a file below $XDG_CONFIG_HOME/tandem-trim, for all printers.
bool wantsNotification();

/// Stores the choice. A failure is reported.
void keepNotificationChoice(bool wants, const Report& report);

}  // namespace tandemtrim::host
