#include <cstdlib>

#include <gtk/gtkunixprint.h>

extern "C" __attribute__((visibility("default"))) bool tandemTrimStartToolkit(const char* server) noexcept {
  // GTK asks libcups, which reads its environment.
  if (server != nullptr) setenv("CUPS_SERVER", server, 1);
  // Desktops find the program's icon by this name.
  g_set_prgname("tandem-trim");
  return gtk_init_check() != FALSE;
}

// GTK reads its theme and the fonts when it makes its first widget.
extern "C" __attribute__((visibility("default"))) void tandemTrimPrepareToolkit() noexcept {
  auto* const first = g_object_ref_sink(gtk_label_new("1"));
  gtk_widget_measure(GTK_WIDGET(first), GTK_ORIENTATION_HORIZONTAL, -1, nullptr, nullptr, nullptr, nullptr);
  g_object_unref(first);
  g_type_class_unref(g_type_class_ref(GTK_TYPE_PRINT_UNIX_DIALOG));
}
