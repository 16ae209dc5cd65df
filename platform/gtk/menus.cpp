#include "platform/gtk/menus.hpp"

#include <algorithm>
#include <memory>

#include <gtk/gtk.h>

namespace tandemtrim::platform::gtk {
namespace {

GtkTreeModel* modelOf(Gtk::ComboBoxText& menu) { return gtk_combo_box_get_model(menu.Gtk::ComboBox::gobj()); }

GtkTreeIter rowAt(Gtk::ComboBoxText& menu, int index) {
  GtkTreeIter row{};
  gtk_tree_model_iter_nth_child(modelOf(menu), &row, nullptr, index);
  return row;
}

// The wheel that scrolls the dialog must not choose another item on its way.
void ignoreWheel(GtkWidget* menu) {
  GListModel* const controllers = gtk_widget_observe_controllers(menu);
  for (guint index = 0; index < g_list_model_get_n_items(controllers); ++index) {
    void* const controller = g_list_model_get_item(controllers, index);
    if (GTK_IS_EVENT_CONTROLLER_SCROLL(controller)) {
      gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(controller), GTK_PHASE_NONE);
    }
    g_object_unref(controller);
  }
  g_object_unref(controllers);
}

// The part of a menu that takes the keyboard, and of which a screen reader therefore speaks.
GtkWidget* buttonOf(GtkWidget* menu) {
  auto* child = gtk_widget_get_first_child(menu);
  while (child != nullptr && !GTK_IS_TOGGLE_BUTTON(child))
    child = GTK_IS_BOX(child) ? gtk_widget_get_first_child(child) : gtk_widget_get_next_sibling(child);
  return child;
}

// The menu's name is its button's as well.
void nameButton(GtkWidget* menu) {
  auto* const button = buttonOf(menu);
  GList* const labels = gtk_widget_list_mnemonic_labels(menu);
  if (button != nullptr && labels != nullptr)
    gtk_accessible_update_relation(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_RELATION_LABELLED_BY, labels->data,
                                   nullptr, -1);
  g_list_free(labels);
}

}  // namespace

std::optional<std::string> MenuItem::column(int column) const {
  auto row = rowAt(menu_, index_);
  char* text = nullptr;
  gtk_tree_model_get(modelOf(menu_), &row, column, &text, -1);
  const std::unique_ptr<char, decltype(&g_free)> owned(text, &g_free);
  return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

void MenuItem::setColumn(int column, std::string_view text) {
  auto row = rowAt(menu_, index_);
  gtk_list_store_set(GTK_LIST_STORE(modelOf(menu_)), &row, column, std::string(text).c_str(), -1);
}

PopUpButton::PopUpButton(Gtk::ComboBoxText& menu) : ControlOf(menu) {
  const int count = gtk_tree_model_iter_n_children(modelOf(menu), nullptr);
  for (int index = 0; index < count; ++index) items_.emplace_back(menu, index);
  ignoreWheel(GTK_WIDGET(menu.gobj()));
  nameButton(GTK_WIDGET(menu.gobj()));
  menu.signal_changed().connect(sigc::mem_fun(*this, &PopUpButton::tellChoice));
}

// The button's name does not say what is chosen.
void PopUpButton::tellChoice() {
  if (auto* const button = buttonOf(GTK_WIDGET(widget().gobj())))
    gtk_accessible_update_property(GTK_ACCESSIBLE(button), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                   widget().get_active_text().c_str(), -1);
}

MenuItem* PopUpButton::selectedItem() {
  const int selected = widget().get_active_row_number();
  return selected < 0 ? nullptr : &items_.at(static_cast<std::size_t>(selected));
}

void PopUpButton::selectItemWithTitle(std::string_view title) {
  const auto item = std::ranges::find(items_, title, &MenuItem::title);
  widget().set_active(item == items_.end() ? -1 : static_cast<int>(item - items_.begin()));
}

}  // namespace tandemtrim::platform::gtk
