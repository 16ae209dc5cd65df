#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "host/cups/sent_job.hpp"
#include "host/panel/job_settings.hpp"

namespace tandemtrim::host {

/// "Title: value" lines in display order; nothing for a printer without a panel.
void showSummary(std::ostream& out, const JobSettings& settings);

/// The options as arguments for lp, one a line, quoted for a shell.
void showOptions(std::ostream& out, const Options& options);

/// Shows a JSON object with the printer, settings, limits and summary and, if there is one, the job.
/// Replacement characters take the place of invalid UTF-8, and every character beyond ASCII is escaped.
void showJson(std::ostream& out, const std::optional<std::string>& printer, const JobSettings& settings,
              const std::optional<SentJob>& job);

}  // namespace tandemtrim::host
