#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// One input of the user in the panel.
struct Input {
  /// The name of the setting, or of the button.
  std::string name;
  /// The text to type or the choice to make; nullopt presses a button.
  std::optional<std::string> text;

  friend bool operator==(const Input&, const Input&) = default;
};

/// The name of the panel's button that restores the defaults.
inline constexpr const char* kRestoreDefault = "RestoreDefault";

/// What to do with the applications that print by the desktop portal.
enum class Applications { on, off, status };

struct CommandLine {
  std::optional<std::string> server;
  /// The job's owner; nullopt means the user who runs the program.
  std::optional<std::string> user;
  /// Whether the connection must be encrypted.
  bool encrypted = false;
  /// A printer's name, which "/instance" may follow.
  std::optional<std::string> printer;
  std::optional<std::string> title;
  /// Every -o, -n, -q, -P, -H and -m, in their order.
  Options options;
  /// Every --set and --restore-defaults, in their order.
  std::vector<Input> inputs;
  /// "-" is standard input.
  std::vector<std::string> files;
  std::optional<std::string> ppd;
  std::optional<std::string> plugin;
  bool summary = false;
  bool json = false;
  bool force = false;
  /// Whether --set may type any text into a box, which the panel turns into a number.
  bool lenient = false;
  /// Whether to write no line about a sent job on standard output.
  bool silent = false;
  /// The names of presets: the one to start from, the one to save and the one to delete.
  std::optional<std::string> preset;
  std::optional<std::string> savePreset;
  std::optional<std::string> deletePreset;
  bool listPresets = false;
  bool saveAsDefault = false;
  bool resetDefaults = false;
  /// Whether to list the server's printers, and nothing else.
  bool list = false;
  /// What to do with the session's applications, and nothing else.
  std::optional<Applications> applications;
  /// Whether every GTK program of the session is to use the portal.
  bool allGtk = false;
  bool withoutPanel = false;
  bool verbose = false;
  /// Whether to wait until the job has ended.
  bool wait = false;
  /// Whether to show the dialog; nullopt shows it for files, where there is a screen and all options fit.
  std::optional<bool> dialog;
  /// Whether the dialog shows no notification about the job.
  bool withoutNotification = false;

  friend bool operator==(const CommandLine&, const CommandLine&) = default;
};

}  // namespace tandemtrim::host
