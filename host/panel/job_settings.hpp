#pragma once

#include <optional>
#include <string>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/command_line.hpp"
#include "host/job/options.hpp"
#include "host/panel/panel_session.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// A job's settings as they will be sent.
struct JobSettings {
  Options options;
  /// nullopt without a panel.
  std::optional<PanelResult> panel;
};

/// Why a printer with this PPD, or without one (null), has no panel.
std::string reasonForNoPanel(const ppd_file_t* ppd);

/// A warning about a printer whose queue has no PPD.
std::string withoutPpdText(const std::string& printer);

/// A message about a panel's option that is not sent, since the printer has no panel.
std::string leftOutText(const std::string& printer, const Option& option);

/// Completes the options that the job starts with by those of the printer's panel. A printer without a panel
/// gets no panel's options. Messages call the printer `printer`; `ppd` is null when its queue has none.
/// `ofQueue` are the queue's defaults, used for the panel's keywords that the options lack. Failure when the
/// panel cannot be opened, unless the command line has --without-panel, and when inputs cannot be entered or
/// values are not allowed; see playPanel().
JobSettings settleSettings(const CommandLine& line, const std::string& printer, ppd_file_t* ppd,
                           const Options& ofQueue, const Options& starting, const Report& report);

}  // namespace tandemtrim::host
