#include "host/dialog/asking/questions.hpp"

#include <glibmm/main.h>

#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

std::vector<Questions::Answer> closeOnly() { return {{localized(kCloseText), Gtk::ResponseType::CLOSE}}; }

}  // namespace

void Questions::showWarning(const Glib::ustring& message, std::function<void()> then) {
  show(message, Gtk::MessageType::WARNING, closeOnly(), [then = std::move(then)](int) { then(); });
}

void Questions::showInformation(const Glib::ustring& message) {
  show(message, Gtk::MessageType::INFO, closeOnly(), [](int) {});
}

void Questions::ask(const Glib::ustring& message, const std::vector<Answer>& answers,
                    std::function<void(int)> then) {
  show(message, Gtk::MessageType::QUESTION, answers, std::move(then));
}

// `then` may ask again, so it runs when the toolkit is done with this question.
void Questions::show(const Glib::ustring& message, Gtk::MessageType type, const std::vector<Answer>& answers,
                     std::function<void(int)> then) {
  question_ =
      std::make_unique<Gtk::MessageDialog>(parent_, message, false, type, Gtk::ButtonsType::NONE, true);
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

}  // namespace tandemtrim::host
