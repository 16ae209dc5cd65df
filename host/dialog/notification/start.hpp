#pragma once

#include "host/notifier/order.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// Starts the program that carries the order out. It lives apart: this one need not wait for it, and may end.
/// A program that cannot be started is reported; without one nothing happens.
void startNotifier(const NotifierOrder& order, const Report& report);

}  // namespace tandemtrim::host
