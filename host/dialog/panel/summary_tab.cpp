#include "host/dialog/panel/summary_tab.hpp"

#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/listboxrow.h>
#include <gtkmm/sizegroup.h>

#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kSummaryMargin = 12;
constexpr int kRowSpacing = 6;
constexpr int kColumnSpacing = 12;

// By this name the theme leaves it the ground of the dialog's other pages.
GtkListBox* makeList() { return GTK_LIST_BOX(g_object_new(GTK_TYPE_LIST_BOX, "css-name", "grid", nullptr)); }

void name(Gtk::Widget& widget, const std::string& text) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, text.c_str(),
                                 -1);
}

}  // namespace

SummaryTab::SummaryTab() : Gtk::ListBox(makeList()) {
  set_margin(kSummaryMargin);
  set_selection_mode(Gtk::SelectionMode::NONE);
  name(*this, localized(kSummaryText));
}

void SummaryTab::showRows(const std::vector<SummaryRow>& rows) {
  while (auto* const row = get_row_at_index(0)) remove(*row);
  const auto titles = Gtk::SizeGroup::create(Gtk::SizeGroup::Mode::HORIZONTAL);
  for (const auto& [title, value] : rows) {
    auto* const cells = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, kColumnSpacing);
    for (const auto& shown : {title, value}) {
      auto* const label = Gtk::make_managed<Gtk::Label>(shown);
      label->set_xalign(0);
      cells->append(*label);
    }
    titles->add_widget(*cells->get_first_child());
    cells->set_margin_bottom(kRowSpacing);
    auto* const row = Gtk::make_managed<Gtk::ListBoxRow>();
    row->set_child(*cells);
    row->set_activatable(false);
    name(*row, title + ": " + value);
    append(*row);
  }
}

}  // namespace tandemtrim::host
