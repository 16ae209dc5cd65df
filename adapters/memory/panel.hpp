#pragma once

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/memory/controls.hpp"
#include "adapters/memory/nib.hpp"
#include "adapters/memory/panel_view.hpp"
#include "platform/nib.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::platform::memory {

/// The loaded nib "TandemTrim": the controls of the panel, and the view by which a user reaches them.
class Panel : public LoadedNib, public PanelView {
 public:
  Panel(const NibDescription& description, NibOwner& owner);
  ~Panel() override;
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  /// Connects all outlets that the description does not leave out.
  void connectOutlets(NibOwner& owner);

  [[nodiscard]] std::vector<ControlState> controls() const override;
  [[nodiscard]] ControlState control(std::string_view name) const override;
  bool type(std::string_view textBox, std::string_view text) override;
  bool append(std::string_view textBox, std::string_view text) override;
  bool backspace(std::string_view textBox) override;
  bool click(std::string_view button) override;
  bool step(std::string_view stepper, int steps) override;
  bool choose(std::string_view popUp, std::size_t index) override;
  /// Puts a check box into the mixed state, as only a program can.
  void setMixed(std::string_view checkBox) { named<CheckBox>(checkBox).setState(CheckBox::kMixed); }

 private:
  struct Entry {
    std::string_view outlet;
    std::string_view name;
    VisibleControl* control;
  };
  struct Margin {
    TextLabel label;
    TextLabel limitLabel;
    TextBox textBox;
    Stepper stepper;
  };

  [[nodiscard]] static ControlState stateOf(const Entry& entry);
  [[nodiscard]] const Entry& entryOf(std::string_view name) const;
  template <class Class>
  [[nodiscard]] Class& named(std::string_view name) const {
    auto* control = dynamic_cast<Class*>(entryOf(name).control);
    if (control == nullptr)
      throw std::out_of_range("a control of another class: \"" + std::string(name) + '"');
    return *control;
  }

  NibDescription description_;
  CheckBox tandemTrimValid_;
  TextLabel labelDirection_;
  PopUpButton directionPopUp_;
  TextLabel labelPosition_;
  PopUpButton positionPopUp_;
  std::array<Margin, kSides> margins_;
  Button defaultButton_;
  std::vector<Entry> entries_;
};

}  // namespace tandemtrim::platform::memory
