#pragma once

#include <ostream>

#include "host/report.hpp"

namespace tandemtrim::host {

/// Whether the applications of the user's session print with this program's dialog, by the desktop portal.
/// What is found and done goes to `out`, what is missing to `report`.

/// Has the portal take this program's print backend when it starts next, by lines in the user's settings of
/// the portal; `allGtk` sends every GTK program of the session through the portal as well. Failure when that
/// cannot be done; a file that is there keeps all that it has.
void switchApplicationsOn(bool allGtk, std::ostream& out, const Report& report);

/// Takes away what switchApplicationsOn() wrote, and nothing else. Failure when a file cannot be read or
/// written.
void switchApplicationsOff(std::ostream& out, const Report& report);

/// Shows which portal there is and which print backend it takes. Reports each thing that is missing with what
/// to do about it; Failure when there is one.
void showApplications(std::ostream& out, const Report& report);

}  // namespace tandemtrim::host
