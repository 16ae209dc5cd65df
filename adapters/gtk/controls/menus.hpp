#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtkmm/menubutton.h>

#include "adapters/gtk/controls/control.hpp"
#include "adapters/gtk/controls/type_ahead.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

class PopUpButton;

class MenuItem : public platform::MenuItem {
 public:
  MenuItem(PopUpButton& menu, std::string title) : menu_(menu), title_(std::move(title)) {}

  [[nodiscard]] const std::string& title() const { return title_; }
  void setTitle(std::string_view title) override;
  [[nodiscard]] std::optional<std::string> representedObject() const override { return value_; }
  void setRepresentedObject(std::string_view value) override { value_ = value; }

 private:
  PopUpButton& menu_;
  std::string title_;
  std::optional<std::string> value_;
};

/// A button that shows the chosen item and opens the list of all items, which is built when it opens. Typing
/// letters chooses the item that begins with them, or moves to it in the open list. Initially the first item
/// is chosen.
class PopUpButton : public ControlOf<MorvaTTPopUpButtonKV2, Gtk::MenuButton> {
 public:
  /// The button's child, a label, shows the choice.
  PopUpButton(Gtk::MenuButton& button, const std::vector<std::string>& titles);
  ~PopUpButton() override;
  PopUpButton(const PopUpButton&) = delete;
  PopUpButton& operator=(const PopUpButton&) = delete;

  [[nodiscard]] std::size_t numberOfItems() const override { return items_.size(); }
  [[nodiscard]] MenuItem& itemAtIndex(std::size_t index) override { return items_.at(index); }
  [[nodiscard]] MenuItem* selectedItem() override;
  /// If no item has the title, no item is chosen.
  void selectItemWithTitle(std::string_view title) override;

  /// The title of the chosen item; empty if no item is chosen.
  [[nodiscard]] std::string chosenTitle() const;
  /// Sets the function that runs after the choice changes, by the user or by the program.
  void setChanged(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  friend class MenuItem;
  void showTitles();
  void choose(std::optional<std::size_t> index);
  GtkWidget* makeRow(std::size_t index) const;
  bool goTo(GtkEventController* keys, guint key, GdkModifierType modifiers);
  static void onOpen(GtkMenuButton* menu, gpointer popUpButton);
  static void onRow(GtkListBox* list, GtkListBoxRow* row, PopUpButton* self);
  static gboolean onKey(GtkEventControllerKey* keys, guint key, guint code, GdkModifierType modifiers,
                        PopUpButton* self);

  std::vector<MenuItem> items_;
  std::optional<std::size_t> chosen_;
  std::function<void()> changed_;
  TypeAhead typeAhead_;
  GtkEventController* keys_;
};

}  // namespace tandemtrim::platform::gtk
