#include "host/portal/client.hpp"

#include <utility>

namespace tandemtrim::host {
namespace {

void tellGone(GDBusConnection* /*bus*/, const char* /*name*/, gpointer onGone) {
  (*static_cast<std::function<void()>*>(onGone))();
}

}  // namespace

Client::Client(GDBusMethodInvocation* call, std::function<void()> onGone)
    : onGone_(std::move(onGone)),
      watch_(g_bus_watch_name_on_connection(
          g_dbus_method_invocation_get_connection(call), g_dbus_method_invocation_get_sender(call),
          G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr, tellGone, &onGone_, nullptr)) {}

}  // namespace tandemtrim::host
