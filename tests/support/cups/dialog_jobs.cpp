// Sends planned jobs (planned_job.hpp) as the dialog does after Print, without a screen: each by its own
// Sender in the background, DIALOGS of them at the same time. Usage: dialog_jobs DOCUMENT DIALOGS

#include <memory>
#include <span>

#include <glibmm/main.h>
#include <gtkmm/init.h>

#include "host/dialog/sender.hpp"
#include "tests/support/cups/planned_job.hpp"

namespace tandemtrim::host {
namespace {

// Shared by the dialogs.
struct Screen {
  std::string file;
  Glib::RefPtr<Glib::MainLoop> loop;
  int open;
};

// The job's number if its dialog would close without a message.
std::optional<int> confirmed(const Outcome<SendResult>& outcome) {
  if (!outcome.result || !outcome.result->problems.empty()) return std::nullopt;
  return outcome.result->job.number;
}

void print(Screen& screen) {
  PlannedJob job;
  if (!readJob(job)) {
    if (--screen.open == 0) screen.loop->quit();
    return;
  }
  const auto report = [title = job.title](const std::string& message) {
    std::cerr << title << ": " << message << std::endl;
  };
  const auto sender =
      std::make_shared<Sender>(openDocuments({screen.file}), report, nobodyToAsk, [](const auto&, auto) {});
  const TabSettings tabs{Gtk::PrintSettings::create(), Gtk::PageSetup::create()};
  const PrintRequest request{{}, job.printer, job.title, job.options, {tabs, job.options}, false, {}};
  sender->send(request, [&screen, sender, job](const auto& outcome) {
    writeAnswer(job, confirmed(outcome));
    inForeground([&screen] { print(screen); });
  });
}

}  // namespace
}  // namespace tandemtrim::host

int main(int argc, char** argv) try {
  using namespace tandemtrim::host;
  if (argc != 3) throw std::invalid_argument("usage: dialog_jobs DOCUMENT DIALOGS");
  const std::span arguments(argv, static_cast<std::size_t>(argc));
  Gtk::init_gtkmm_internals();
  Screen screen{arguments[1], Glib::MainLoop::create(), std::stoi(arguments[2])};
  for (int dialogs = screen.open; dialogs > 0; --dialogs) inForeground([&screen] { print(screen); });
  screen.loop->run();
} catch (const std::exception& failure) {
  std::cerr << failure.what() << '\n';
  return 1;
}
