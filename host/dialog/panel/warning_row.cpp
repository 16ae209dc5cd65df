#include "host/dialog/panel/warning_row.hpp"

#include <gtkmm/cssprovider.h>
#include <gtkmm/image.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/window.h>

#include "host/dialog/panel/spoken_title.hpp"
#include "host/dialog/preview/page_row.hpp"
#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kIconSpacing = 12;
// With so many lines the dialog still fits on a small screen.
constexpr int kMostListHeight = 90;
constexpr const char* kStyleClass = "tandem-trim-warning";

GtkBox* makeAlert() {
  return GTK_BOX(g_object_new(GTK_TYPE_BOX, "accessible-role", GTK_ACCESSIBLE_ROLE_ALERT, nullptr));
}

// The theme's warning colour is hard to read as a text, on light ground above all.
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

// The part of a control that a screen reader knows as the focused one: a number's text is a part of its box.
GtkWidget* knownToReader(GtkWidget* focused) {
  auto* const parent = gtk_widget_get_parent(focused);
  return GTK_IS_TEXT(focused) && GTK_IS_EDITABLE(parent) ? parent : focused;
}

// What describes a control without the row: a menu's choice.
std::string ownDescription(GtkWidget* control) {
  auto* const parent = gtk_widget_get_parent(control);
  if (!GTK_IS_MENU_BUTTON(parent)) return "";
  auto* const label = gtk_menu_button_get_child(GTK_MENU_BUTTON(parent));
  return GTK_IS_LABEL(label) ? gtk_label_get_text(GTK_LABEL(label)) : "";
}

void describe(GtkWidget* control, const std::string& text) {
  auto* const accessible = GTK_ACCESSIBLE(control);
  if (text.empty()) {
    gtk_accessible_reset_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION);
  } else {
    gtk_accessible_update_property(accessible, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, text.c_str(), -1);
  }
}

}  // namespace

WarningRow::WarningRow(Gtk::Widget& page)
    : Gtk::Box(makeAlert()),
      correct(localized(kCorrectText), true),
      page_(page),
      sentences_(kMostListHeight) {
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
  // Of two things side by side the keyboard goes first to the one with the higher middle.
  correct.set_valign(Gtk::Align::END);
  speakTitle(correct, localized(kCorrectText));
  append(correct);
  if (auto* const window = dynamic_cast<Gtk::Window*>(page.get_root()))
    window->property_focus_widget().signal_changed().connect(
        sigc::mem_fun(*this, &WarningRow::describeFocused));
}

WarningRow::~WarningRow() { g_clear_weak_pointer(&described_); }

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
  describeNothing();
  describeFocused();
}

void WarningRow::describeFocused() {
  auto* const root = page_.get_root();
  if (text_.empty() || described_ != nullptr || root == nullptr) return;
  auto* const focused = gtk_root_get_focus(root->gobj());
  if (focused == nullptr || gtk_widget_is_ancestor(focused, page_.gobj()) == FALSE) return;
  // An item of an open menu goes away with the menu.
  if (gtk_widget_get_ancestor(focused, GTK_TYPE_POPOVER) != nullptr || isTurnButton(focused)) return;
  g_set_weak_pointer(&described_, knownToReader(focused));
  const auto own = ownDescription(described_);
  describe(described_, own.empty() ? text_ : own + "\n" + text_);
}

void WarningRow::describeNothing() {
  if (described_ == nullptr) return;
  describe(described_, ownDescription(described_));
  g_clear_weak_pointer(&described_);
}

}  // namespace tandemtrim::host
