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

// Two small buttons that belong to the number between them.
void addTurnStyle() {
  static const bool isAdded = [] {
    const auto provider = Gtk::CssProvider::create();
    provider->load_from_data(std::string("button.") + kTurnClass +
                             " { min-height: 16px; min-width: 16px; padding: 3px 6px; }");
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

}  // namespace

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

// A button that ends at the last page would take the keyboard along with it.
void PageRow::show(const PagePlace& place) {
  set_visible(place.pages > 1);
  number_.set_text(filled(localized(kPageNumberText), {{"[page]", std::to_string(place.number)},
                                                       {"[pages]", std::to_string(place.pages)}}));
  const bool isAtButton = back_.has_focus() || on_.has_focus();
  back_.set_sensitive(place.hasPrevious);
  on_.set_sensitive(place.hasNext);
  if (isAtButton && !back_.get_sensitive()) on_.grab_focus();
  if (isAtButton && !on_.get_sensitive()) back_.grab_focus();
}

}  // namespace tandemtrim::host
