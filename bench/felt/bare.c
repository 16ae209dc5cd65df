// The smallest program that shows GTK's print dialog: bare PRINTER
#include <gtk/gtkunixprint.h>

int main(int argc, char* argv[]) {
  if (argc != 2) return 2;
  gtk_init();
  GtkWidget* const widget = gtk_print_unix_dialog_new("Print", NULL);
  GtkPrintUnixDialog* const dialog = GTK_PRINT_UNIX_DIALOG(widget);
  gtk_print_unix_dialog_set_manual_capabilities(
      dialog, GTK_PRINT_CAPABILITY_PAGE_SET | GTK_PRINT_CAPABILITY_GENERATE_PDF);
  gtk_print_unix_dialog_set_embed_page_setup(dialog, TRUE);
  GtkPrintSettings* const settings = gtk_print_settings_new();
  gtk_print_settings_set_printer(settings, argv[1]);
  gtk_print_unix_dialog_set_settings(dialog, settings);
  GMainLoop* const loop = g_main_loop_new(NULL, FALSE);
  g_signal_connect_swapped(widget, "response", G_CALLBACK(g_main_loop_quit), loop);
  gtk_window_present(GTK_WINDOW(widget));
  g_main_loop_run(loop);
  return 0;
}
