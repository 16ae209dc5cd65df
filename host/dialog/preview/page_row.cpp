#include "host/dialog/preview/page_row.hpp"

#include <string>

#include <gtk/gtk.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

#include "host/dialog/texts/texts.hpp"
#include "host/filled_text.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kGapInPageRow = 6;
constexpr const char* kTurnClass = "tandem-trim-turn";
constexpr const char* kEndClass = "tandem-trim-end";

// Makes the two buttons small, since they belong to the number between them.
void addTurnStyle() {
  static const bool isAdded = [] {
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(std::string("button.") + kTurnClass +
                             " { min-height: 16px; min-width: 16px; padding: 3px 6px; } button." + kEndClass +
                             " { opacity: 0.5; }");
    Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider,
                                                GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    return true;
  }();
  static_cast<void>(isAdded);
}

void setUp(Gtk::Button& button, const char* icon, const char* name) {
  button.set_icon_name(icon);
  button.set_has_frame(false);
  button.add_css_class(kTurnClass);
  gtk_accessible_update_property(GTK_ACCESSIBLE(button.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                 localized(name).c_str(), -1);
}

// The button looks and is spoken like a disabled one, but keeps the focus, which the toolkit would take away
// from a disabled one.
void setAtEnd(Gtk::Button& button, bool isAtEnd) {
  if (isAtEnd) {
    button.add_css_class(kEndClass);
  } else {
    button.remove_css_class(kEndClass);
  }
  gtk_accessible_update_state(GTK_ACCESSIBLE(button.gobj()), GTK_ACCESSIBLE_STATE_DISABLED, isAtEnd, -1);
}

}  // namespace

std::string pageNumberText(const PagePlace& place) {
  return filled(localized(kPageNumberText),
                {{"[page]", std::to_string(place.number)}, {"[pages]", std::to_string(place.pages)}});
}

bool isTurnButton(GtkWidget* widget) { return gtk_widget_has_css_class(widget, kTurnClass) != FALSE; }

PageRow::PageRow(const std::function<void(int)>& turn)
    : Gtk::Box(Gtk::Orientation::HORIZONTAL, kGapInPageRow) {
  addTurnStyle();
  setUp(back_, "go-previous-symbolic", kPreviousPageText);
  setUp(on_, "go-next-symbolic", kNextPageText);
  back_.signal_clicked().connect([turn] { turn(-1); });
  on_.signal_clicked().connect([turn] { turn(1); });
  append(back_);
  append(number_);
  append(on_);
  set_valign(Gtk::Align::CENTER);
}

void PageRow::show(const PagePlace& place) {
  set_visible(place.pages > 1);
  number_.set_text(pageNumberText(place));
  setAtEnd(back_, !place.hasPrevious);
  setAtEnd(on_, !place.hasNext);
}

// A screen reader speaks the focused control's description when it changes.
void PageRow::describe(const std::string& note) {
  const auto text = number_.get_text().raw() + (note.empty() ? "" : "; ") + note;
  for (auto* const button : {&back_, &on_})
    gtk_accessible_update_property(GTK_ACCESSIBLE(button->gobj()), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                   text.c_str(), -1);
}

}  // namespace tandemtrim::host
