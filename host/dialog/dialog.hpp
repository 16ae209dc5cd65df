#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <glibmm/main.h>

#include "host/cups/sent_job.hpp"
#include "host/dialog/application_dialog.hpp"
#include "host/dialog/asking/login_window.hpp"
#include "host/dialog/asking/questions.hpp"
#include "host/dialog/chosen_printer.hpp"
#include "host/dialog/dialog_window.hpp"
#include "host/dialog/module.hpp"
#include "host/dialog/sender.hpp"
#include "host/dialog/settings/document_layout.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// The command line and the documents that a dialog starts with.
struct DialogStart {
  CommandLine line;
  /// Empty while another program waits for the user's choice to lay its document out.
  std::vector<Document> documents;
  /// Another program's request; null for this program.
  const DialogRequest* request = nullptr;
};

/// GTK's print dialog with two more tabs for the chosen printer's panel. It changes its own copy of the
/// settings, so that Cancel changes nothing.
class Dialog : public sigc::trackable {
 public:
  struct Events {
    /// The user has chosen how to print; the dialog is hidden and waits for the document.
    std::function<void()> onChosen = [] {};
    /// The user has printed or cancelled; the dialog is hidden. It must not be destroyed within this call.
    std::function<void()> onEnd = [] {};
  };

  Dialog(DialogStart start, const Report& report, Events events);
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;
  ~Dialog();

  /// Shows the dialog, which then runs on the main loop.
  void show();
  /// Shows the dialog until the user prints or cancels. Failure when a signal ends the dialog, and when a job
  /// that the user cancels has failed for another reason, or may still be printed.
  Printed run();

  /// The user's choice, for the program that lays the document out.
  [[nodiscard]] DialogChoice choice();
  /// Prints the document that the program has laid out, or shows the dialog for it; see ApplicationDialog.
  void take(Document document, bool isToBePrinted);
  /// Shows why there is no document, then ends.
  void fail(const Failure& failure);
  /// Whether the user has started to print a document.
  [[nodiscard]] bool hasStartedPrinting() const { return hasStartedPrinting_; }
  [[nodiscard]] const Printed& printed() const { return printed_; }

 private:
  template <int kSignal>
  static gboolean onSignal(gpointer dialog);
  void interrupt(int signal);
  void onResponse(int response);
  void print(bool withProblems);
  void askAboutProblems(const std::vector<IllegalValue>& values, const std::vector<Conflict>& conflicts);
  // Runs `act` and shows its Failure.
  void tryTo(const std::function<void()>& act);
  // Shows the dialog with a message in front of it.
  void showMessage(
      const std::string& message, const std::function<void()>& then = [] {});
  void choose();
  [[nodiscard]] PrintRequest makeRequest();
  void refuseOtherLayout();
  void send();
  void save();
  void enterSending();
  void showIfSending();
  void onSaved(const Outcome<SavedFile>& outcome);
  void onSent(const Outcome<SendResult>& outcome);
  // Starts the desktop's notification about the job, if the user wants one, and keeps that choice.
  void notify();
  void end();

  const Events events_;
  const Report report_;
  const std::optional<std::string> server_;
  // The formats in which a file can be saved.
  const std::vector<FileFormat> formats_;
  DialogWindow window_;
  Questions questions_;
  LoginWindow login_;
  Sender sender_;
  ChosenPrinter printer_;
  // The choice of notification when the dialog started.
  const bool notified_;
  // The loop of run(); null otherwise.
  Glib::RefPtr<Glib::MainLoop> loop_;
  // The layout that a program applies to the document, and the printer for which it does so.
  LaidOut laidOut_ = LaidOut::nothing;
  std::map<std::string, std::string> layout_;
  std::string laidOutFor_;
  bool hasStartedPrinting_ = false;
  Printed printed_;
  // The failure of a job that was cancelled.
  std::optional<Failure> failure_;
  // The signal that ends the dialog; 0 while there is none.
  int signal_ = 0;
};

}  // namespace tandemtrim::host
