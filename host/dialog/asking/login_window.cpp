#include "host/dialog/asking/login_window.hpp"

#include <future>
#include <utility>

#include <cups/cups.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>

#include "host/dialog/asking/background.hpp"
#include "host/dialog/texts/texts.hpp"
#include "host/filled_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kGap = 12;

Gtk::Entry& addRow(Gtk::Grid& grid, int row, const char* title) {
  auto& label = *Gtk::make_managed<Gtk::Label>(localized(title), true);
  auto& entry = *Gtk::make_managed<Gtk::Entry>();
  label.set_mnemonic_widget(entry);
  label.set_xalign(0);
  gtk_accessible_update_relation(GTK_ACCESSIBLE(entry.gobj()), GTK_ACCESSIBLE_RELATION_LABELLED_BY,
                                 label.gobj(), nullptr, -1);
  entry.set_activates_default();
  entry.set_hexpand();
  grid.attach(label, 0, row);
  grid.attach(entry, 1, row);
  return entry;
}

}  // namespace

struct LoginWindow::Answer {
  std::promise<std::optional<Login>> promise;
};

AskForLogin LoginWindow::ask() {
  return [this, alive = std::weak_ptr<void>(alive_)](const LoginQuestion& question) {
    return waitForAnswer(this, alive, question);
  };
}

// Runs on another thread, where `window` may be gone already.
std::optional<Login> LoginWindow::waitForAnswer(LoginWindow* window, const std::weak_ptr<void>& alive,
                                                const LoginQuestion& question) {
  auto answer = std::make_shared<Answer>();
  auto login = answer->promise.get_future();
  inForeground([window, alive, question, answer] {
    if (alive.expired() || !window->mayAsk_()) {
      answer->promise.set_value(std::nullopt);
    } else {
      window->show(question, answer);
    }
  });
  return login.get();
}

void LoginWindow::show(const LoginQuestion& question, std::shared_ptr<Answer> answer) {
  giveUp();
  answer_ = std::move(answer);
  window_ = std::make_unique<Gtk::Dialog>(localized(kLoginTitleText), parent_, true);
  auto& grid = *Gtk::make_managed<Gtk::Grid>();
  grid.set_margin(kGap);
  grid.set_row_spacing(kGap);
  grid.set_column_spacing(kGap);
  auto& text = *Gtk::make_managed<Gtk::Label>(
      filled(localized(question.isRepeated ? kLoginAgainText : kLoginText), {{"[server]", question.server}}));
  text.set_wrap();
  grid.attach(text, 0, 0, 2);
  auto& user = addRow(grid, 1, kUserText);
  auto& password = addRow(grid, 2, kPasswordText);
  user.set_text(cupsUser());
  password.set_visibility(false);
  password.set_input_purpose(Gtk::InputPurpose::PASSWORD);
  window_->get_content_area()->append(grid);
  window_->add_button(localized(kCancelText), Gtk::ResponseType::CANCEL);
  window_->add_button(localized(kContinueText), Gtk::ResponseType::OK);
  window_->set_default_response(Gtk::ResponseType::OK);
  window_->set_hide_on_close();
  window_->signal_response().connect([this, &user, &password](int response) {
    const bool isGiven = response == Gtk::ResponseType::OK;
    finish(isGiven ? std::optional(Login{user.get_text(), password.get_text()}) : std::nullopt);
  });
  window_->set_visible();
  password.grab_focus();
}

void LoginWindow::giveUp() { finish(std::nullopt); }

void LoginWindow::finish(const std::optional<Login>& login) {
  if (window_) window_->set_visible(false);
  if (auto answer = std::exchange(answer_, nullptr)) answer->promise.set_value(login);
}

}  // namespace tandemtrim::host
