#pragma once

namespace tandemtrim::host {

/// Denies this process permanently what rendering does not need: changing files, the network, other programs
/// and threads, and more than its share of memory and processor time. The process ends together with the one
/// that started it. False when the system refuses.
bool limitProcess();

}  // namespace tandemtrim::host
