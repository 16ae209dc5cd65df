#include "host/dialog/panel/summary_tab.hpp"

#include <string>

#include <gdkmm/clipboard.h>
#include <giomm/menu.h>
#include <giomm/simpleactiongroup.h>
#include <gtkmm/gestureclick.h>
#include <gtkmm/label.h>
#include <gtkmm/shortcut.h>
#include <gtkmm/shortcutaction.h>
#include <gtkmm/shortcutcontroller.h>
#include <gtkmm/shortcuttrigger.h>
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

// With this CSS name the theme gives the list the background of the dialog's other pages.
GtkListBox* makeList() {
  return GTK_LIST_BOX(g_object_new(GTK_TYPE_LIST_BOX, "css-name", "grid", "accessible-role",
                                   GTK_ACCESSIBLE_ROLE_GROUP, "selection-mode", GTK_SELECTION_NONE, nullptr));
}

GtkListBoxRow* makeStop() {
  return GTK_LIST_BOX_ROW(g_object_new(GTK_TYPE_LIST_BOX_ROW, "accessible-role", GTK_ACCESSIBLE_ROLE_LIST,
                                       "activatable", FALSE, nullptr));
}

template <class Widget>
void setForReader(Widget* widget, GtkAccessibleProperty property, const std::string& text) {
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
  setForReader(stop_, GTK_ACCESSIBLE_PROPERTY_LABEL, localized(kSummaryText));
  makeCopyable();
}

// Makes the rows copyable as the toolkit's own texts are.
void SummaryTab::makeCopyable() {
  const auto actions = Gio::SimpleActionGroup::create();
  actions->add_action("copy", [this] { get_clipboard()->set_text(text_); });
  insert_action_group("summary", actions);
  // The list itself releases only its rows.
  signal_unmap().connect([this] { g_clear_pointer(&menu_, gtk_widget_unparent); });

  const auto keys = Gtk::ShortcutController::create();
  const auto add = [&](const char* trigger, const Glib::RefPtr<Gtk::ShortcutAction>& action) {
    keys->add_shortcut(Gtk::Shortcut::create(Gtk::ShortcutTrigger::parse_string(trigger), action));
  };
  add("<Control>c|<Control>Insert", Gtk::NamedAction::create("summary.copy"));
  add("<Shift>F10|Menu", Gtk::CallbackAction::create([this](Gtk::Widget&, const Glib::VariantBase&) {
        showMenu(0, 0);
        return true;
      }));
  add_controller(keys);
  const auto click = Gtk::GestureClick::create();
  click->set_button(GDK_BUTTON_SECONDARY);
  click->signal_pressed().connect(
      [this](int /*count*/, double x, double y) { showMenu(static_cast<int>(x), static_cast<int>(y)); });
  add_controller(click);
}

void SummaryTab::showMenu(int x, int y) {
  if (menu_ == nullptr) {
    const auto items = Gio::Menu::create();
    items->append(g_dgettext("gtk40", "_Copy"), "summary.copy");
    menu_ = gtk_popover_menu_new_from_model(G_MENU_MODEL(items->gobj()));
    gtk_popover_set_has_arrow(GTK_POPOVER(menu_), FALSE);
    gtk_widget_set_halign(menu_, GTK_ALIGN_START);
    gtk_widget_set_parent(menu_, GTK_WIDGET(stop_));
  }
  const GdkRectangle place{x, y, 1, 1};
  gtk_popover_set_pointing_to(GTK_POPOVER(menu_), &place);
  gtk_popover_popup(GTK_POPOVER(menu_));
}

void SummaryTab::showRows(const std::vector<SummaryRow>& rows) {
  while (auto* const row = gtk_widget_get_first_child(GTK_WIDGET(rows_))) gtk_box_remove(rows_, row);
  const auto titles = Gtk::SizeGroup::create(Gtk::SizeGroup::Mode::HORIZONTAL);
  text_.clear();
  for (const auto& [title, value] : rows) {
    auto* const row = makeBox(GTK_ACCESSIBLE_ROLE_LIST_ITEM);
    gtk_box_set_spacing(row, kColumnSpacing);
    const auto text = title + ": " + value;
    setForReader(row, GTK_ACCESSIBLE_PROPERTY_LABEL, text);
    text_ += (text_.empty() ? "" : "\n") + text;
    for (const auto& shown : {title, value}) {
      auto* const label = Gtk::make_managed<Gtk::Label>(shown);
      label->set_xalign(0);
      gtk_box_append(row, GTK_WIDGET(label->gobj()));
    }
    titles->add_widget(*Glib::wrap(gtk_widget_get_first_child(GTK_WIDGET(row))));
    gtk_box_append(rows_, GTK_WIDGET(row));
  }
  setForReader(stop_, GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, text_);
}

}  // namespace tandemtrim::host
