// What the dialog does when the person presses Print or closes it.

#include <string_view>
#include <utility>

#include <gtk/gtkunixprint.h>

#include "host/dialog/dialog.hpp"
#include "host/dialog/settings/remembered.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/failure.hpp"
#include "host/panel/bundle_search.hpp"
#include "host/progress_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kCorrect = 1;
constexpr int kSendAsItIs = 2;
constexpr const char* kUnwanted = "cancelled";

}  // namespace

void Dialog::onResponse(int response) {
  if (response == Gtk::ResponseType::OK) {
    print(false);
  } else {
    close();
  }
}

// A job that is on its way is called back, which may take as long as its server.
void Dialog::close() {
  if (!unwanted_) return loop_->quit();
  *unwanted_ = true;
  dialog_->set_visible(false);
}

void Dialog::allowPrinting(bool allowed) {
  mayPrint_ = allowed;
  dialog_->set_response_sensitive(Gtk::ResponseType::OK, allowed);
}

// GTK makes Print live whenever it hears of its printer, whatever the dialog is at.
void Dialog::onPrintLive() {
  if (!mayPrint_) allowPrinting(false);
}

void Dialog::printIfAsked() {
  if (!isReading_ && !wanted_ && std::exchange(printWhenRead_, false)) print(false);
}

void Dialog::print(bool asItIs) {
  if (unwanted_) return;
  auto* const chosen = gtk_print_unix_dialog_get_selected_printer(dialog_->gobj());
  if (chosen == nullptr || gtk_printer_is_virtual(chosen) != FALSE)
    return tell(localized(kChoosePrinterText));
  if (isReading_ || wanted_ || current_ != selectedPrinter()) {
    printWhenRead_ = true;
    return allowPrinting(false);
  }
  allowPrinting(true);
  if (panel_) {
    bool agreed = true;
    std::vector<IllegalValue> illegal;
    const bool works = guarded([&] {
      agreed = panel_->shouldPrint();
      panel_->save();
      illegal = illegalValues(panel_->settings());
    });
    if (!works || !agreed) return;
    if (!illegal.empty() && !asItIs) return askAboutIllegalValues(illegal);
  }
  try {
    const auto job = order();
    refuseLossyValues(job.options);
    if (line_.title) refuseLossyTitle(*line_.title);
    send(job);
  } catch (const Failure& failure) {
    tell(failureText(failure));
  }
}

void Dialog::askAboutIllegalValues(const std::vector<IllegalValue>& values) {
  ask(illegalValuesText(values), Gtk::MessageType::QUESTION,
      {{localized(kBackText), Gtk::ResponseType::CANCEL},
       {localized(kSendAsItIsText), kSendAsItIs},
       {localized(kCorrectText), kCorrect}},
      [this](int answer) {
        if (answer == kCorrect) correct();
        if (answer == kCorrect || answer == kSendAsItIs) print(answer == kSendAsItIs);
      });
}

void Dialog::tell(const Glib::ustring& message, std::function<void()> then) {
  ask(message, Gtk::MessageType::WARNING, {{localized(kCloseText), Gtk::ResponseType::CLOSE}},
      [then = std::move(then)](int) { then(); });
}

// What follows may ask anew, and so runs when the toolkit is done with this question.
void Dialog::ask(const Glib::ustring& message, Gtk::MessageType type,
                 const std::vector<std::pair<Glib::ustring, int>>& answers, std::function<void(int)> then) {
  question_ =
      std::make_unique<Gtk::MessageDialog>(*dialog_, message, false, type, Gtk::ButtonsType::NONE, true);
  question_->set_hide_on_close();
  for (const auto& [title, answer] : answers) question_->add_button(title, answer);
  question_->set_default_response(answers.back().second);
  question_->signal_response().connect([this, then = std::move(then)](int answer) {
    question_->set_visible(false);
    Glib::signal_idle().connect_once([alive = std::weak_ptr<void>(alive_), then, answer] {
      if (!alive.expired()) then(answer);
    });
  });
  question_->set_visible();
}

// The stored values of the panel's keywords.
Options Dialog::panelOptions() const {
  Options options;
  for (const auto& keyword : panelKeywords()) {
    std::optional<std::string> value;
    settings_.PMPrintSettingsGetValue(keyword, value);
    if (value) options.push_back({keyword, *value});
  }
  return options;
}

// What the order takes of the person's saved options and of the command line: those that neither the panel
// nor the dialog's pages show.
Order Dialog::order() {
  Order order{line_.server,
              current_,
              line_.title.value_or(documents_->front().name()),
              documents_,
              {},
              {shownPages(*dialog_), {}},
              panel_ && page_->useForAllJobs.get_active()};
  for (const auto& options : {saved_, asSpelledByPrinter(line_.options)}) {
    for (const auto& option : options) setOption(order.options, option);
  }
  auto* const chosen = gtk_print_unix_dialog_get_selected_printer(dialog_->gobj());
  const auto usual = Glib::wrap(gtk_printer_get_default_page_size(chosen));
  takeOptions(order.remembered.pages, ppd_.get(),
              usual ? gtk_page_setup_get_paper_size(usual->gobj()) : nullptr, untouched_, order.options);
  std::erase_if(order.options, [keywords = panelKeywords()](const Option& option) {
    return spelledAsIn(keywords, option.keyword).has_value();
  });
  if (current_ == first_ && line_.printer && line_.printer->starts_with(current_ + '/'))
    order.printer = *line_.printer;
  if (panel_) order.remembered.panel = panelOptions();
  if (panelFailed_) order.remembered.panel = recall({line_.server, current_}, note_).panel;
  if (!panel_) return order;
  for (const auto& option : order.remembered.panel) setOption(order.options, option);
  return order;
}

void Dialog::send(const Order& order) {
  showSending(true);
  unwanted_ = std::make_shared<std::atomic<bool>>(false);
  const auto progress = [this, unwanted = unwanted_, underWay = std::make_shared<std::atomic<bool>>(false),
                         alive = std::weak_ptr<void>(alive_)](const std::string& name, auto sent, auto size) {
    if (*unwanted) throw Failure(kUnwanted);
    // A document goes faster than the dialog can show of it.
    if (underWay->exchange(true)) return;
    Glib::signal_idle().connect_once(
        [this, alive, underWay, shown = progressText(name, sent, size, localized)] {
          *underWay = false;
          if (!alive.expired()) progress_->set_text(shown);
        });
  };
  inBackground<Delivery>(
      alive_, [order, progress, note = note_] { return carryOut(order, progress, note); },
      [this, order](const auto& outcome) { onSent(order, outcome); });
}

// GTK leaves the focus, and a blinking cursor, in an entry that is greyed. Without a focus no key acts, so
// that a second Enter does not cancel the job.
void Dialog::showSending(bool sending) {
  allowPrinting(!sending);
  if (sending) {
    g_set_weak_pointer(&focused_, gtk_window_get_focus(GTK_WINDOW(dialog_->gobj())));
    dialog_->unset_focus();
  }
  dialog_->get_content_area()->set_sensitive(!sending);
  if (!sending && focused_ != nullptr) gtk_widget_grab_focus(focused_);
  progress_->set_text(localized(kSendingText));
  progress_->set_visible(sending);
}

void Dialog::onSent(const Order& order, const Outcome<Delivery>& outcome) {
  const bool wanted = !*std::exchange(unwanted_, nullptr);
  showSending(false);
  if (!outcome.result) {
    if (outcome.failure->what() != std::string_view(kUnwanted)) note_(outcome.failure->what());
    return wanted ? tell(failureText(*outcome.failure)) : loop_->quit();
  }
  sent_ = outcome.result->job;
  auto shortcomings = outcome.result->shortcomings;
  if (const auto forgotten = remember({order.server, sent_->printer}, order.remembered, note_))
    shortcomings.push_back(*forgotten);
  if (wanted && !shortcomings.empty()) return tell(failuresText(shortcomings), [this] { loop_->quit(); });
  loop_->quit();
}

}  // namespace tandemtrim::host
