#pragma once

namespace tandemtrim::host {

/// The module that holds the program, and its function with C linkage that does what the command line asks
/// for and gives the exit status.
inline constexpr const char* kTerminalModule = "terminal/tandem-trim-terminal";
using RunProgram = int (*)(int argc, char** argv) noexcept;
inline constexpr const char* kRunFunction = "tandemTrimRun";

}  // namespace tandemtrim::host
