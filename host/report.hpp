#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "host/job_settings.hpp"

namespace tandemtrim::host {

/// A job that the server has.
struct SentJob {
  int number = 0;
  std::string printer;
  std::size_t options = 0;
  /// The keywords that the server does not hold as they were sent; none when it could not tell.
  std::optional<std::vector<std::string>> lost;
  /// Why the server could not be asked; empty when it was.
  std::string unconfirmed = {};
};

/// "job 17 on Morva: 7 of 7 options confirmed", with the lost ones named behind it.
std::string jobText(const SentJob& job);

/// "Title: value" lines in display order; nothing for a printer without the panel.
void showSummary(std::ostream& out, const JobSettings& settings);

/// The options as arguments for lp, one a line, quoted for a shell.
void showOptions(std::ostream& out, const Options& options);

/// printer, settings, limits and summary as a JSON object, and the job when there is one. Text that is not
/// UTF-8 comes with replacement characters.
void showJson(std::ostream& out, const std::optional<std::string>& printer, const JobSettings& settings,
              const std::optional<SentJob>& job);

}  // namespace tandemtrim::host
