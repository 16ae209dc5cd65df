#pragma once

#include <variant>

#include "host/cups/sent_job.hpp"
#include "host/dialog/file/saved_file.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The outcome of a dialog: nothing, a sent job or a saved file.
using Printed = std::variant<std::monostate, SentJob, SavedFile>;

/// The result of a dialog, or why it failed.
struct DialogResult {
  Printed printed;
  std::optional<Failure> failure;
};

/// The functions that the dialog's modules export with C linkage. Only a program of the same build may call
/// them.
///
/// The first module is linked with GTK alone. kStartFunction starts GTK, for the printers of this server
/// (null is the user's default); false without a screen. Then kPrepareFunction reads what GTK's first widget
/// needs, while the second module is being loaded.
using StartToolkit = bool (*)(const char* server) noexcept;
inline constexpr const char* kStartFunction = "tandemTrimStartToolkit";
using PrepareToolkit = void (*)() noexcept;
inline constexpr const char* kPrepareFunction = "tandemTrimPrepareToolkit";

/// The second module's kDialogFunction shows the dialog for the files of the command line until it is closed,
/// once GTK is started.
using ShowDialog = void (*)(const CommandLine& line, const Report& report, DialogResult& result) noexcept;
inline constexpr const char* kDialogFunction = "tandemTrimShowDialog";

}  // namespace tandemtrim::host
