#include "adapters/memory/panel.hpp"

#include <stdexcept>

#include "model/ticket_names.hpp"

namespace tandemtrim::platform::memory {

Panel::Panel(const NibDescription& description, NibOwner& owner)
    : description_(description),
      directionPopUp_(description.directionItems),
      positionPopUp_(description.positionItems) {
  const auto actionOf = [&owner](std::string_view action) {
    return [&owner, action](NibObject* sender) { owner.performAction(action, sender); };
  };
  tandemTrimValid_.setAction(actionOf("changeTandemTrimValid:"));
  defaultButton_.setAction(actionOf("setDefaultValue:"));

  entries_ = {{"tandemTrimValid", TTPTMNameValid, &tandemTrimValid_},
              {"labelDirection", "", &labelDirection_},
              {"directionPopUp", TTPTMNameDirection, &directionPopUp_},
              {"labelPosition", "", &labelPosition_},
              {"positionPopUp", TTPTMNamePosition, &positionPopUp_}};
  for (std::size_t side = 0; side < kSides; ++side) {
    auto& margin = margins_.at(side);
    const auto& outlets = kMarginOutlets.at(side);
    margin.textBox.setStringValue("0");
    margin.stepper.setTextBox(&margin.textBox);
    entries_.push_back({outlets.label, "", &margin.label});
    entries_.push_back({outlets.textBox, marginsOf(kTicketNames)[side], &margin.textBox});
    entries_.push_back({outlets.stepper, "", &margin.stepper});
    entries_.push_back({outlets.limitLabel, "", &margin.limitLabel});
  }
  entries_.push_back({"defaultButton", "RestoreDefault", &defaultButton_});
}

Panel::~Panel() {
  if (description_.onRelease) description_.onRelease();
}

void Panel::connectOutlets(NibOwner& owner) {
  const auto connect = [&](std::string_view outlet, NibObject* object) {
    if (!description_.missingOutlets.contains(outlet)) owner.setOutlet(outlet, object);
  };
  for (const auto& entry : entries_) connect(entry.outlet, dynamic_cast<NibObject*>(entry.control));
  connect("tandemTrimView", static_cast<View*>(this));
}

ControlState Panel::stateOf(const Entry& entry) {
  ControlState state;
  entry.control->describe(state);
  state.outlet = entry.outlet;
  state.name = entry.name;
  return state;
}

std::vector<ControlState> Panel::controls() const {
  std::vector<ControlState> states;
  for (const auto& entry : entries_) states.push_back(stateOf(entry));
  return states;
}

ControlState Panel::control(std::string_view name) const { return stateOf(entryOf(name)); }

const Panel::Entry& Panel::entryOf(std::string_view name) const {
  for (const auto& entry : entries_) {
    if (!name.empty() && (entry.outlet == name || entry.name == name)) return entry;
  }
  throw std::out_of_range("the panel has no control \"" + std::string(name) + '"');
}

bool Panel::type(std::string_view textBox, std::string_view text) {
  return named<TextBox>(textBox).userEdits(text);
}

bool Panel::append(std::string_view textBox, std::string_view text) {
  auto& box = named<TextBox>(textBox);
  return box.userEdits(box.stringValue().append(text));
}

bool Panel::backspace(std::string_view textBox) {
  auto& box = named<TextBox>(textBox);
  auto text = box.stringValue();
  if (text.empty()) return box.isEnabled();
  // Removes a whole character: its continuation bytes, then its first byte.
  const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
  while (text.size() > 1 && continues(text.back())) text.pop_back();
  text.pop_back();
  return box.userEdits(text);
}

bool Panel::click(std::string_view button) {
  if (auto* checkBox = dynamic_cast<CheckBox*>(entryOf(button).control)) return checkBox->userClicks();
  return named<Button>(button).userClicks();
}

bool Panel::step(std::string_view stepper, int steps) { return named<Stepper>(stepper).userClicks(steps); }

bool Panel::choose(std::string_view popUp, std::size_t index) {
  return named<PopUpButton>(popUp).userChooses(index);
}

}  // namespace tandemtrim::platform::memory
