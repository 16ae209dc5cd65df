#include "host/portal/request.hpp"

#include <utility>

namespace tandemtrim::host {
namespace {

constexpr const char* kRequestInterface = R"(
<node><interface name="org.freedesktop.impl.portal.Request"><method name="Close"/></interface></node>)";

GDBusInterfaceInfo* requestInterface() {
  static auto* const node = g_dbus_node_info_new_for_xml(kRequestInterface, nullptr);
  return node->interfaces[0];
}

}  // namespace

Request::Request(GDBusMethodInvocation* call, const std::string& handle, std::function<void()> onClose)
    : call_(call),
      bus_(g_object_ref(g_dbus_method_invocation_get_connection(call))),
      onClose_(std::move(onClose)) {
  static const GDBusInterfaceVTable table{onCall, nullptr, nullptr, {}};
  object_ = g_dbus_connection_register_object(bus_, handle.c_str(), requestInterface(), &table, this, nullptr,
                                              nullptr);
}

Request::~Request() {
  answer(Response::failed);
  g_object_unref(bus_);
}

void Request::answer(Response response, GVariant* results) {
  auto* const call = std::exchange(call_, nullptr);
  if (call == nullptr) return;
  if (object_ != 0) g_dbus_connection_unregister_object(bus_, std::exchange(object_, 0));
  if (results == nullptr) results = g_variant_new("a{sv}", nullptr);
  g_dbus_method_invocation_return_value(call,
                                        g_variant_new("(u@a{sv})", static_cast<unsigned>(response), results));
}

void Request::onCall(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                     const char* /*interface*/, const char* /*method*/, GVariant* /*values*/,
                     GDBusMethodInvocation* call, gpointer request) {
  g_dbus_method_invocation_return_value(call, nullptr);
  // The request may be gone afterwards.
  const auto onClose = static_cast<Request*>(request)->onClose_;
  onClose();
}

}  // namespace tandemtrim::host
