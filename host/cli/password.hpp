#pragma once

namespace tandemtrim::host {

/// From now on libcups asks the user for passwords, on this thread, without a request's deadline running.
void askForPasswords();

}  // namespace tandemtrim::host
