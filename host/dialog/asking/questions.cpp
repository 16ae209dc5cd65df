#include "host/dialog/asking/questions.hpp"

#include <glibmm/main.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>

#include "host/dialog/texts/sentence_list.hpp"
#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

// Limits by which the window of any message fits on a small screen.
constexpr int kMostHeight = 260;
constexpr int kMostCharacters = 60;
constexpr int kMostHeadingLines = 5;

void boundHeading(Gtk::MessageDialog& question) {
  auto* const heading = dynamic_cast<Gtk::Label*>(question.get_message_area()->get_first_child());
  if (heading == nullptr) return;
  heading->add_css_class("title");
  heading->set_wrap_mode(Pango::WrapMode::WORD_CHAR);
  heading->set_lines(kMostHeadingLines);
  heading->set_ellipsize(Pango::EllipsizeMode::END);
}

// The toolkit gives its window no name for screen readers.
void nameForReader(Gtk::MessageDialog& question, const Message& message) {
  const auto description = linesOf(message);
  gtk_accessible_update_property(GTK_ACCESSIBLE(question.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 message.heading.c_str(), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                 description.c_str(), -1);
}

}  // namespace

void Questions::showMessage(const std::string& message, std::function<void()> then) {
  ask(messageOf(message), {{localized(kCloseText), Gtk::ResponseType::CLOSE}}, Gtk::ResponseType::CLOSE,
      [then = std::move(then)](int) { then(); });
}

// `then` may ask again, so it runs when the toolkit is done with this question.
void Questions::ask(const Message& message, const std::vector<Answer>& answers, int defaultAnswer,
                    std::function<void(int)> then) {
  question_ = std::make_unique<Gtk::MessageDialog>(parent_, directed(parent_, message.heading), false,
                                                   Gtk::MessageType::OTHER, Gtk::ButtonsType::NONE, true);
  boundHeading(*question_);
  if (!message.sentences.empty()) {
    auto* const sentences = Gtk::make_managed<SentenceList>(kMostHeight);
    sentences->set_propagate_natural_width();
    sentences->show(message.sentences, kMostCharacters);
    question_->get_message_area()->append(*sentences);
  }
  nameForReader(*question_, message);
  question_->set_hide_on_close();
  for (const auto& [title, answer] : answers) question_->add_button(title, answer);
  question_->set_default_response(defaultAnswer);
  question_->signal_response().connect([this, then = std::move(then)](int answer) {
    question_->set_visible(false);
    Glib::signal_idle().connect_once([alive = std::weak_ptr<void>(alive_), then, answer] {
      if (!alive.expired()) then(answer);
    });
  });
  question_->set_visible();
}

}  // namespace tandemtrim::host
