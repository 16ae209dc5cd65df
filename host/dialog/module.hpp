#pragma once

#include <variant>

#include "host/cups/sent_job.hpp"
#include "host/dialog/file/saved_file.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// What the user did in a dialog: nothing, or sent this job, or saved this file.
using Printed = std::variant<std::monostate, SentJob, SavedFile>;

/// The result of a dialog, or why it failed.
struct DialogResult {
  Printed printed;
  std::optional<Failure> failure;
};

/// What the dialog's modules export with C linkage; they may only be called in a program of the same build.
///
/// The first module is linked with GTK alone. kStartFunction starts GTK, for the printers of this server
/// (null is the user's own); false without a screen. Afterwards kPrepareFunction reads what GTK's first
/// widget needs, which takes as long as the second module takes to be loaded.
using StartToolkit = bool (*)(const char* server) noexcept;
inline constexpr const char* kStartFunction = "tandemTrimStartToolkit";
using PrepareToolkit = void (*)() noexcept;
inline constexpr const char* kPrepareFunction = "tandemTrimPrepareToolkit";

/// The second module's kDialogFunction shows the dialog for the files of the command line until it is closed,
/// once GTK is started.
using ShowDialog = void (*)(const CommandLine& line, const Report& report, DialogResult& result) noexcept;
inline constexpr const char* kDialogFunction = "tandemTrimShowDialog";

}  // namespace tandemtrim::host
