#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "host/dialog/application_dialog.hpp"
#include "host/portal/client.hpp"
#include "host/portal/main_loop.hpp"
#include "host/portal/session.hpp"
#include "host/portal/tokens.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The print backend of the desktop's portal: it has a name on the session bus and shows the print dialog for
/// programs that request one from the portal.
class Service {
 public:
  /// Within the life of a token, a document is printed as the user chose, without another question.
  Service(Report report, std::chrono::seconds lifeOfToken)
      : report_(std::move(report)), lifeOfToken_(lifeOfToken) {}
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  /// Serves until it has been idle for some seconds or, once it has lost its name on the bus, until its last
  /// dialog has ended. Returns the exit status.
  int run();

 private:
  static void onNameLost(GDBusConnection* bus, const char* name, gpointer service);
  static void onCall(GDBusConnection* bus, const char* sender, const char* path, const char* interface,
                     const char* method, GVariant* values, GDBusMethodInvocation* call, gpointer service);
  static GVariant* onProperty(GDBusConnection* bus, const char* sender, const char* path,
                              const char* interface, const char* property, GError** error, gpointer service);

  static GDBusMessage* onMessage(GDBusConnection* bus, GDBusMessage* message, gboolean isIncoming,
                                 gpointer service);

  void close(GDBusConnection* bus, GDBusMessage* message);
  // The session whose request has this handle, or null.
  Session* sessionAt(const std::string& handle);
  void serve(GDBusMethodInvocation* call, const std::string& method, GVariant* values);
  void prepare(GDBusMethodInvocation* call, std::unique_ptr<Request> request, GVariant* values);
  void print(GDBusMethodInvocation* call, std::unique_ptr<Request> request, GVariant* values);
  // A new session for the program. Failure where there are too many.
  int addSession(const std::string& application);
  // Returns the session of this number, whose leave() runs when the call's caller, or the program for which
  // it calls, leaves the bus.
  Session& watchCaller(GDBusMethodInvocation* call, int session);
  void endSession(int session);
  // If there are too many sessions, ends the oldest that waits for a document. Failure when none does.
  void makeRoom();
  void serveOn(GDBusConnection* bus);
  void endWhenIdle();
  // Starts the toolkit and loads the dialog; sets noDialog_ if that fails.
  void load();
  OpenedDialog open(const DialogRequest& request, FileDescriptor document, ApplicationDialog::Events events);

  struct Running {
    std::unique_ptr<Session> session;
    std::unique_ptr<Client> client;
  };

  const Report report_;
  const std::chrono::seconds lifeOfToken_;
  const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop_{g_main_loop_new(nullptr, FALSE),
                                                                       g_main_loop_unref};
  std::map<int, Running> sessions_;
  int lastSession_ = 0;
  Tokens tokens_;
  Timer idle_;
  // Both are empty until the first request.
  OpenDialog openDialog_ = nullptr;
  std::optional<Failure> noDialog_;
  int status_ = 0;
};

}  // namespace tandemtrim::host
