#include "host/dialog/panel/summary_tab.hpp"

#include <string>

#include <gtkmm/label.h>
#include <gtkmm/sizegroup.h>

#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kSummaryMargin = 12;
constexpr int kRowSpacing = 6;
constexpr int kColumnSpacing = 12;

GtkBox* makeBox(GtkAccessibleRole role) {
  return GTK_BOX(g_object_new(GTK_TYPE_BOX, "accessible-role", role, nullptr));
}

// By this name the theme leaves it the ground of the dialog's other pages.
GtkListBox* makeList() {
  return GTK_LIST_BOX(g_object_new(GTK_TYPE_LIST_BOX, "css-name", "grid", "accessible-role",
                                   GTK_ACCESSIBLE_ROLE_GROUP, "selection-mode", GTK_SELECTION_NONE, nullptr));
}

GtkListBoxRow* makeStop() {
  return GTK_LIST_BOX_ROW(g_object_new(GTK_TYPE_LIST_BOX_ROW, "accessible-role", GTK_ACCESSIBLE_ROLE_LIST,
                                       "activatable", FALSE, nullptr));
}

template <class Widget>
void tell(Widget* widget, GtkAccessibleProperty property, const std::string& text) {
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget), property, text.c_str(), -1);
}

}  // namespace

SummaryTab::SummaryTab()
    : Gtk::ListBox(makeList()), stop_(makeStop()), rows_(makeBox(GTK_ACCESSIBLE_ROLE_GROUP)) {
  set_margin(kSummaryMargin);
  gtk_orientable_set_orientation(GTK_ORIENTABLE(rows_), GTK_ORIENTATION_VERTICAL);
  gtk_box_set_spacing(rows_, kRowSpacing);
  gtk_list_box_row_set_child(stop_, GTK_WIDGET(rows_));
  gtk_list_box_append(gobj(), GTK_WIDGET(stop_));
  tell(stop_, GTK_ACCESSIBLE_PROPERTY_LABEL, localized(kSummaryText));
}

void SummaryTab::showRows(const std::vector<SummaryRow>& rows) {
  while (auto* const row = gtk_widget_get_first_child(GTK_WIDGET(rows_))) gtk_box_remove(rows_, row);
  const auto titles = Gtk::SizeGroup::create(Gtk::SizeGroup::Mode::HORIZONTAL);
  std::string all;
  for (const auto& [title, value] : rows) {
    auto* const row = makeBox(GTK_ACCESSIBLE_ROLE_LIST_ITEM);
    gtk_box_set_spacing(row, kColumnSpacing);
    const auto text = title + ": " + value;
    tell(row, GTK_ACCESSIBLE_PROPERTY_LABEL, text);
    all += (all.empty() ? "" : "\n") + text;
    for (const auto& shown : {title, value}) {
      auto* const label = Gtk::make_managed<Gtk::Label>(shown);
      label->set_xalign(0);
      gtk_box_append(row, GTK_WIDGET(label->gobj()));
    }
    titles->add_widget(*Glib::wrap(gtk_widget_get_first_child(GTK_WIDGET(row))));
    gtk_box_append(rows_, GTK_WIDGET(row));
  }
  tell(stop_, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, all);
}

}  // namespace tandemtrim::host
