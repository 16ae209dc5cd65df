#pragma once

#include <optional>
#include <string>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/command_line.hpp"
#include "host/job/options.hpp"
#include "host/panel/panel_session.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// A job's settings as they are to be sent.
struct JobSettings {
  Options options;
  /// None when no panel took part.
  std::optional<PanelResult> panel;
};

/// Why a printer with this PPD, or with none (null), has no panel.
std::string reasonForNoPanel(const ppd_file_t* ppd);

/// A warning about a printer whose queue has no PPD.
std::string withoutPpdText(const std::string& printer);

/// A message about an option of a panel that a printer without the panel does not get.
std::string leftOutText(const std::string& printer, const Option& option);

/// Has the printer's panel, if there is one, complete the options that the job starts with. `printer` is what
/// messages call the printer and `ppd` its PPD, null when its queue has none. A printer without the panel
/// never gets the panel's options. `ofQueue` are the queue's defaults, which count for the panel's keywords
/// that no option is given for. Failure when the panel cannot be opened and the command line does not
/// agree to go on without it, and when what the command line asks of the panel cannot be done.
JobSettings settleSettings(const CommandLine& line, const std::string& printer, ppd_file_t* ppd,
                           const Options& ofQueue, const Options& starting, const Report& report);

}  // namespace tandemtrim::host
