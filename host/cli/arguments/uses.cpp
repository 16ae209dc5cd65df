#include "host/cli/arguments/uses.hpp"

#include <array>

namespace tandemtrim::host {
namespace {

constexpr unsigned kList = static_cast<unsigned>(Use::list);
constexpr unsigned kReset = static_cast<unsigned>(Use::reset);
constexpr unsigned kDialog = static_cast<unsigned>(Use::dialog);
constexpr unsigned kUnasked = static_cast<unsigned>(Use::dialogUnasked);
constexpr unsigned kInput = static_cast<unsigned>(Use::input);
constexpr unsigned kApplications = static_cast<unsigned>(Use::applications);
constexpr unsigned kPresets = static_cast<unsigned>(Use::presets);
constexpr unsigned kAnyJob = kDialog | kUnasked | kInput;
constexpr unsigned kAllButApplications = kList | kReset | kPresets | kAnyJob;

struct Row {
  const char* options;
  bool (*areGiven)(const CommandLine& line);
  unsigned uses;
};

template <auto kMember>
bool isGiven(const CommandLine& line) {
  return line.*kMember != CommandLine().*kMember;
}

constexpr std::array kRows{
    Row{"-h", isGiven<&CommandLine::server>, kAllButApplications},
    Row{"-E", isGiven<&CommandLine::encrypted>, kAllButApplications},
    Row{"-U", isGiven<&CommandLine::user>, kAllButApplications},
    Row{"--verbose", isGiven<&CommandLine::verbose>, kAllButApplications},
    Row{"--plugin", isGiven<&CommandLine::plugin>, kList | kPresets | kAnyJob},
    Row{"-d", isGiven<&CommandLine::printer>, kReset | kPresets | kAnyJob},
    Row{"-t", isGiven<&CommandLine::title>, kAnyJob},
    Row{"-n, -o, -q, -H, -P or -m", isGiven<&CommandLine::options>, kAnyJob},
    Row{"files", isGiven<&CommandLine::files>, kAnyJob},
    Row{"-s", isGiven<&CommandLine::silent>, kDialog | kInput},
    Row{"--dialog or --no-dialog", isGiven<&CommandLine::dialog>, kDialog | kInput},
    Row{"--no-notification", isGiven<&CommandLine::withoutNotification>, kAnyJob},
    Row{"--set or --restore-defaults", isGiven<&CommandLine::inputs>, kInput},
    Row{"--lenient", isGiven<&CommandLine::lenient>, kInput},
    Row{"--force", isGiven<&CommandLine::force>, kInput},
    Row{"--without-panel", isGiven<&CommandLine::withoutPanel>, kInput},
    Row{"--ppd", isGiven<&CommandLine::ppd>, kPresets | kInput},
    Row{"--wait", isGiven<&CommandLine::wait>, kInput},
    Row{"--preset", isGiven<&CommandLine::preset>, kDialog | kInput},
    Row{"--save-preset", isGiven<&CommandLine::savePreset>, 0},
    Row{"--delete-preset", isGiven<&CommandLine::deletePreset>, kPresets},
    Row{"--list-presets", isGiven<&CommandLine::listPresets>, kPresets},
    Row{"--summary", isGiven<&CommandLine::summary>, 0},
    Row{"--json", isGiven<&CommandLine::json>, kPresets},
    Row{"--save-as-default", isGiven<&CommandLine::saveAsDefault>, 0},
    Row{"--list", isGiven<&CommandLine::list>, kList},
    Row{"--applications", isGiven<&CommandLine::applications>, kApplications},
    Row{"--all-gtk", isGiven<&CommandLine::allGtk>, kApplications},
    Row{"--reset-defaults", isGiven<&CommandLine::resetDefaults>, kReset},
};

}  // namespace

std::string optionsBeside(const CommandLine& line, Use use) {
  std::string options;
  for (const auto& row : kRows) {
    const bool fits = (row.uses & static_cast<unsigned>(use)) != 0;
    if (!fits && row.areGiven(line)) options += (options.empty() ? "" : ", ") + std::string(row.options);
  }
  return options;
}

}  // namespace tandemtrim::host
