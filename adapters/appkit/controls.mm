#include "adapters/appkit/controls.hpp"

#include "adapters/appkit/foundation/foundation.hpp"

namespace tandemtrim::platform::appkit {

template <class Class, class ToolkitClass>
std::string ControlOf<Class, ToolkitClass>::stringValue() const {
  return textOf([control_ stringValue]);
}

template <class Class, class ToolkitClass>
void ControlOf<Class, ToolkitClass>::setStringValue(std::string_view text) {
  [control_ setStringValue:stringOf(text)];
}

void TextLabel::setTextColor(Color color) {
  [control() setTextColor:color == Color::blackColor ? [NSColor blackColor] : [NSColor lightGrayColor]];
}

void TextBox::setStringValue(std::string_view text) {
  NSString* string = stringOf(text);
  const BOOL isNew = ![string isEqualToString:[control() stringValue]];
  const NSRange before = [[control() currentEditor] selectedRange];
  [control() setStringValue:string];
  [[control() currentEditor] setSelectedRange:isNew ? NSMakeRange([string length], 0) : before];
}

void TextBox::setIdentifier(std::string_view identifier) { [control() setIdentifier:stringOf(identifier)]; }
std::string TextBox::identifier() const { return textOf([control() identifier]); }

void Stepper::setIdentifier(std::string_view identifier) { [control() setIdentifier:stringOf(identifier)]; }
std::string Stepper::identifier() const { return textOf([control() identifier]); }

void Button::setTitle(std::string_view title) { [control() setTitle:stringOf(title)]; }
void CheckBox::setTitle(std::string_view title) { [control() setTitle:stringOf(title)]; }

void MenuItem::setTitle(std::string_view title) { [item_ setTitle:stringOf(title)]; }

std::optional<std::string> MenuItem::representedObject() const {
  id value = [item_ representedObject];
  if (value == nil) return std::nullopt;
  return textOf([value description]);
}

void MenuItem::setRepresentedObject(std::string_view value) { [item_ setRepresentedObject:stringOf(value)]; }

std::size_t PopUpButton::numberOfItems() const { return static_cast<std::size_t>([control() numberOfItems]); }

platform::MenuItem& PopUpButton::itemAtIndex(std::size_t index) {
  const auto itemIndex = static_cast<NSInteger>(index);
  return items_.insert_or_assign(itemIndex, MenuItem((NSMenuItem*)[control() itemAtIndex:itemIndex]))
      .first->second;
}

platform::MenuItem* PopUpButton::selectedItem() {
  const NSInteger index = [control() indexOfSelectedItem];
  return index < 0 ? nullptr : &itemAtIndex(static_cast<std::size_t>(index));
}

void PopUpButton::selectItemWithTitle(std::string_view title) {
  [control() selectItemWithTitle:stringOf(title)];
}

template class ControlOf<MorvaTTTextLabelKV2, NSTextField>;
template class ControlOf<MorvaTTTextBoxKV2, NSTextField>;
template class ControlOf<MorvaTTStepperKV2, NSStepper>;
template class ControlOf<MorvaTTButtonKV2, NSButton>;
template class ControlOf<MorvaTTCheckBoxKV2, NSButton>;
template class ControlOf<MorvaTTPopUpButtonKV2, NSPopUpButton>;

}  // namespace tandemtrim::platform::appkit
