#pragma once

#include <ostream>

#include "host/report.hpp"

namespace tandemtrim::host {

/// Makes the applications of the user's session print with this program's dialog, through the desktop portal.
/// Results go to `out`, problems to `report`.

/// Adds lines to the user's settings of the portal, so that it uses this program's print backend from its
/// next start. With `allGtk` every GTK program of the session uses the portal. Existing files keep all their
/// lines. Failure when that cannot be done.
void switchApplicationsOn(bool allGtk, std::ostream& out, const Report& report);

/// Removes what switchApplicationsOn() wrote, and nothing else. Failure when a file cannot be read or
/// written.
void switchApplicationsOff(std::ostream& out, const Report& report);

/// Shows the portal and the print backend that it uses. Reports each problem with what to do about it;
/// Failure when there is one.
void showApplications(std::ostream& out, const Report& report);

}  // namespace tandemtrim::host
