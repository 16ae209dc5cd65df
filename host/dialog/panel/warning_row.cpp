#include "host/dialog/panel/warning_row.hpp"

#include <gtkmm/cssprovider.h>
#include <gtkmm/image.h>
#include <gtkmm/stylecontext.h>

#include "host/dialog/panel/spoken_title.hpp"
#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kIconSpacing = 12;
// With this height the dialog still fits on a small screen.
constexpr int kMostListHeight = 90;
constexpr const char* kStyleClass = "tandem-trim-warning";

GtkBox* makeAlert() {
  return GTK_BOX(g_object_new(GTK_TYPE_BOX, "accessible-role", GTK_ACCESSIBLE_ROLE_ALERT, nullptr));
}

// The theme's warning colour is hard to read as a text, above all on a light background.
void addStyle() {
  static const bool isAdded = [] {
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(std::string(".") + kStyleClass +
                             " { color: mix(@warning_color, @theme_fg_color, 0.5); }");
    Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider,
                                                GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    return true;
  }();
  static_cast<void>(isAdded);
}

}  // namespace

WarningRow::WarningRow()
    : Gtk::Box(makeAlert()), correct(localized(kCorrectText), true), sentences_(kMostListHeight) {
  addStyle();
  set_spacing(kIconSpacing);
  auto* const icon = Gtk::make_managed<Gtk::Image>();
  icon->set_from_icon_name("dialog-warning-symbolic");
  icon->set_valign(Gtk::Align::START);
  icon->add_css_class(kStyleClass);
  append(*icon);
  sentences_.add_css_class(kStyleClass);
  sentences_.set_hexpand();
  append(sentences_);
  // Of two widgets side by side the keyboard reaches the one with the higher middle first.
  correct.set_valign(Gtk::Align::END);
  speakTitle(correct, localized(kCorrectText));
  append(correct);
}

void WarningRow::show(const std::vector<std::string>& sentences, bool canCorrect) {
  std::string text;
  for (const auto& sentence : sentences) text += (text.empty() ? "" : "\n") + sentence;
  correct.set_visible(canCorrect);
  set_visible(!sentences.empty());
  if (text == text_) return;
  text_ = text;
  sentences_.show(sentences);
  for (auto* const named : {GTK_WIDGET(gobj()), GTK_WIDGET(sentences_.gobj())})
    gtk_accessible_update_property(GTK_ACCESSIBLE(named), GTK_ACCESSIBLE_PROPERTY_LABEL, text.c_str(), -1);
}

}  // namespace tandemtrim::host
