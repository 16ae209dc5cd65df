#pragma once

namespace tandemtrim::host {

/// The module with the terminal program, and its function with C linkage, which carries out the command line
/// and returns the exit status.
inline constexpr const char* kTerminalModule = "terminal/tandem-trim-terminal";
using RunProgram = int (*)(int argc, char** argv) noexcept;
inline constexpr const char* kRunFunction = "tandemTrimRun";

}  // namespace tandemtrim::host
