// The same as bare.c with gtkmm: bare_gtkmm PRINTER. It sets the dialog's settings again whenever a printer
// is chosen, as a program does that keeps settings for each printer.
#include <glibmm/main.h>
#include <gtkmm/init.h>
#include <gtkmm/printer.h>
#include <gtkmm/printsettings.h>
#include <gtkmm/printunixdialog.h>

int main(int argc, char* argv[]) {
  if (argc != 2) return 2;
  gtk_init();
  Gtk::init_gtkmm_internals();
  Gtk::PrintUnixDialog dialog("Print");
  dialog.set_manual_capabilities(Gtk::PrintCapabilities::PAGE_SET | Gtk::PrintCapabilities::GENERATE_PDF);
  dialog.set_embed_page_setup();
  const auto settings = Gtk::PrintSettings::create();
  settings->set_printer(argv[1]);
  dialog.set_settings(settings);
  bool isChanging = false;
  dialog.property_selected_printer().signal_changed().connect([&] {
    const auto printer = dialog.get_selected_printer();
    if (!printer || isChanging) return;
    isChanging = true;
    const auto next = dialog.get_settings();
    next->set_printer(printer->get_name());
    dialog.set_settings(next);
    isChanging = false;
  });
  const auto loop = Glib::MainLoop::create();
  dialog.signal_response().connect([&](int) { loop->quit(); });
  dialog.present();
  loop->run();
}
