#include "adapters/gtk/controls/menus.hpp"

#include <algorithm>
#include <array>

#include "adapters/gtk/controls/guarded.hpp"

namespace tandemtrim::platform::gtk {
namespace {

// The part of a menu that takes the focus and that a screen reader therefore announces.
GtkAccessible* buttonOf(GtkMenuButton* menu) {
  return GTK_ACCESSIBLE(gtk_widget_get_first_child(GTK_WIDGET(menu)));
}

// Makes the menu's label the part's label, too.
void nameAsMenu(GtkAccessible* part, GtkMenuButton* menu) {
  GList* const labels = gtk_widget_list_mnemonic_labels(GTK_WIDGET(menu));
  if (labels != nullptr)
    gtk_accessible_update_relation(part, GTK_ACCESSIBLE_RELATION_LABELLED_BY, labels->data, nullptr, -1);
  g_list_free(labels);
}

// The width of the widest title in the unit of gtk_label_set_width_chars(): the width of an average
// character.
int widthInCharacters(GtkWidget* label, const std::vector<MenuItem>& items) {
  auto* const metrics = pango_context_get_metrics(gtk_widget_get_pango_context(label), nullptr, nullptr);
  const int unit = std::max({1, pango_font_metrics_get_approximate_char_width(metrics),
                             pango_font_metrics_get_approximate_digit_width(metrics)});
  pango_font_metrics_unref(metrics);
  int widest = 0;
  for (const auto& item : items) {
    auto* const layout = gtk_widget_create_pango_layout(label, item.title().c_str());
    int width = 0;
    pango_layout_get_size(layout, &width, nullptr);
    g_object_unref(layout);
    widest = std::max(widest, width);
  }
  return (widest + unit - 1) / unit;
}

}  // namespace

void MenuItem::setTitle(std::string_view title) {
  title_ = title;
  menu_.showTitles();
}

PopUpButton::PopUpButton(Gtk::MenuButton& button, const std::vector<std::string>& titles)
    : ControlOf(button) {
  for (const auto& title : titles) items_.emplace_back(*this, title);
  auto* const menu = button.gobj();
  // The toolkit centres the content.
  if (auto* const label = gtk_menu_button_get_child(menu))
    gtk_widget_set_halign(gtk_widget_get_parent(label), GTK_ALIGN_FILL);
  if (!items_.empty()) choose(0);
  nameAsMenu(buttonOf(menu), menu);
  // The toolkit makes the menu's name the button's description, too.
  gtk_accessible_reset_relation(buttonOf(menu), GTK_ACCESSIBLE_RELATION_DESCRIBED_BY);
  gtk_menu_button_set_create_popup_func(menu, &PopUpButton::onOpen, this, nullptr);
  keys_ = gtk_event_controller_key_new();
  g_signal_connect(keys_, "key-pressed", G_CALLBACK(&PopUpButton::onKey), this);
  gtk_widget_add_controller(GTK_WIDGET(menu), keys_);
}

// The list and the key controller refer to this object, and the button may outlive it.
PopUpButton::~PopUpButton() {
  auto* const menu = widget().gobj();
  gtk_widget_remove_controller(GTK_WIDGET(menu), keys_);
  gtk_menu_button_set_create_popup_func(menu, nullptr, nullptr, nullptr);
  gtk_menu_button_set_popover(menu, nullptr);
}

MenuItem* PopUpButton::selectedItem() { return chosen_ ? &items_.at(*chosen_) : nullptr; }

std::string PopUpButton::chosenTitle() const { return chosen_ ? items_.at(*chosen_).title() : ""; }

void PopUpButton::selectItemWithTitle(std::string_view title) {
  const auto item = std::ranges::find(items_, title, &MenuItem::title);
  choose(item == items_.end() ? std::nullopt
                              : std::optional(static_cast<std::size_t>(item - items_.begin())));
}

void PopUpButton::choose(std::optional<std::size_t> index) {
  if (chosen_ == index) return;
  chosen_ = index;
  showTitles();
  if (changed_) changed_();
}

// The choice is the button's description, as its name does not contain it. The label is wide enough for every
// choice.
void PopUpButton::showTitles() {
  const auto title = chosenTitle();
  gtk_accessible_update_property(buttonOf(widget().gobj()), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION,
                                 title.c_str(), -1);
  auto* const label = gtk_menu_button_get_child(widget().gobj());
  if (!GTK_IS_LABEL(label)) return;
  gtk_label_set_width_chars(GTK_LABEL(label), widthInCharacters(label, items_));
  gtk_label_set_text(GTK_LABEL(label), title.c_str());
}

// Handles the keys of the button and of its open list. The arrow keys open the list, in addition to the keys
// that press any button.
gboolean PopUpButton::onKey(GtkEventControllerKey* keys, guint key, guint /*code*/, GdkModifierType modifiers,
                            PopUpButton* self) {
  constexpr std::array<guint, 4> kArrows{GDK_KEY_Down, GDK_KEY_KP_Down, GDK_KEY_Up, GDK_KEY_KP_Up};
  if ((modifiers & GDK_CONTROL_MASK) != 0) return FALSE;
  if (std::ranges::find(kArrows, key) != kArrows.end()) {
    if (GTK_EVENT_CONTROLLER(keys) != self->keys_) return FALSE;
    gtk_menu_button_popup(self->widget().gobj());
    return TRUE;
  }
  bool isLetter = false;
  guarded([&] { isLetter = self->goTo(GTK_EVENT_CONTROLLER(keys), key, modifiers); });
  return isLetter ? TRUE : FALSE;
}

bool PopUpButton::goTo(GtkEventController* keys, guint key, GdkModifierType modifiers) {
  const auto letter = gdk_keyval_to_unicode(key);
  if ((modifiers & (GDK_ALT_MASK | GDK_SUPER_MASK)) != 0 || g_unichar_isgraph(letter) == FALSE) return false;
  auto* const row = gtk_root_get_focus(gtk_widget_get_root(GTK_WIDGET(widget().gobj())));
  const bool isOpen = GTK_IS_LIST_BOX_ROW(row);
  const auto current =
      isOpen ? static_cast<std::size_t>(gtk_list_box_row_get_index(GTK_LIST_BOX_ROW(row))) : chosen_;
  std::vector<std::string> titles;
  for (const auto& item : items_) titles.push_back(item.title());
  const auto meant =
      typeAhead_.type(letter, gtk_event_controller_get_current_event_time(keys), titles, current);
  if (!meant) return true;
  if (!isOpen) {
    choose(*meant);
    return true;
  }
  auto* const list = GTK_LIST_BOX(gtk_widget_get_parent(row));
  auto* const next = gtk_list_box_get_row_at_index(list, static_cast<int>(*meant));
  gtk_list_box_select_row(list, next);
  gtk_widget_grab_focus(GTK_WIDGET(next));
  return true;
}

// As in the toolkit's own menus: a check mark after the title of the chosen item.
GtkWidget* PopUpButton::makeRow(std::size_t index) const {
  const auto& title = items_.at(index).title();
  auto* const label = gtk_label_new(title.c_str());
  auto* const mark =
      GTK_WIDGET(g_object_new(GTK_TYPE_IMAGE, "accessible-role", GTK_ACCESSIBLE_ROLE_PRESENTATION,
                              "icon-name", "object-select-symbolic", nullptr));
  gtk_widget_set_opacity(mark, chosen_ == index ? 1 : 0);
  auto* const content = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 0);
  gtk_box_append(GTK_BOX(content), label);
  gtk_box_append(GTK_BOX(content), mark);
  auto* const row = gtk_list_box_row_new();
  gtk_list_box_row_set_child(GTK_LIST_BOX_ROW(row), content);
  gtk_accessible_update_property(GTK_ACCESSIBLE(row), GTK_ACCESSIBLE_PROPERTY_LABEL, title.c_str(), -1);
  return row;
}

void PopUpButton::onOpen(GtkMenuButton* menu, gpointer popUpButton) {
  auto* const self = static_cast<PopUpButton*>(popUpButton);
  // The CSS name makes the rows look like those of the toolkit's own menus.
  auto* const list = GTK_WIDGET(g_object_new(GTK_TYPE_LIST_BOX, "css-name", "listview", nullptr));
  gtk_widget_add_css_class(list, "view");
  for (std::size_t index = 0; index < self->items_.size(); ++index)
    gtk_list_box_append(GTK_LIST_BOX(list), self->makeRow(index));
  const int chosen = self->chosen_ ? static_cast<int>(*self->chosen_) : -1;
  gtk_list_box_select_row(GTK_LIST_BOX(list), gtk_list_box_get_row_at_index(GTK_LIST_BOX(list), chosen));
  g_signal_connect(list, "row-activated", G_CALLBACK(&PopUpButton::onRow), self);
  nameAsMenu(GTK_ACCESSIBLE(list), menu);
  // In the toolkit's list only Return chooses a row.
  auto* const space = gtk_shortcut_controller_new();
  gtk_shortcut_controller_add_shortcut(GTK_SHORTCUT_CONTROLLER(space),
                                       gtk_shortcut_new(gtk_shortcut_trigger_parse_string("space|KP_Space"),
                                                        gtk_signal_action_new("activate-cursor-row")));
  gtk_widget_add_controller(list, space);
  auto* const keys = gtk_event_controller_key_new();
  g_signal_connect(keys, "key-pressed", G_CALLBACK(&PopUpButton::onKey), self);
  gtk_widget_add_controller(list, keys);

  auto* const popover = gtk_popover_new();
  gtk_widget_add_css_class(popover, "menu");
  gtk_popover_set_has_arrow(GTK_POPOVER(popover), FALSE);
  gtk_popover_set_child(GTK_POPOVER(popover), list);
  gtk_widget_set_size_request(popover, gtk_widget_get_width(GTK_WIDGET(menu)), -1);
  gtk_menu_button_set_popover(menu, popover);
}

void PopUpButton::onRow(GtkListBox* /*list*/, GtkListBoxRow* row, PopUpButton* self) {
  gtk_menu_button_popdown(self->widget().gobj());
  guarded([&] { self->choose(static_cast<std::size_t>(gtk_list_box_row_get_index(row))); });
}

}  // namespace tandemtrim::platform::gtk
