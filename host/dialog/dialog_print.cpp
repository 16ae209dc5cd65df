// What the dialog does when the person presses Print or closes it.

#include <utility>

#include <gtk/gtkunixprint.h>

#include "host/dialog/dialog.hpp"
#include "host/dialog/remembered.hpp"
#include "host/dialog/texts.hpp"
#include "host/failure.hpp"
#include "host/progress_line.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kCorrect = 1;
constexpr int kSendAsItIs = 2;

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

void Dialog::allowPrinting(bool allowed) { dialog_->set_response_sensitive(Gtk::ResponseType::OK, allowed); }

void Dialog::print(bool asItIs) {
  auto* const chosen = gtk_print_unix_dialog_get_selected_printer(dialog_->gobj());
  if (chosen == nullptr || gtk_printer_is_virtual(chosen) != FALSE)
    return tell(localized(kChoosePrinterText));
  if (reading_ || current_ != selectedPrinter()) {
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
      illegal = panel_->illegalValues();
    });
    if (!works || !agreed) return;
    if (!illegal.empty() && !asItIs) return askAboutIllegalValues(illegal);
  }
  try {
    const auto job = order();
    refuseLossyValues(job.options);
    send(job);
  } catch (const Failure& failure) {
    tell(failure.what());
  }
}

void Dialog::askAboutIllegalValues(const std::vector<IllegalValue>& values) {
  question_ = std::make_unique<Gtk::MessageDialog>(*dialog_, illegalValuesText(values), false,
                                                   Gtk::MessageType::QUESTION, Gtk::ButtonsType::NONE, true);
  question_->add_button(localized(kBackText), Gtk::ResponseType::CANCEL);
  question_->add_button(localized(kSendAsItIsText), kSendAsItIs);
  question_->add_button(localized(kCorrectText), kCorrect);
  question_->set_default_response(kCorrect);
  question_->signal_response().connect([this](int response) {
    question_->set_visible(false);
    if (response == kCorrect) correct();
    if (response == kCorrect || response == kSendAsItIs) print(response == kSendAsItIs);
  });
  question_->set_visible();
}

void Dialog::tell(const Glib::ustring& message) {
  question_ = std::make_unique<Gtk::MessageDialog>(*dialog_, message, false, Gtk::MessageType::WARNING,
                                                   Gtk::ButtonsType::NONE, true);
  question_->add_button(localized(kCloseText), Gtk::ResponseType::CLOSE);
  question_->signal_response().connect([this](int) { question_->set_visible(false); });
  question_->set_visible();
}

void Dialog::send(const Order& order) {
  allowPrinting(false);
  notice_->set_text(localized(kSendingText));
  notice_->set_visible();
  unwanted_ = std::make_shared<std::atomic<bool>>(false);
  const auto progress = [this, unwanted = unwanted_, alive = std::weak_ptr<void>(alive_)](
                            const std::string& name, auto sent, auto size) {
    if (*unwanted) throw Failure("cancelled");
    Glib::signal_idle().connect_once([this, alive, shown = progressText(name, sent, size)] {
      if (!alive.expired()) notice_->set_text(shown);
    });
  };
  inBackground<SentJob>(
      alive_, [order, progress] { return carryOut(order, progress); },
      [this, order](const auto& outcome) { onSent(order, outcome); });
}

void Dialog::onSent(const Order& order, const Outcome<SentJob>& outcome) {
  const bool wanted = !*std::exchange(unwanted_, nullptr);
  notice_->set_visible(false);
  allowPrinting(true);
  if (!outcome.result && !wanted) return loop_->quit();
  if (!outcome.result) {
    note_(outcome.failure);
    return tell(outcome.failure);
  }
  sent_ = outcome.result;
  rememberOrder(order);
  loop_->quit();
}

void Dialog::rememberOrder(const Order& order) {
  Remembered remembered{Glib::KeyFile::create(), {}};
  auto* const settings = gtk_print_unix_dialog_get_settings(dialog_->gobj());
  gtk_print_settings_to_key_file(settings, remembered.dialog->gobj(), nullptr);
  g_object_unref(settings);
  if (panel_) {
    for (const auto& keyword : panel_->keywords()) {
      std::optional<std::string> value;
      settings_.PMPrintSettingsGetValue(keyword, value);
      if (value) remembered.panel.push_back({keyword, *value});
    }
  }
  remember(order.printer, remembered, note_);
}

}  // namespace tandemtrim::host
