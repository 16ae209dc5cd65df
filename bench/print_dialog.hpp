#pragma once

#include <gtk/gtkunixprint.h>

namespace tandemtrim::bench {

/// GTK's print dialog, not shown yet.
inline GtkPrintUnixDialog* makeDialog() {
  return GTK_PRINT_UNIX_DIALOG(gtk_print_unix_dialog_new("Print", nullptr));
}

// Returns whether the settings' printer is selected. If not, applies the settings again, since GTK forgets
// their printer unless it is the first in its list.
inline bool selectPrinter(GtkPrintUnixDialog* dialog, GtkPrintSettings* settings) {
  auto* const selected = gtk_print_unix_dialog_get_selected_printer(dialog);
  const bool found = selected != nullptr && g_str_equal(gtk_printer_get_name(selected),
                                                        gtk_print_settings_get_printer(settings)) != FALSE;
  if (!found) gtk_print_unix_dialog_set_settings(dialog, settings);
  return found;
}

/// Runs the main loop until the dialog is completely drawn.
inline void draw(GtkPrintUnixDialog* dialog) {
  bool drawn = false;
  auto* const clock = gtk_widget_get_frame_clock(GTK_WIDGET(dialog));
  const auto handler = g_signal_connect(
      clock, "after-paint", G_CALLBACK(+[](GdkFrameClock*, bool* done) { *done = true; }), &drawn);
  gtk_widget_queue_draw(GTK_WIDGET(dialog));
  while (!drawn || g_main_context_pending(nullptr) != FALSE) g_main_context_iteration(nullptr, TRUE);
  g_signal_handler_disconnect(clock, handler);
}

/// Shows the dialog and returns when the printer is selected and everything is drawn.
inline void show(GtkPrintUnixDialog* dialog, const char* printer) {
  auto* const settings = gtk_print_settings_new();
  gtk_print_settings_set_printer(settings, printer);
  gtk_window_present(GTK_WINDOW(dialog));
  const auto again = g_timeout_add(
      20, [](void*) -> gboolean { return TRUE; }, nullptr);
  while (!selectPrinter(dialog, settings)) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(again);
  draw(dialog);
}

}  // namespace tandemtrim::bench
