#include "host/portal/service.hpp"

#include <algorithm>
#include <utility>

#include <gio/gunixfdlist.h>
#include <malloc.h>

#include "host/dialog/module.hpp"
#include "host/failure.hpp"
#include "host/panel/own_module.hpp"
#include "host/plain_text.hpp"
#include "host/portal/arguments.hpp"

namespace tandemtrim::host {
namespace {

constexpr const char* kName = "org.freedesktop.impl.portal.desktop.tandemtrim";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kRequestInterface = "org.freedesktop.impl.portal.Request";
constexpr const char* kNoBus = "there is no session bus; programs print without this dialog";
constexpr unsigned kVersion = 4;
constexpr const char* kPrintInterface = R"(
<node>
  <interface name="org.freedesktop.impl.portal.Print">
    <method name="PreparePrint">
      <arg type="o" name="handle" direction="in"/>
      <arg type="s" name="app_id" direction="in"/>
      <arg type="s" name="parent_window" direction="in"/>
      <arg type="s" name="title" direction="in"/>
      <arg type="a{sv}" name="settings" direction="in"/>
      <arg type="a{sv}" name="page_setup" direction="in"/>
      <arg type="a{sv}" name="options" direction="in"/>
      <arg type="u" name="response" direction="out"/>
      <arg type="a{sv}" name="results" direction="out"/>
    </method>
    <method name="Print">
      <annotation name="org.gtk.GDBus.C.UnixFD" value="true"/>
      <arg type="o" name="handle" direction="in"/>
      <arg type="s" name="app_id" direction="in"/>
      <arg type="s" name="parent_window" direction="in"/>
      <arg type="s" name="title" direction="in"/>
      <arg type="h" name="fd" direction="in"/>
      <arg type="a{sv}" name="options" direction="in"/>
      <arg type="u" name="response" direction="out"/>
      <arg type="a{sv}" name="results" direction="out"/>
    </method>
    <property name="version" type="u" access="read"/>
  </interface>
</node>)";
constexpr std::chrono::seconds kIdleTime{10};
// Each session has a dialog, which may be hidden, or gets one once its document is copied.
constexpr std::size_t kMostSessions = 16;

using Variant = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

Variant childOf(GVariant* values, gsize index) {
  return {g_variant_get_child_value(values, index), g_variant_unref};
}

std::string textOf(GVariant* values, gsize index) {
  return g_variant_get_string(childOf(values, index).get(), nullptr);
}

Caller callerIn(GVariant* values) { return {textOf(values, 1), textOf(values, 2), textOf(values, 3)}; }

OwnModule loadModule(const std::string& name) {
  auto module = loadOwnModule("dialog/" + name);
  if (module.handle != nullptr) return module;
  throw Failure("the print dialog cannot be shown: " +
                (module.fault.empty() ? name + " is not installed" : module.fault));
}

template <class Function>
Function exported(const OwnModule& module, const char* name) {
  return reinterpret_cast<Function>(exportedBy(module, name));
}

// The descriptor that a message's handle refers to; not open when the message has none.
FileDescriptor descriptorOf(GDBusMethodInvocation* call, GVariant* handle) {
  auto* const list = g_dbus_message_get_unix_fd_list(g_dbus_method_invocation_get_message(call));
  const int index = g_variant_get_handle(handle);
  if (list == nullptr || index < 0 || index >= g_unix_fd_list_get_length(list)) return FileDescriptor(-1);
  return FileDescriptor(g_unix_fd_list_get(list, index, nullptr));
}

}  // namespace

int Service::run() {
  auto* const bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
  if (bus == nullptr) {
    report_(kNoBus);
    return 1;
  }
  serveOn(bus);
  endWhenIdle();
  // Once the name is released, the next call starts another service. Calls that arrived before are answered
  // here.
  do {
    const auto name = g_bus_own_name_on_connection(bus, kName, G_BUS_NAME_OWNER_FLAGS_NONE, nullptr,
                                                   onNameLost, this, nullptr);
    g_main_loop_run(loop_.get());
    g_bus_unown_name(name);
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
  } while (status_ == 0 && !sessions_.empty());
  sessions_.clear();
  g_dbus_connection_flush_sync(bus, nullptr, nullptr);
  g_object_unref(bus);
  return status_;
}

void Service::serveOn(GDBusConnection* bus) {
  static auto* const node = g_dbus_node_info_new_for_xml(kPrintInterface, nullptr);
  static const GDBusInterfaceVTable table{onCall, onProperty, nullptr, {}};
  g_dbus_connection_set_exit_on_close(bus, FALSE);
  g_dbus_connection_add_filter(bus, onMessage, this, nullptr);
  g_dbus_connection_register_object(bus, kPath, node->interfaces[0], &table, this, nullptr, nullptr);
}

void Service::onNameLost(GDBusConnection* bus, const char* /*name*/, gpointer service) {
  auto& self = *static_cast<Service*>(service);
  const bool hasBus = bus != nullptr && g_dbus_connection_is_closed(bus) == FALSE;
  self.report_(hasBus ? "another program serves " + std::string(kName) : kNoBus);
  self.status_ = 1;
  // The bus may have started another service while this one was about to end. This one runs until its dialogs
  // are closed; without the bus, until the jobs that users have started are printed.
  if (self.sessions_.empty()) g_main_loop_quit(self.loop_.get());
}

GVariant* Service::onProperty(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                              const char* /*interface*/, const char* /*property*/, GError** /*error*/,
                              gpointer /*service*/) {
  return g_variant_new_uint32(kVersion);
}

void Service::onCall(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                     const char* /*interface*/, const char* method, GVariant* values,
                     GDBusMethodInvocation* call, gpointer service) {
  static_cast<Service*>(service)->serve(call, method, values);
}

// Even after an error the call gets an answer, from the request's destructor.
void Service::serve(GDBusMethodInvocation* call, const std::string& method, GVariant* values) {
  const auto handle = textOf(values, 0);
  auto request = std::make_unique<Request>(call, handle);
  try {
    if (sessionAt(handle) != nullptr)
      throw Failure("another request already has the handle " + shortText(handle));
    method == "Print" ? print(call, std::move(request), values) : prepare(call, std::move(request), values);
  } catch (const std::exception& failure) {
    report_(failure.what());
  }
}

void Service::prepare(GDBusMethodInvocation* call, std::unique_ptr<Request> request, GVariant* values) {
  const auto caller = callerIn(values);
  const int session = addSession(caller.application);
  watchCaller(call, session)
      .prepare(std::move(request), prepareRequest(caller, childOf(values, 4).get(), childOf(values, 5).get(),
                                                  childOf(values, 6).get()));
}

void Service::print(GDBusMethodInvocation* call, std::unique_ptr<Request> request, GVariant* values) {
  const auto caller = callerIn(values);
  const auto options = childOf(values, 5);
  auto document = descriptorOf(call, childOf(values, 4).get());
  const auto chosen = tokens_.take(tokenIn(options.get()), caller.application);
  const int session = chosen ? *chosen : addSession(caller.application);
  watchCaller(call, session)
      .print(std::move(request), printRequest(caller, options.get()), std::move(document));
}

int Service::addSession(const std::string& application) {
  makeRoom();
  idle_ = Timer();
  const int session = ++lastSession_;
  sessions_[session].session = std::make_unique<Session>(
      Session::Surroundings{[this](const auto& request, auto document, auto events) {
                              return open(request, std::move(document), std::move(events));
                            },
                            [this, application, session] { return tokens_.issue(application, session); },
                            lifeOfToken_, report_, [this, session] { endSession(session); }});
  return session;
}

Session& Service::watchCaller(GDBusMethodInvocation* call, int session) {
  auto& running = sessions_.at(session);
  const auto handle = textOf(g_dbus_method_invocation_get_parameters(call), 0);
  running.client = std::make_unique<Client>(call, handle, [&session = *running.session] { session.leave(); });
  return *running.session;
}

Session* Service::sessionAt(const std::string& handle) {
  for (auto& [number, running] : sessions_) {
    const auto* const request = running.session->request();
    if (request != nullptr && request->waitsAt(handle)) return running.session.get();
  }
  return nullptr;
}

// Runs on the thread that reads the bus. Close is handled here, as an object that the call's handler
// registers would come too late for a program that cancels its call at once.
GDBusMessage* Service::onMessage(GDBusConnection* bus, GDBusMessage* message, gboolean isIncoming,
                                 gpointer service) {
  if (isIncoming == FALSE || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL ||
      g_strcmp0(g_dbus_message_get_interface(message), kRequestInterface) != 0 ||
      g_strcmp0(g_dbus_message_get_member(message), "Close") != 0)
    return message;
  onMainLoop([service, bus, message] { static_cast<Service*>(service)->close(bus, message); });
  return nullptr;
}

void Service::close(GDBusConnection* bus, GDBusMessage* message) {
  auto* const session = sessionAt(g_dbus_message_get_path(message));
  const bool isOwn = session != nullptr && session->request()->isOf(g_dbus_message_get_sender(message));
  auto* const answer =
      isOwn ? g_dbus_message_new_method_reply(message)
            : g_dbus_message_new_method_error_literal(message, "org.freedesktop.DBus.Error.UnknownObject",
                                                      "the sender has no request here");
  g_dbus_connection_send_message(bus, answer, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
  g_object_unref(answer);
  g_object_unref(message);
  if (isOwn) session->leave();
}

// The session's own dialog may call this, so the session is destroyed later. malloc_trim() returns to the
// system the memory that a dialog has freed, which is scattered among what the toolkit keeps.
void Service::endSession(int session) {
  tokens_.forget(session);
  onMainLoop([this, session] {
    sessions_.erase(session);
    if (!sessions_.empty()) return;
    malloc_trim(0);
    status_ == 0 ? endWhenIdle() : g_main_loop_quit(loop_.get());
  });
}

// A program does not report that it will send no document: the portal has no call for that.
void Service::makeRoom() {
  if (sessions_.size() < kMostSessions) return;
  const auto oldest = std::ranges::find_if(
      sessions_, [](const auto& entry) { return entry.second.session->waitsForDocument(); });
  if (oldest == sessions_.end()) throw Failure("too many print dialogs are open; the request is refused");
  tokens_.forget(oldest->first);
  sessions_.erase(oldest);
}

void Service::endWhenIdle() {
  idle_ = Timer(kIdleTime, [this] { g_main_loop_quit(loop_.get()); });
}

// The toolkit is started only once, even if it finds no screen.
void Service::load() {
  try {
    const auto toolkit = loadModule("tandem-trim-toolkit");
    // Versions of GTK that have this function use portals even without a variable.
    if (const auto disablePortals = exported<void (*)()>(toolkit, "gtk_disable_portals")) disablePortals();
    if (!exported<StartToolkit>(toolkit, kStartFunction)(nullptr))
      throw Failure("there is no screen to show the print dialog on");
    openDialog_ = exported<OpenDialog>(loadModule("tandem-trim-dialog"), kOpenFunction);
  } catch (const Failure& failure) {
    noDialog_ = failure;
  }
}

OpenedDialog Service::open(const DialogRequest& request, FileDescriptor document,
                           ApplicationDialog::Events events) {
  if (openDialog_ == nullptr && !noDialog_) load();
  OpenedDialog opened{nullptr, noDialog_};
  if (!noDialog_) openDialog_(request, std::move(document), report_, std::move(events), opened);
  return opened;
}

}  // namespace tandemtrim::host
