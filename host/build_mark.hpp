#pragma once

namespace tandemtrim::host {

/// Differs between builds whose parts do not fit together: of another version, or of other headers.
extern const char* const kBuildMark;

/// What every module of the program's own exports with C linkage: the kBuildMark that it was built with.
using MarkOfModule = const char* (*)() noexcept;
inline constexpr const char* kMarkFunction = "tandemTrimBuildMark";

}  // namespace tandemtrim::host
