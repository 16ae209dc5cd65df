#include "host/portal/client.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

namespace tandemtrim::host {
namespace {

void onNameVanished(GDBusConnection* /*bus*/, const char* /*name*/, gpointer onGone) {
  (*static_cast<std::function<void()>*>(onGone))();
}

bool isOfDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

Client::Client(GDBusMethodInvocation* call, const std::string& handle, std::function<void()> onGone)
    : onGone_(std::move(onGone)) {
  for (const std::string& name :
       {std::string(g_dbus_method_invocation_get_sender(call)), programOf(handle)}) {
    if (name.empty()) continue;
    watches_.push_back(g_bus_watch_name_on_connection(g_dbus_method_invocation_get_connection(call),
                                                      name.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
                                                      onNameVanished, &onGone_, nullptr));
  }
}

Client::~Client() {
  for (const auto watch : watches_) g_bus_unwatch_name(watch);
}

// Portals put the program's unique name into the path, ":1.23" as "1_23".
std::string programOf(const std::string& handle) {
  constexpr std::string_view kRequests = "/org/freedesktop/portal/desktop/request/";
  if (!handle.starts_with(kRequests)) return {};
  std::string_view name = handle;
  name.remove_prefix(kRequests.size());
  name = name.substr(0, name.find('/'));
  const auto mark = std::min(name.find('_'), name.size());
  const auto first = name.substr(0, mark);
  const auto second = name.substr(std::min(mark + 1, name.size()));
  if (!isOfDigits(first) || !isOfDigits(second)) return {};
  return std::string(":").append(first).append(".").append(second);
}

}  // namespace tandemtrim::host
