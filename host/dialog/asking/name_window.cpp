#include "host/dialog/asking/name_window.hpp"

#include <utility>

#include <glibmm/main.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>

#include "host/dialog/texts/texts.hpp"
#include "host/presets/preset_folders.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kGapOfRows = 12;

std::string withoutBlanksAround(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool isName(const std::string& text) {
  try {
    refuseWrongPresetName(text);
    return true;
  } catch (const Failure&) {
    return false;
  }
}

}  // namespace

void NameWindow::ask(const Answer& begin, bool asksForPages, std::function<void(const Answer&)> then) {
  window_ = std::make_unique<Gtk::Dialog>(localized(kPresetText), parent_, true);
  auto& grid = *Gtk::make_managed<Gtk::Grid>();
  grid.set_margin(kGapOfRows);
  grid.set_row_spacing(kGapOfRows);
  grid.set_column_spacing(kGapOfRows);
  auto& label = *Gtk::make_managed<Gtk::Label>(localized(kPresetNameText), true);
  auto& entry = *Gtk::make_managed<Gtk::Entry>();
  label.set_mnemonic_widget(entry);
  gtk_accessible_update_relation(GTK_ACCESSIBLE(entry.gobj()), GTK_ACCESSIBLE_RELATION_LABELLED_BY,
                                 label.gobj(), nullptr, -1);
  entry.set_activates_default();
  entry.set_hexpand();
  entry.set_text(begin.name);
  grid.attach(label, 0, 0);
  grid.attach(entry, 1, 0);
  auto& pages = *Gtk::make_managed<Gtk::CheckButton>(localized(kPresetWithPagesText), true);
  pages.set_active(begin.withPages);
  pages.set_visible(asksForPages);
  grid.attach(pages, 0, 1, 2);
  window_->get_content_area()->append(grid);
  window_->add_button(localized(kCancelText), Gtk::ResponseType::CANCEL);
  window_->add_button(localized(kContinueText), Gtk::ResponseType::OK);
  window_->set_default_response(Gtk::ResponseType::OK);
  window_->set_hide_on_close();
  const auto judge = [this, &entry] {
    window_->set_response_sensitive(Gtk::ResponseType::OK, isName(withoutBlanksAround(entry.get_text())));
  };
  entry.signal_changed().connect(judge);
  judge();
  window_->signal_response().connect([this, &entry, &pages, then = std::move(then)](int response) {
    window_->set_visible(false);
    if (response != Gtk::ResponseType::OK) return;
    const Answer given{withoutBlanksAround(entry.get_text()), pages.get_active()};
    // `then` may ask again, so it runs when the toolkit is done with this window.
    Glib::signal_idle().connect_once([alive = std::weak_ptr<void>(alive_), then, given] {
      if (!alive.expired()) then(given);
    });
  });
  window_->set_visible();
  entry.grab_focus();
}

}  // namespace tandemtrim::host
