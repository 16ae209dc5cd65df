#include "host/dialog/module.hpp"

#include <cstdlib>
#include <exception>
#include <iostream>

#include <glibmm/exceptionhandler.h>
#include <glibmm/main.h>
#include <gtkmm/init.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/window.h>
#include <malloc.h>
#include <unistd.h>

#include "host/dialog/application_dialog.hpp"
#include "host/dialog/asking/background.hpp"
#include "host/dialog/dialog.hpp"
#include "host/dialog/texts/texts.hpp"

using namespace tandemtrim::host;

namespace {

// Started from a desktop, the program has no terminal that could show why there is no dialog.
void showFailure(const Failure& failure) {
  // Never shown. GTK warns about a dialog without a parent.
  Gtk::Window parent;
  Gtk::MessageDialog window(parent, failureText(failure), false, Gtk::MessageType::ERROR,
                            Gtk::ButtonsType::NONE);
  window.set_hide_on_close();
  window.add_button(localized(kCloseText), Gtk::ResponseType::CLOSE);
  const auto loop = Glib::MainLoop::create();
  window.signal_response().connect([&loop](int) { loop->quit(); });
  window.set_visible();
  loop->run();
}

// Prepares this module's part of the toolkit.
void start(const Report& report) {
  // Otherwise each thread that reads a printer's details has a separate heap, which keeps freed memory. Not
  // set earlier, because the threads that read fonts and libraries while GTK starts would wait for each other
  // on one heap.
  mallopt(M_ARENA_MAX, 1);
  // Libraries must not be unloaded while work in the background still uses them.
  on_exit(
      [](int status, void* /*nothing*/) {
        std::cout.flush();
        if (underWay > 0) std::_Exit(status);
      },
      nullptr);
  Gtk::init_gtkmm_internals();
  // A failure in a callback of the toolkit is reported, and the dialog continues.
  Glib::add_exception_handler([report] {
    try {
      throw;
    } catch (const std::exception& failure) {
      report(failure.what());
    }
  });
}

void startOnce(const Report& report) {
  static const bool isStarted = (start(report), true);
  static_cast<void>(isStarted);
}

// Runs `act` and returns its failure, or nullopt.
std::optional<Failure> failureOf(const std::function<void()>& act) {
  try {
    act();
    return std::nullopt;
  } catch (const Failure& failure) {
    return failure;
  } catch (const std::exception& failure) {
    return Failure(failure.what());
  }
}

Printed printedByDialog(const CommandLine& line, const Report& report) {
  try {
    return Dialog({line, openDocuments(line.files)}, report, {}).run();
  } catch (const Failure& failure) {
    if (isatty(STDERR_FILENO) == 0 && failure.trouble() != Trouble::cancelled) showFailure(failure);
    throw;
  }
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void tandemTrimShowDialog(const CommandLine& line,
                                                                            const Report& report,
                                                                            DialogResult& result) noexcept {
  result.failure = failureOf([&] {
    startOnce(report);
    result.printed = printedByDialog(line, report);
  });
}

extern "C" __attribute__((visibility("default"))) void tandemTrimOpenDialog(const DialogRequest& request,
                                                                            FileDescriptor document,
                                                                            const Report& report,
                                                                            ApplicationDialog::Events events,
                                                                            OpenedDialog& opened) noexcept {
  opened.failure = failureOf([&] {
    startOnce(report);
    opened.dialog = openDialog(request, std::move(document), report, std::move(events));
  });
}
