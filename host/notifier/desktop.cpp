#include "host/notifier/desktop.hpp"

#include <string>

namespace tandemtrim::host {
namespace {

constexpr const char* kName = "org.freedesktop.Notifications";
constexpr const char* kPath = "/org/freedesktop/Notifications";
constexpr int kLongestCall = 10'000;  // milliseconds
constexpr const char* kApplication = "Tandem Trim";
constexpr const char* kIcon = "com.morva.tandemtrim";
constexpr int kDefaultTime = -1;

using Answer = std::unique_ptr<GVariant, decltype(&g_variant_unref)>;

// Null without an answer. The bus starts the program that shows notifications, if it can.
Answer ask(GDBusConnection* bus, const char* method, GVariant* values, const char* type) {
  return {g_dbus_connection_call_sync(bus, kName, kPath, kName, method, values, G_VARIANT_TYPE(type),
                                      G_DBUS_CALL_FLAGS_NONE, kLongestCall, nullptr, nullptr),
          g_variant_unref};
}

std::string escaped(const std::string& text) {
  const std::unique_ptr<char, decltype(&g_free)> markup(
      g_markup_escape_text(text.data(), static_cast<gssize>(text.size())), g_free);
  return markup.get();
}

}  // namespace

DesktopNotification::DesktopNotification() : bus_(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)) {
  if (!bus_) return;
  const auto answer = ask(bus_.get(), "GetCapabilities", nullptr, "(as)");
  if (!answer) {
    bus_.reset();
    return;
  }
  GVariantIter* capabilities = nullptr;
  g_variant_get(answer.get(), "(as)", &capabilities);
  const char* capability = nullptr;
  while (g_variant_iter_loop(capabilities, "&s", &capability) != FALSE)
    hasMarkup_ = hasMarkup_ || std::string(capability) == "body-markup";
  g_variant_iter_free(capabilities);
}

bool DesktopNotification::show(const NotificationText& text) {
  if (!bus_) return false;
  GVariantBuilder actions;
  g_variant_builder_init(&actions, G_VARIANT_TYPE_STRING_ARRAY);
  GVariantBuilder hints;
  g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
  g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(kIcon));
  const auto body = hasMarkup_ ? escaped(text.body) : text.body;
  const auto answer = ask(bus_.get(), "Notify",
                          g_variant_new("(susssasa{sv}i)", kApplication, shown_, kIcon, text.heading.c_str(),
                                        body.c_str(), &actions, &hints, kDefaultTime),
                          "(u)");
  if (answer) g_variant_get(answer.get(), "(u)", &shown_);
  return answer != nullptr;
}

}  // namespace tandemtrim::host
