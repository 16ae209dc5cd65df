#pragma once

namespace tandemtrim::host {

/// Differs between builds of different versions or with different headers, whose parts do not fit together.
extern const char* const kBuildMark;

/// Each of the program's modules exports this function with C linkage. It returns the module's kBuildMark.
using MarkOfModule = const char* (*)() noexcept;
inline constexpr const char* kMarkFunction = "tandemTrimBuildMark";

}  // namespace tandemtrim::host
