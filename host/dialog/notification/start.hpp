#pragma once

#include "host/notifier/order.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Starts the notifier with this order. This program need not wait for it, and may end. Reports a notifier
/// that cannot be started; does nothing when none is installed.
void startNotifier(const NotifierOrder& order, const Report& report);

}  // namespace tandemtrim::host
