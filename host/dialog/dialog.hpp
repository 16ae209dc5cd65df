#pragma once

#include <optional>
#include <vector>

#include "host/cups/sent_job.hpp"
#include "host/dialog/asking/login_window.hpp"
#include "host/dialog/asking/questions.hpp"
#include "host/dialog/chosen_printer.hpp"
#include "host/dialog/dialog_window.hpp"
#include "host/dialog/module.hpp"
#include "host/dialog/sender.hpp"
#include "host/job/command_line.hpp"
#include "host/report.hpp"

namespace tandemtrim::host {

/// GTK's print dialog with two more tabs for the chosen printer's panel. It changes its own copy of the
/// settings, so that Cancel changes nothing.
class Dialog : public sigc::trackable {
 public:
  /// Opens the documents; Failure when one of them cannot be read.
  Dialog(const CommandLine& line, const Report& report);
  Dialog(const Dialog&) = delete;
  Dialog& operator=(const Dialog&) = delete;
  ~Dialog();

  /// Shows the dialog until the user prints or cancels. Failure when a
  /// cancelled job may still be printed, and when a signal ends the dialog.
  Printed run();

 private:
  template <int kSignal>
  static gboolean onSignal(gpointer dialog);
  void interrupt(int signal);
  void onResponse(int response);
  void print(bool withProblems);
  void askAboutProblems(const std::vector<IllegalValue>& values, const std::vector<Conflict>& conflicts);
  void send();
  void save();
  void onSaved(const Outcome<SavedFile>& outcome);
  void onSent(const Outcome<SendResult>& outcome);

  Sender sender_;
  DialogWindow window_;
  Questions questions_;
  LoginWindow login_;
  ChosenPrinter printer_;
  Printed printed_;
  // Of a job that was cancelled.
  std::optional<Failure> failure_;
  // The one that ends the dialog; 0 while there is none.
  int signal_ = 0;
};

}  // namespace tandemtrim::host
