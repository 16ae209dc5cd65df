#pragma once

namespace tandemtrim::host {

/// Identifies a build by its version and its headers. Modules of builds with different marks do not work
/// together.
extern const char* const kBuildMark;

/// Each of the program's modules exports this function with C linkage. It returns the module's kBuildMark.
using MarkOfModule = const char* (*)() noexcept;
inline constexpr const char* kMarkFunction = "tandemTrimBuildMark";

}  // namespace tandemtrim::host
