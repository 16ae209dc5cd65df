#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.hpp"

namespace tandemtrim::platform::memory {

enum class ControlKind { label, textBox, stepper, checkBox, popUp, button };

struct MenuChoice {
  std::string title;
  /// The item's value, the same in every language; nullopt if the program attached no value.
  std::optional<std::string> value;
};

/// One control as the user sees it.
struct ControlState {
  /// The control's place in the view ("textBoxMarginTop").
  std::string_view outlet;
  /// The name of its setting ("Top"), or "RestoreDefault" for the button; empty for labels and for steppers,
  /// which belong to a text box.
  std::string_view name;
  ControlKind kind{};
  bool enabled = true;
  /// The shown text: a label's, a box's or a stepper's value, a button's title, a menu's selected title.
  std::string text;
  /// Labels only.
  Color color{};
  /// Check boxes only: CheckBox::kOn, kOff or kMixed.
  int state = 0;
  /// Menus only.
  std::vector<MenuChoice> choices;
  std::optional<std::size_t> selected;
  /// Steppers and text boxes only.
  double min = 0;
  double max = 0;
};

/// The view of a panel without a screen. Hosts and tests get it by a dynamic_cast from View, look at the
/// controls and act on them as a user does. Each action names a control by its outlet or its name. If the
/// control is disabled, the action changes nothing and returns false. A name without a suitable control
/// raises std::out_of_range.
class PanelView : public View {
 public:
  /// All controls, in the order from top to bottom.
  [[nodiscard]] virtual std::vector<ControlState> controls() const = 0;
  [[nodiscard]] virtual ControlState control(std::string_view name) const = 0;

  /// Replaces the whole text of a text box by `text`, as one edit (select all, then paste).
  virtual bool type(std::string_view textBox, std::string_view text) = 0;
  /// Inserts `text` at the end of a text box's text, as one edit (like a key press, if it is one character).
  virtual bool append(std::string_view textBox, std::string_view text) = 0;
  /// Deletes the last character of a text box's text, as one edit. An empty box is not edited.
  virtual bool backspace(std::string_view textBox) = 0;
  /// Clicks a check box or a button.
  virtual bool click(std::string_view button) = 0;
  /// Clicks a stepper's upper half (`steps` > 0) or lower half that many times.
  virtual bool step(std::string_view stepper, int steps) = 0;
  /// Chooses the item at `index` of a menu.
  virtual bool choose(std::string_view popUp, std::size_t index) = 0;
};

}  // namespace tandemtrim::platform::memory
