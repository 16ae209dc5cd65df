#include "host/dialog/dialog.hpp"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <utility>

#include <glib-unix.h>

#include "host/cups/option_values.hpp"
#include "host/dialog/file/file_target.hpp"
#include "host/dialog/gtk/parent_window.hpp"
#include "host/dialog/notification/job_texts.hpp"
#include "host/dialog/notification/start.hpp"
#include "host/dialog/settings/notification_choice.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/interrupted.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kCorrect = 1;
constexpr int kPrintAsItIs = 2;
// How long a hidden dialog stays hidden while it sends a job.
constexpr unsigned kQuietSeconds = 2;

bool isToBeLaidOut(const DialogStart& start) { return start.documents.empty(); }

// A file can contain only one document.
std::vector<FileFormat> formatsOf(const DialogStart& start) {
  if (isToBeLaidOut(start)) return start.request->formats;
  if (start.documents.size() > 1) return {};
  return formatsFor(formatOf(start.documents.front().beginning()));
}

Glib::RefPtr<Gtk::PrintSettings> suggestionsOf(const DialogRequest& request) {
  auto settings = Gtk::PrintSettings::create();
  // Otherwise files go to the service's working folder.
  const char* const documents = g_get_user_special_dir(G_USER_DIRECTORY_DOCUMENTS);
  settings->set(GTK_PRINT_SETTINGS_OUTPUT_DIR, documents == nullptr ? g_get_home_dir() : documents);
  if (request.scale) settings->set_scale(*request.scale);
  if (!request.document.empty()) settings->set(GTK_PRINT_SETTINGS_OUTPUT_BASENAME, request.document);
  return settings;
}

void followRequest(Gtk::PrintUnixDialog& dialog, const DialogRequest& request) {
  if (!request.title.empty()) dialog.set_title(request.title);
  dialog.set_modal(request.isModal);
  if (auto* const button = dynamic_cast<Gtk::Button*>(dialog.get_widget_for_response(Gtk::ResponseType::OK));
      button != nullptr && !request.acceptLabel.empty())
    button->set_label(request.acceptLabel);
  if (request.hasCurrentPage) dialog.set_current_page(0);
  gtk_print_unix_dialog_set_support_selection(dialog.gobj(), request.hasSelection ? TRUE : FALSE);
  gtk_print_unix_dialog_set_has_selection(dialog.gobj(), request.hasSelection ? TRUE : FALSE);
  setParentOfOtherProgram(dialog, request.parent);
}

Entries entriesOf(GVariant* dictionary) {
  Entries entries;
  const char* key = nullptr;
  GVariant* value = nullptr;
  GVariantIter each;
  g_variant_iter_init(&each, dictionary);
  while (g_variant_iter_loop(&each, "{&sv}", &key, &value) != FALSE) {
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) != FALSE)
      entries.emplace(key, std::string(g_variant_get_string(value, nullptr)));
    if (g_variant_is_of_type(value, G_VARIANT_TYPE_DOUBLE) != FALSE)
      entries.emplace(key, g_variant_get_double(value));
  }
  return entries;
}

Entries entriesOf(const Gtk::PageSetup& setup) {
  const std::unique_ptr<GVariant, decltype(&g_variant_unref)> dictionary(
      g_variant_ref_sink(gtk_page_setup_to_gvariant(const_cast<GtkPageSetup*>(setup.gobj()))),
      g_variant_unref);
  return entriesOf(dictionary.get());
}

}  // namespace

Dialog::Dialog(DialogStart start, const Report& report, Events events)
    : events_(std::move(events)),
      report_(report),
      server_(start.line.server),
      formats_(formatsOf(start)),
      window_(formats_, isToBeLaidOut(start)),
      questions_(window_.dialog()),
      login_(window_.dialog(), [this] { return window_.state() != DialogState::cancelling; }),
      sender_(std::move(start.documents), report, login_.ask(),
              [this](const auto& text, auto share) { window_.showProgress(text, share); }),
      printer_(start.line, start.request == nullptr ? nullptr : suggestionsOf(*start.request), report,
               login_.ask(), window_,
               {[this] { print(false); }, [this](const std::string& help) { questions_.showMessage(help); },
                [this] { return sender_.openPages(); }, [this] { return !sender_.hasDocument(); }}),
      notified_(!start.line.withoutNotification && wantsNotification()) {
  printer_.panel().setNotifies(notified_);
  if (start.request != nullptr) followRequest(window_.dialog(), *start.request);
  window_.dialog().signal_response().connect(sigc::mem_fun(*this, &Dialog::onResponse));
}

// Otherwise GTK's notebook passes the focus to a page of a destroyed window.
Dialog::~Dialog() { window_.dialog().unset_focus(); }

void Dialog::show() {
  printer_.start();
  window_.show();
}

Printed Dialog::run() {
  std::vector<guint> sources;
  if (!isIgnored(SIGINT)) sources.push_back(g_unix_signal_add(SIGINT, onSignal<SIGINT>, this));
  if (!isIgnored(SIGTERM)) sources.push_back(g_unix_signal_add(SIGTERM, onSignal<SIGTERM>, this));
  loop_ = Glib::MainLoop::create();
  show();
  loop_->run();
  for (const auto source : sources) g_source_remove(source);
  if (printed_.index() != 0) return printed_;
  if (signal_ != 0) throw interruptedBy(signal_, failure_);
  if (failure_ && failure_->trouble() != Trouble::cancelled) throw Failure(*failure_);
  return {};
}

void Dialog::end() {
  window_.hide();
  notify();
  if (loop_) loop_->quit();
  events_.onEnd();
}

void Dialog::notify() {
  const auto* const job = std::get_if<SentJob>(&printed_);
  if (job == nullptr) return;
  auto& panel = printer_.panel();
  if (panel.notifies()) startNotifier(orderFor(*job, server_, panel.result()), report_);
  if (panel.notifies() != notified_) keepNotificationChoice(panel.notifies(), report_);
}

void Dialog::showMessage(const std::string& message, const std::function<void()>& then) {
  window_.show();
  questions_.showMessage(message, then);
}

void Dialog::tryTo(const std::function<void()>& act) {
  try {
    act();
  } catch (const Failure& failure) {
    showMessage(failureText(failure));
  }
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

// A job that is being sent is cancelled, which may take as long as the server's answer.
void Dialog::onResponse(int response) {
  if (response == Gtk::ResponseType::OK) return print(false);
  if (liveIn(window_.state()).content) return end();
  window_.enter(DialogState::cancelling);
  sender_.cancel(signal_ == 0 ? "cancelled" : wordOf(signal_));
  login_.giveUp();
  window_.hide();
}

void Dialog::print(bool withProblems) {
  if (!liveIn(window_.state()).content) return;
  const auto& selection = printer_.selection();
  if (!selection.isPrinter() && !selection.isFile()) return showMessage(localized(kChoosePrinterText));
  window_.enter(withPrint(window_.state()));
  if (liveIn(window_.state()).printWaits) return;
  const auto go = [this] { sender_.hasDocument() ? send() : choose(); };
  if (selection.isFile()) return tryTo(go);
  const auto illegal = printer_.panel().prepareToPrint();
  if (!illegal) return;
  const auto conflicts = printer_.panel().conflicts();
  const bool isFine = illegal->empty() && conflicts.empty();
  if (!isFine && !withProblems) return askAboutProblems(*illegal, conflicts);
  tryTo(go);
}

// A conflict is asked about once; the dialog cannot correct it for the user.
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

// Reports mistakes in the tabs before the program lays the document out.
void Dialog::choose() {
  const auto& selection = printer_.selection();
  if (selection.isPrinter()) {
    static_cast<void>(makeRequest());
  } else {
    printer_.refuseWrongPages();
  }
  laidOut_ = selection.isFile() ? LaidOut::everything : LaidOut::pages;
  laidOutFor_ = selection.name();
  layout_ = settingsToLayOut(printer_.tabs(), laidOut_);
  window_.enter(DialogState::chosen);
  window_.hide();
  events_.onChosen();
}

DialogChoice Dialog::choice() {
  const auto [settings, setup] = printer_.tabs();
  DialogChoice choice{{layout_.begin(), layout_.end()}, entriesOf(*setup)};
  const auto format =
      laidOut_ == LaidOut::everything ? fileTargetOf(*settings, formats_).format : FileFormat::pdf;
  choice.settings[GTK_PRINT_SETTINGS_OUTPUT_FILE_FORMAT] = nameOf(format);
  choice.settings[GTK_PRINT_SETTINGS_PRINTER] = laidOutFor_;
  return choice;
}

void Dialog::take(Document document, bool isToBePrinted) {
  sender_.take(std::move(document));
  printer_.panel().forgetPage();
  printer_.enablePageSetup();
  window_.enter(DialogState::ready);
  if (printer_.selection().name() != laidOutFor_) {
    printer_.follow();
    showMessage(localized(kChoosePrinterText));
  } else if (isToBePrinted) {
    print(true);
  }
  if (liveIn(window_.state()).content) window_.show();
}

void Dialog::fail(const Failure& failure) {
  showMessage(failureText(failure), [this] { end(); });
}

void Dialog::refuseOtherLayout() {
  if (laidOut_ != LaidOut::nothing && settingsToLayOut(printer_.tabs(), laidOut_) != layout_)
    throw Failure(Trouble::userMessage, Fact(FactText{kLaidOutText}, {}));
}

PrintRequest Dialog::makeRequest() {
  auto request = printer_.makeRequest();
  removeLaidOut(request.options, laidOut_);
  std::ranges::move(keywordsLaidOut(laidOut_), std::back_inserter(request.notKept));
  refuseLossyValues(request.options);
  request.options = encodable(std::move(request.options));
  if (request.title) refuseLossyTitle(*request.title);
  return request;
}

// The dialog is hidden when a program has just sent its document. If sending takes long, the dialog is shown,
// so that the user can cancel.
void Dialog::enterSending() {
  hasStartedPrinting_ = true;
  window_.enter(DialogState::sending);
  Glib::signal_timeout().connect_seconds_once(sigc::mem_fun(*this, &Dialog::showIfSending), kQuietSeconds);
}

void Dialog::showIfSending() {
  if (window_.state() == DialogState::sending && !window_.isShown()) window_.show();
}

void Dialog::send() {
  refuseOtherLayout();
  if (printer_.selection().isFile()) return save();
  const auto request = makeRequest();
  enterSending();
  sender_.send(request, [this](const auto& outcome) { onSent(outcome); });
}

// The panel's settings belong to a printer and do not apply to a file.
void Dialog::save() {
  const auto settings = printer_.tabs().settings;
  refusePartInFile(*settings, laidOut_);
  const auto target = fileTargetOf(*settings, formats_);
  enterSending();
  window_.showProgress(localized(kSavingText), std::nullopt);
  sender_.save(target, [this](const auto& outcome) { onSaved(outcome); });
}

void Dialog::onSaved(const Outcome<SavedFile>& outcome) {
  const bool isCancelled = window_.state() == DialogState::cancelling;
  window_.enter(DialogState::ready);
  if (outcome.result) printed_ = *outcome.result;
  if (isCancelled || outcome.result) {
    failure_ = outcome.failure;
    return end();
  }
  showMessage(failureText(*outcome.failure));
  printer_.follow();
}

void Dialog::onSent(const Outcome<SendResult>& outcome) {
  const bool isCancelled = window_.state() == DialogState::cancelling;
  window_.enter(DialogState::ready);
  if (outcome.result) printed_ = outcome.result->job;
  if (isCancelled) {
    failure_ = outcome.failure;
    // The login was cancelled along with the job, which then does not exist.
    if (failure_ && failure_->trouble() == Trouble::unauthorized)
      failure_ = Failure(Trouble::cancelled, failure_->fact());
    return end();
  }
  if (outcome.failure) {
    showMessage(failureText(*outcome.failure));
    // GTK may have selected another printer in the meantime.
    return printer_.follow();
  }
  const auto& problems = outcome.result->problems;
  if (problems.empty()) return end();
  showMessage(failuresText(problems), [this] { end(); });
}

}  // namespace tandemtrim::host
