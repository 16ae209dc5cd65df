// The smallest print backend of the desktop portal that shows GTK's print dialog: bare_backend NAME. It shows
// one dialog at a time and prints nothing.
#include <gtk/gtkunixprint.h>

namespace {

constexpr const char* kInterfaces =
    "<node><interface name='org.freedesktop.impl.portal.Print'><method name='PreparePrint'>"
    "<arg type='o' direction='in'/><arg type='s' direction='in'/><arg type='s' direction='in'/>"
    "<arg type='s' direction='in'/><arg type='a{sv}' direction='in'/><arg type='a{sv}' direction='in'/>"
    "<arg type='a{sv}' direction='in'/><arg type='u' direction='out'/><arg type='a{sv}' direction='out'/>"
    "</method><property name='version' type='u' access='read'/></interface>"
    "<interface name='org.freedesktop.impl.portal.Request'><method name='Close'/></interface></node>";

GDBusNodeInfo* node = nullptr;
GDBusMethodInvocation* request = nullptr;
GtkWidget* dialog = nullptr;
guint handle = 0;

void closeDialog(GDBusConnection* bus, const char*, const char*, const char*, const char*, GVariant*,
                 GDBusMethodInvocation* call, gpointer) {
  gtk_window_destroy(GTK_WINDOW(dialog));
  g_dbus_method_invocation_return_value(request, g_variant_new_parsed("(%u, @a{sv} {})", 2));
  g_dbus_method_invocation_return_value(call, nullptr);
  g_dbus_connection_unregister_object(bus, handle);
}

void showDialog(GDBusConnection* bus, const char*, const char*, const char*, const char*, GVariant* values,
                GDBusMethodInvocation* call, gpointer) {
  static const GDBusInterfaceVTable table{closeDialog, nullptr, nullptr, {}};
  const char* path = nullptr;
  GVariant* printSettings = nullptr;
  g_variant_get(values, "(&osss@a{sv}a{sv}a{sv})", &path, nullptr, nullptr, nullptr, &printSettings, nullptr,
                nullptr);
  request = call;
  handle =
      g_dbus_connection_register_object(bus, path, node->interfaces[1], &table, nullptr, nullptr, nullptr);
  dialog = gtk_print_unix_dialog_new("Print", nullptr);
  auto* const print = GTK_PRINT_UNIX_DIALOG(dialog);
  gtk_print_unix_dialog_set_manual_capabilities(
      print,
      static_cast<GtkPrintCapabilities>(GTK_PRINT_CAPABILITY_PAGE_SET | GTK_PRINT_CAPABILITY_GENERATE_PDF));
  gtk_print_unix_dialog_set_embed_page_setup(print, TRUE);
  auto* const settings = gtk_print_settings_new_from_gvariant(printSettings);
  gtk_print_unix_dialog_set_settings(print, settings);
  g_object_unref(settings);
  g_variant_unref(printSettings);
  gtk_window_present(GTK_WINDOW(dialog));
}

GVariant* version(GDBusConnection*, const char*, const char*, const char*, const char*, GError**, gpointer) {
  return g_variant_new_uint32(1);
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 2) return 2;
  gtk_init();
  static const GDBusInterfaceVTable table{showDialog, version, nullptr, {}};
  node = g_dbus_node_info_new_for_xml(kInterfaces, nullptr);
  auto* const bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
  g_dbus_connection_register_object(bus, "/org/freedesktop/portal/desktop", node->interfaces[0], &table,
                                    nullptr, nullptr, nullptr);
  g_bus_own_name_on_connection(bus, argv[1], G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr, nullptr);
  g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
