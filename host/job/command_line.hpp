#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/job/options.hpp"

namespace tandemtrim::host {

/// One input of the user at the panel.
struct Input {
  /// The name of the setting, or of the button.
  std::string name;
  /// What is typed, chosen or switched to; none presses a button.
  std::optional<std::string> text;

  friend bool operator==(const Input&, const Input&) = default;
};

/// The name of the panel's button that brings the defaults back.
inline constexpr const char* kRestoreDefault = "RestoreDefault";

/// What is to be done about the applications that print by the desktop portal.
enum class Applications { on, off, status };

struct CommandLine {
  std::optional<std::string> server;
  /// Whom the server is to take for the job's owner; none is whoever runs the program.
  std::optional<std::string> user;
  /// Whether nothing may go to the server unencrypted.
  bool encrypted = false;
  /// A printer's name, with "/instance" behind it where the user keeps several.
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
  /// Whether the panel makes a number of whatever is typed into a box.
  bool lenient = false;
  /// Whether a job that is sent goes without a line on standard output.
  bool silent = false;
  /// The name of the preset that the settings start from, and of the one that they are kept as.
  std::optional<std::string> preset;
  std::optional<std::string> savePreset;
  std::optional<std::string> deletePreset;
  bool listPresets = false;
  bool saveAsDefault = false;
  bool resetDefaults = false;
  /// Whether the server's printers are to be listed instead of any other work.
  bool list = false;
  /// What is to be done about the session's applications, instead of any other work.
  std::optional<Applications> applications;
  /// Whether every GTK program of the session is to go through the portal.
  bool allGtk = false;
  bool withoutPanel = false;
  bool verbose = false;
  /// Whether to wait until the job has ended.
  bool wait = false;
  /// Whether the dialog is to be shown; none leaves it to whether there is a screen.
  std::optional<bool> dialog;
  /// Whether the dialog leaves it to the user to look what became of the job.
  bool withoutNotification = false;

  friend bool operator==(const CommandLine&, const CommandLine&) = default;
};

}  // namespace tandemtrim::host
