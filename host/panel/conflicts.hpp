#pragma once

#include <string>
#include <vector>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"
#include "platform/extension.hpp"

namespace tandemtrim::host {

/// Two options whose choices cannot be combined, by the titles that the user sees.
struct Conflict {
  std::string setting;
  std::string value;
  std::string otherOption;
  std::string otherChoice;

  friend bool operator==(const Conflict&, const Conflict&) = default;
};

/// The conflicts of a panel's settings with each other and with the other options of the job. Changes which
/// choices of the PPD are marked.
std::vector<Conflict> conflictsOf(ppd_file_t& ppd, const std::vector<platform::PanelSetting>& settings,
                                  const Options& others);

/// The paper that the user chose, in millimetres, with the option's title and the paper's name as the user
/// sees them.
struct Paper {
  double width;
  double height;
  std::string title;
  std::string name;
};

/// The conflicts of margins that leave nothing of the paper; empty while the panel's function is off.
std::vector<Conflict> conflictsWithPaper(const std::vector<platform::PanelSetting>& settings,
                                         const Paper& paper);

/// Whether the present values of the settings, or any legal ones, could conflict with the paper.
bool canConflictWithPaper(std::vector<platform::PanelSetting> settings, const Paper& paper);

/// Whether the PPD has constraints for one of these keywords.
bool hasConstraints(const ppd_file_t& ppd, const std::vector<std::string>& keywords);

}  // namespace tandemtrim::host
