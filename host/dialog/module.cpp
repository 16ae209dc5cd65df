#include "host/dialog/module.hpp"

#include <cstdlib>
#include <exception>
#include <iostream>

#include <glibmm/exceptionhandler.h>
#include <gtk/gtk.h>
#include <gtkmm/init.h>

#include "host/dialog/background.hpp"
#include "host/dialog/dialog.hpp"

using namespace tandemtrim::host;

extern "C" __attribute__((visibility("default"))) void tandemTrimShowDialog(const CommandLine& line,
                                                                            const Note& note,
                                                                            DialogResult& result) noexcept {
  // Work that is still under way must not find libraries that are taken down.
  on_exit(
      [](int status, void* /*nothing*/) {
        std::cout.flush();
        if (underWay > 0) std::_Exit(status);
      },
      nullptr);
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
