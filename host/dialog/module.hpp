#pragma once

#include "host/cups/sent_job.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The result of a dialog: the job that was sent, or none, or why it failed.
struct DialogResult {
  std::optional<SentJob> job;
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
