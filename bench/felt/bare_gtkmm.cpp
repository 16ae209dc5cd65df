// The same as bare.c by gtkmm: bare_gtkmm PRINTER
#include <glibmm/main.h>
#include <gtkmm/init.h>
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
  const auto loop = Glib::MainLoop::create();
  dialog.signal_response().connect([&](int) { loop->quit(); });
  dialog.present();
  loop->run();
}
