#pragma once

namespace tandemtrim::host {

/// Permanently denies this process what rendering does not need: changing or locking files, the network,
/// starting programs and threads, affecting other processes by signals, priorities or shared memory, and
/// changing the system. It can still open and read files. Limits its memory and processor time. The process
/// ends together with the one that started it. False when the system refuses.
bool limitProcess();

}  // namespace tandemtrim::host
