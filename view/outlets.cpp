#include <algorithm>
#include <array>

#include "view/view_controller.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace {

// An action by its name in the nib.
struct Action {
  std::string_view name;
  void (MorvaTTViewControllerKV2::*run)(platform::NibObject*);
};

constexpr std::array<Action, 2> kActions{{
    {"changeTandemTrimValid:", &MorvaTTViewControllerKV2::changeTandemTrimValid},
    {"setDefaultValue:", &MorvaTTViewControllerKV2::setDefaultValue},
}};

}  // namespace

// Calls `visit` with the name of each outlet and the field that it connects.
template <class Controller, class Visitor>
void MorvaTTViewControllerKV2::visitOutlets(Controller& controller, const Visitor& visit) {
  visit("labelDirection", controller.labelDirection_);
  visit("labelPosition", controller.labelPosition_);
  for (std::size_t side = 0; side < kSides; ++side) {
    auto& margin = controller.margins_.at(side);
    const auto& outlets = kMarginOutlets.at(side);
    visit(outlets.label, margin.label);
    visit(outlets.limitLabel, margin.limitLabel);
    visit(outlets.textBox, margin.textBox);
    visit(outlets.stepper, margin.stepper);
  }
  visit("tandemTrimValid", controller.tandemTrimValid_);
  visit("directionPopUp", controller.directionPopUp_);
  visit("positionPopUp", controller.positionPopUp_);
  visit("defaultButton", controller.defaultButton_);
  visit("tandemTrimView", controller.tandemTrimView_);
}

std::vector<std::string_view> MorvaTTViewControllerKV2::outletNames() const {
  std::vector<std::string_view> names;
  visitOutlets(*this, [&](std::string_view name, const auto* /*control*/) { names.push_back(name); });
  return names;
}

// An object of another class leaves the outlet unchanged.
void MorvaTTViewControllerKV2::setOutlet(std::string_view name, platform::NibObject* object) {
  visitOutlets(*this, [&]<class Control>(std::string_view outlet, Control*& field) {
    if (outlet != name) return;
    if (auto* control = dynamic_cast<Control*>(object)) field = control;
  });
}

void MorvaTTViewControllerKV2::performAction(std::string_view name, platform::NibObject* sender) {
  const auto* action = std::ranges::find(kActions, name, &Action::name);
  if (action != kActions.end()) (this->*action->run)(sender);
}

std::string MorvaTTViewControllerKV2::localizedString(std::string_view key) const {
  return commonInfo_->localizedString(key);
}

}  // namespace tandemtrim
