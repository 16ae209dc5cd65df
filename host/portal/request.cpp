#include "host/portal/request.hpp"

#include <utility>

namespace tandemtrim::host {

Request::Request(GDBusMethodInvocation* call, std::string handle)
    : call_(call), handle_(std::move(handle)), sender_(g_dbus_method_invocation_get_sender(call)) {}

void Request::answer(Response response, GVariant* results) {
  auto* const call = std::exchange(call_, nullptr);
  if (call == nullptr) return;
  if (results == nullptr) results = g_variant_new("a{sv}", nullptr);
  g_dbus_method_invocation_return_value(call,
                                        g_variant_new("(u@a{sv})", static_cast<unsigned>(response), results));
}

}  // namespace tandemtrim::host
