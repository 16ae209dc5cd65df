#pragma once

#include <map>

#import "adapters/appkit/foundation/toolkit.h"
#include "platform/nib.hpp"
#include "view/controls.hpp"

/// The core's counterparts of the toolkit's controls. Each is owned by its control, which outlives it.
namespace tandemtrim::platform::appkit {

/// An object of the nib that wraps an object of the toolkit.
class ToolkitObject {
 public:
  virtual ~ToolkitObject() = default;
  [[nodiscard]] virtual id toolkitObject() const = 0;
};

/// The toolkit's object in one of the core's, or nil.
template <class Object>
id toolkitObjectOf(const Object* object) {
  const auto* toolkit = dynamic_cast<const ToolkitObject*>(object);
  return toolkit == nullptr ? nil : toolkit->toolkitObject();
}

template <class Class, class ToolkitClass>
class ControlOf : public Class, public ToolkitObject {
 public:
  explicit ControlOf(ToolkitClass* control) : control_(control) {}

  void setEnabled(bool enabled) override { [control_ setEnabled:enabled]; }
  [[nodiscard]] std::string stringValue() const override;
  void setStringValue(std::string_view text) override;
  [[nodiscard]] id toolkitObject() const override { return control_; }

 protected:
  [[nodiscard]] ToolkitClass* control() const { return control_; }

 private:
  ToolkitClass* control_;
};

class TextLabel : public ControlOf<MorvaTTTextLabelKV2, NSTextField> {
 public:
  using ControlOf::ControlOf;
  void setTextColor(Color color) override;
};

class TextBox : public ControlOf<MorvaTTTextBoxKV2, NSTextField> {
 public:
  using ControlOf::ControlOf;
  /// In a box that is being edited, keeps the selection if the text stays the same, else moves the insertion
  /// point to the end.
  void setStringValue(std::string_view text) override;
  void setIdentifier(std::string_view identifier) override;
  [[nodiscard]] std::string identifier() const override;
};

class Stepper : public ControlOf<MorvaTTStepperKV2, NSStepper> {
 public:
  using ControlOf::ControlOf;
  void setIdentifier(std::string_view identifier) override;
  [[nodiscard]] std::string identifier() const override;
  void setMinValue(double value) override { [control() setMinValue:value]; }
  void setMaxValue(double value) override { [control() setMaxValue:value]; }
};

class Button : public ControlOf<MorvaTTButtonKV2, NSButton> {
 public:
  using ControlOf::ControlOf;
  void setTitle(std::string_view title) override;
};

class CheckBox : public ControlOf<MorvaTTCheckBoxKV2, NSButton> {
 public:
  using ControlOf::ControlOf;
  void setTitle(std::string_view title) override;
  [[nodiscard]] int state() const override { return static_cast<int>([control() state]); }
  void setState(int state) override { [control() setState:state]; }
};

/// An item of a pop-up's menu.
class MenuItem : public platform::MenuItem {
 public:
  explicit MenuItem(NSMenuItem* item) : item_(item) {}
  void setTitle(std::string_view title) override;
  [[nodiscard]] std::optional<std::string> representedObject() const override;
  void setRepresentedObject(std::string_view value) override;

 private:
  NSMenuItem* item_;
};

class PopUpButton : public ControlOf<MorvaTTPopUpButtonKV2, NSPopUpButton> {
 public:
  using ControlOf::ControlOf;
  [[nodiscard]] std::size_t numberOfItems() const override;
  [[nodiscard]] platform::MenuItem& itemAtIndex(std::size_t index) override;
  [[nodiscard]] platform::MenuItem* selectedItem() override;
  void selectItemWithTitle(std::string_view title) override;

 private:
  // The items requested so far, by index.
  std::map<NSInteger, MenuItem> items_;
};

/// The panel's top-level view.
class View : public platform::View, public ToolkitObject {
 public:
  explicit View(NSView* view) : view_(view) {}
  [[nodiscard]] void* toolkitView() override { return view_; }
  [[nodiscard]] id toolkitObject() const override { return view_; }

 private:
  NSView* view_;
};

}  // namespace tandemtrim::platform::appkit
