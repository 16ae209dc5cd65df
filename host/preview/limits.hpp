#pragma once

namespace tandemtrim::host {

/// Takes from this process, for good, what rendering does not need: other files than those that it opens for
/// reading, the network, other programs and threads, and more than its share of memory and of processor time.
/// It ends along with the one that started it. False when the system refuses.
bool limitProcess();

}  // namespace tandemtrim::host
