#include "adapters/memory/panel.hpp"

#include <stdexcept>

namespace tandemtrim::platform::memory {
namespace {

// A margin's controls by their outlets, and the setting that they stand for.
struct MarginOutlets {
  std::string_view name;
  std::string_view label;
  std::string_view textBox;
  std::string_view stepper;
  std::string_view limitLabel;
};

constexpr std::array<MarginOutlets, 4> kMarginOutlets{{
    {"Top", "labelMarginTop", "textBoxMarginTop", "stepperMarginTop", "labelMarginLimitTop"},
    {"Bottom", "labelMarginBottom", "textBoxMarginBottom", "stepperMarginBottom", "labelMarginLimitBottom"},
    {"Left", "labelMarginLeft", "textBoxMarginLeft", "stepperMarginLeft", "labelMarginLimitLeft"},
    {"Right", "labelMarginRight", "textBoxMarginRight", "stepperMarginRight", "labelMarginLimitRight"},
}};

// What a person sees of each class of control.
struct Look {
  ControlState& state;

  void operator()(const TextLabel* label) const {
    state.kind = ControlKind::label;
    state.enabled = label->isEnabled();
    state.text = label->stringValue();
    state.color = label->textColor();
  }
  void operator()(const TextBox* box) const {
    state.kind = ControlKind::textBox;
    state.enabled = box->isEnabled();
    state.text = box->stringValue();
    state.min = static_cast<double>(integerValue(box->min()));
    state.max = static_cast<double>(integerValue(box->max()));
  }
  void operator()(const Stepper* stepper) const {
    state.kind = ControlKind::stepper;
    state.enabled = stepper->isEnabled();
    state.text = stepper->stringValue();
    state.min = stepper->minValue();
    state.max = stepper->maxValue();
  }
  void operator()(const CheckBox* box) const {
    state.kind = ControlKind::checkBox;
    state.enabled = box->isEnabled();
    state.text = box->title();
    state.state = box->state();
  }
  void operator()(const PopUpButton* menu) const {
    state.kind = ControlKind::popUp;
    state.enabled = menu->isEnabled();
    state.selected = menu->selectedIndex();
    for (const auto& item : menu->items()) state.choices.push_back({item.title(), item.representedObject()});
    if (state.selected) state.text = state.choices.at(*state.selected).title;
  }
  void operator()(const Button* button) const {
    state.kind = ControlKind::button;
    state.enabled = button->isEnabled();
    state.text = button->title();
  }
};

}  // namespace

Panel::Panel(const NibDescription& description, NibOwner& owner)
    : description_(description),
      directionPopUp_(description.directionItems),
      positionPopUp_(description.positionItems) {
  const auto actionOf = [&owner](std::string_view action) {
    return [&owner, action](NibObject* sender) { owner.performAction(action, sender); };
  };
  tandemTrimValid_.setAction(actionOf("changeTandemTrimValid:"));
  defaultButton_.setAction(actionOf("setDefaultValue:"));

  entries_ = {{"tandemTrimValid", "Valid", &tandemTrimValid_},
              {"labelDirection", "", &labelDirection_},
              {"directionPopUp", "Direction", &directionPopUp_},
              {"labelPosition", "", &labelPosition_},
              {"positionPopUp", "Position", &positionPopUp_}};
  for (std::size_t side = 0; side < margins_.size(); ++side) {
    auto& margin = margins_.at(side);
    const auto& outlets = kMarginOutlets.at(side);
    margin.textBox.setStringValue("0");
    margin.stepper.setTextBox(&margin.textBox);
    entries_.push_back({outlets.label, "", &margin.label});
    entries_.push_back({outlets.textBox, outlets.name, &margin.textBox});
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
  for (const auto& entry : entries_) {
    std::visit([&](auto* control) { connect(entry.outlet, control); }, entry.control);
  }
  connect("tandemTrimView", static_cast<View*>(this));
}

ControlState Panel::stateOf(const Entry& entry) {
  ControlState state;
  state.outlet = entry.outlet;
  state.name = entry.name;
  std::visit(Look{state}, entry.control);
  return state;
}

std::vector<ControlState> Panel::controls() const {
  std::vector<ControlState> states;
  for (const auto& entry : entries_) states.push_back(stateOf(entry));
  return states;
}

ControlState Panel::control(std::string_view name) const {
  for (const auto& entry : entries_) {
    if (!name.empty() && (entry.outlet == name || entry.name == name)) return stateOf(entry);
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
  // A character goes as a whole: the bytes that continue it, then the one that begins it.
  const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
  while (text.size() > 1 && continues(text.back())) text.pop_back();
  text.pop_back();
  return box.userEdits(text);
}

bool Panel::click(std::string_view button) {
  for (const auto& entry : entries_) {
    const bool fits = !button.empty() && (entry.outlet == button || entry.name == button);
    if (auto* const* checkBox = std::get_if<CheckBox*>(&entry.control); fits && checkBox != nullptr) {
      return (*checkBox)->userClicks();
    }
  }
  return named<Button>(button).userClicks();
}

bool Panel::step(std::string_view stepper, int steps) { return named<Stepper>(stepper).userClicks(steps); }

bool Panel::choose(std::string_view popUp, std::size_t index) {
  return named<PopUpButton>(popUp).userChooses(index);
}

}  // namespace tandemtrim::platform::memory
