#include "host/dialog/module.hpp"

#include <exception>

#include <glibmm/exceptionhandler.h>
#include <gtk/gtk.h>
#include <gtkmm/init.h>

#include "host/dialog/dialog.hpp"

using namespace tandemtrim::host;

extern "C" __attribute__((visibility("default"))) void tandemTrimShowDialog(const CommandLine& line,
                                                                            const Note& note,
                                                                            DialogResult& result) noexcept {
  try {
    // GTK asks libcups, which asks its environment.
    if (line.server) g_setenv("CUPS_SERVER", line.server->c_str(), TRUE);
    // Desktops find the program's icon by it.
    g_set_prgname("tandem-trim");
    if (gtk_init_check() == FALSE) {
      result.failure = "there is no screen to show the dialog on; go on without one by --no-dialog";
      return;
    }
    Gtk::init_gtkmm_internals();
    // What goes wrong while the toolkit calls is told, and the dialog goes on.
    Glib::add_exception_handler([note] {
      try {
        throw;
      } catch (const std::exception& failure) {
        note(failure.what());
      }
    });
    result.job = Dialog(line, note).run();
  } catch (const std::exception& failure) {
    result.failure = failure.what();
  }
}
