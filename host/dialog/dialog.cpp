#include "host/dialog/dialog.hpp"

#include <algorithm>
#include <csignal>
#include <cstdlib>

#include <glib-unix.h>

#include "host/cups/option_values.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/interrupted.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kCorrect = 1;
constexpr int kPrintAsItIs = 2;

}  // namespace

Dialog::Dialog(const CommandLine& line, const Report& report)
    : sender_(openDocuments(line.files), report,
              [this](const auto& text, auto share) { window_.showProgress(text, share); }),
      window_(sender_.fileFormats()),
      questions_(window_.dialog()),
      login_(window_.dialog()),
      printer_(
          line, report, window_,
          {[this] { print(false); }, [this](const std::string& help) { questions_.showMessage(help); }}) {
  window_.dialog().signal_response().connect(sigc::mem_fun(*this, &Dialog::onResponse));
}

// Else GTK's notebook passes the focus to a page of a destroyed window.
Dialog::~Dialog() { window_.dialog().unset_focus(); }

Printed Dialog::run() {
  std::vector<guint> sources;
  if (!isIgnored(SIGINT)) sources.push_back(g_unix_signal_add(SIGINT, onSignal<SIGINT>, this));
  if (!isIgnored(SIGTERM)) sources.push_back(g_unix_signal_add(SIGTERM, onSignal<SIGTERM>, this));
  printer_.start();
  window_.run();
  for (const auto source : sources) g_source_remove(source);
  if (printed_.index() != 0) return printed_;
  if (signal_ != 0) throw interruptedBy(signal_, failure_);
  if (failure_ && failure_->trouble() != Trouble::cancelled) throw Failure(*failure_);
  return {};
}

template <int kSignal>
gboolean Dialog::onSignal(gpointer dialog) {
  static_cast<Dialog*>(dialog)->interrupt(kSignal);
  return G_SOURCE_CONTINUE;
}

// The second signal ends the program at once.
void Dialog::interrupt(int signal) {
  if (signal_ != 0) std::_Exit(interruptedBy(signal, std::nullopt).exitStatus());
  signal_ = signal;
  onResponse(Gtk::ResponseType::CANCEL);
}

// A job that is being sent is cancelled, which may take as long as its server.
void Dialog::onResponse(int response) {
  if (response == Gtk::ResponseType::OK) return print(false);
  if (liveIn(window_.state()).content) return window_.close();
  window_.enter(DialogState::cancelling);
  sender_.cancel(signal_ == 0 ? "cancelled" : wordOf(signal_));
  login_.giveUp();
  window_.hide();
}

void Dialog::print(bool withProblems) {
  if (!liveIn(window_.state()).content) return;
  const auto& selection = printer_.selection();
  if (!selection.isPrinter() && !selection.isFile())
    return questions_.showMessage(localized(kChoosePrinterText));
  window_.enter(withPrint(window_.state()));
  if (liveIn(window_.state()).printWaits) return;
  if (selection.isFile()) return save();
  const auto illegal = printer_.panel().prepareToPrint();
  if (!illegal) return;
  const auto conflicts = printer_.panel().conflicts();
  const bool isFine = illegal->empty() && conflicts.empty();
  if (!isFine && !withProblems) return askAboutProblems(*illegal, conflicts);
  try {
    send();
  } catch (const Failure& failure) {
    questions_.showMessage(failureText(failure));
  }
}

// A conflict is asked about once, and has nothing that could be corrected for the user.
void Dialog::askAboutProblems(const std::vector<IllegalValue>& values,
                              const std::vector<Conflict>& conflicts) {
  std::vector<Questions::Answer> answers{{localized(kCancelText), Gtk::ResponseType::CANCEL},
                                         {localized(kPrintAsItIsText), kPrintAsItIs}};
  if (!values.empty()) answers.emplace_back(localized(kCorrectText), kCorrect);
  questions_.ask({localized(kNotAllowedText), problemTexts(values, conflicts)}, answers,
                 values.empty() ? Gtk::ResponseType::CANCEL : kCorrect,
                 [this, hasConflicts = !conflicts.empty()](int answer) {
                   if (answer == kCorrect) printer_.panel().correct();
                   if (answer == kCorrect || answer == kPrintAsItIs)
                     print(answer == kPrintAsItIs || hasConflicts);
                 });
}

void Dialog::send() {
  auto request = printer_.makeRequest();
  refuseLossyValues(request.options);
  request.options = encodable(std::move(request.options));
  if (request.title) refuseLossyTitle(*request.title);
  window_.enter(DialogState::sending);
  sender_.send(request, [this](const auto& outcome) { onSent(outcome); });
}

// The panel's settings are the printer's, which a file has none of.
void Dialog::save() {
  try {
    const auto target = printer_.fileTarget(sender_.fileFormats());
    window_.enter(DialogState::sending);
    window_.showProgress(localized(kSavingText), std::nullopt);
    sender_.save(target, [this](const auto& outcome) { onSaved(outcome); });
  } catch (const Failure& failure) {
    questions_.showMessage(failureText(failure));
  }
}

void Dialog::onSaved(const Outcome<SavedFile>& outcome) {
  const bool isCancelled = window_.state() == DialogState::cancelling;
  window_.enter(DialogState::ready);
  if (outcome.result) printed_ = *outcome.result;
  if (isCancelled || outcome.result) {
    failure_ = outcome.failure;
    return window_.close();
  }
  questions_.showMessage(failureText(*outcome.failure));
  printer_.follow();
}

void Dialog::onSent(const Outcome<SendResult>& outcome) {
  const bool isCancelled = window_.state() == DialogState::cancelling;
  window_.enter(DialogState::ready);
  if (outcome.result) printed_ = outcome.result->job;
  if (isCancelled) {
    failure_ = outcome.failure;
    // The login was given up along with the job, which then does not exist.
    if (failure_ && failure_->trouble() == Trouble::unauthorized)
      failure_ = Failure(Trouble::cancelled, failure_->fact());
    return window_.close();
  }
  if (outcome.failure) {
    questions_.showMessage(failureText(*outcome.failure));
    // GTK may have selected another printer meanwhile.
    return printer_.follow();
  }
  const auto& problems = outcome.result->problems;
  if (problems.empty()) return window_.close();
  questions_.showMessage(failuresText(problems), [this] { window_.close(); });
}

}  // namespace tandemtrim::host
