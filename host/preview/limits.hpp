#pragma once

namespace tandemtrim::host {

/// Permanently denies this process all that rendering does not need: changing files, the network, other
/// programs and threads. Limits its memory and processor time. The process ends together with the one that
/// started it. False when the system refuses.
bool limitProcess();

}  // namespace tandemtrim::host
