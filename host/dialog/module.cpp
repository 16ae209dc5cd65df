#include "host/dialog/module.hpp"

#include <cstdlib>
#include <exception>
#include <iostream>

#include <glibmm/exceptionhandler.h>
#include <glibmm/main.h>
#include <gtkmm/init.h>
#include <gtkmm/messagedialog.h>
#include <unistd.h>

#include "host/dialog/asking/background.hpp"
#include "host/dialog/dialog.hpp"
#include "host/dialog/texts/texts.hpp"

using namespace tandemtrim::host;

namespace {

// Started from a desktop, the program has no terminal that could show why there is no dialog.
void showFailure(const Failure& failure) {
  Gtk::MessageDialog window(failureText(failure), false, Gtk::MessageType::ERROR, Gtk::ButtonsType::NONE);
  window.set_hide_on_close();
  window.add_button(localized(kCloseText), Gtk::ResponseType::CLOSE);
  const auto loop = Glib::MainLoop::create();
  window.signal_response().connect([&loop](int) { loop->quit(); });
  window.set_visible();
  loop->run();
}

Printed printedByDialog(const CommandLine& line, const Report& report) {
  try {
    return Dialog(line, report).run();
  } catch (const Failure& failure) {
    if (isatty(STDERR_FILENO) == 0 && failure.trouble() != Trouble::cancelled) showFailure(failure);
    throw;
  }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void tandemTrimShowDialog(const CommandLine& line,
                                                                            const Report& report,
                                                                            DialogResult& result) noexcept {
  // Libraries must not be unloaded under work that still runs in the background.
  on_exit(
      [](int status, void* /*nothing*/) {
        std::cout.flush();
        if (underWay > 0) std::_Exit(status);
      },
      nullptr);
  try {
    Gtk::init_gtkmm_internals();
    // A failure in a callback of the toolkit is reported, and the dialog goes on.
    Glib::add_exception_handler([report] {
      try {
        throw;
      } catch (const std::exception& failure) {
        report(failure.what());
      }
    });
    result.printed = printedByDialog(line, report);
  } catch (const Failure& failure) {
    result.failure = failure;
  } catch (const std::exception& failure) {
    result.failure = Failure(failure.what());
  }
}
