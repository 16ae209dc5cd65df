#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtkmm/comboboxtext.h>

#include "platform/gtk/control.hpp"
#include "view/controls.hpp"

namespace tandemtrim::platform::gtk {

/// One row of a combo box; its represented object is the row's identifier.
class MenuItem : public platform::MenuItem {
 public:
  MenuItem(Gtk::ComboBoxText& menu, int index) : menu_(menu), index_(index) {}

  [[nodiscard]] std::string title() const { return column(kTitleColumn).value_or(""); }
  void setTitle(std::string_view title) override { setColumn(kTitleColumn, title); }
  [[nodiscard]] std::optional<std::string> representedObject() const override { return column(kIdColumn); }
  void setRepresentedObject(std::string_view value) override { setColumn(kIdColumn, value); }

 private:
  static constexpr int kTitleColumn = 0;
  static constexpr int kIdColumn = 1;
  [[nodiscard]] std::optional<std::string> column(int column) const;
  void setColumn(int column, std::string_view text);

  Gtk::ComboBoxText& menu_;
  int index_;
};

class PopUpButton : public ControlOf<MorvaTTPopUpButtonKV2, Gtk::ComboBoxText> {
 public:
  explicit PopUpButton(Gtk::ComboBoxText& menu);

  [[nodiscard]] std::size_t numberOfItems() const override { return items_.size(); }
  [[nodiscard]] MenuItem& itemAtIndex(std::size_t index) override { return items_.at(index); }
  [[nodiscard]] MenuItem* selectedItem() override;
  void selectItemWithTitle(std::string_view title) override;

 private:
  void tellChoice();

  std::vector<MenuItem> items_;
};

}  // namespace tandemtrim::platform::gtk
