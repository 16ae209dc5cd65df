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
  bool noScreen = false;
};

/// What the dialog's module exports with C linkage. kDialogFunction shows the dialog for the files of the
/// command line until it is closed; it may only be called where kMarkFunction gives the caller's kBuildMark.
using ShowDialog = void (*)(const CommandLine& line, const Report& report, DialogResult& result) noexcept;
inline constexpr const char* kDialogFunction = "tandemTrimShowDialog";
using MarkOfModule = const char* (*)() noexcept;
inline constexpr const char* kMarkFunction = "tandemTrimBuildMark";

}  // namespace tandemtrim::host
