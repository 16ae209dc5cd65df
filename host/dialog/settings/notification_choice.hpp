#pragma once

#include "host/report.hpp"

namespace tandemtrim::host {

/// Whether the user wants a notification after printing, as chosen last; true where nothing was chosen yet.
/// It is kept in a file below $XDG_CONFIG_HOME/tandem-trim, for all printers.
bool wantsNotification();

/// Keeps the choice. What cannot be kept is reported.
void keepNotificationChoice(bool wants, const Report& report);

}  // namespace tandemtrim::host
