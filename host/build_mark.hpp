#pragma once

namespace tandemtrim::host {

/// Differs between builds whose parts do not fit together: of another version, or of other headers.
extern const char* const kBuildMark;

}  // namespace tandemtrim::host
