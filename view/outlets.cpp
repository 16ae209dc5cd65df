#include <algorithm>
#include <array>

#include "view/view_controller.hpp"

namespace tandemtrim {
namespace {

template <class Control>
Control* parameterOf(void (MorvaTTViewControllerKV2::*)(Control*));

// Passes the object to an outlet's setter when it is of the setter's class.
template <auto setter>
void connect(MorvaTTViewControllerKV2& controller, platform::NibObject* object) {
  using Pointer = decltype(parameterOf(setter));
  if (auto* control = dynamic_cast<Pointer>(object)) (controller.*setter)(control);
}

// An outlet or an action by its name in the nib, and what the name stands for.
struct Connection {
  std::string_view name;
  void (*run)(MorvaTTViewControllerKV2&, platform::NibObject*);
};

constexpr std::array<Connection, 23> kOutlets{{
    {"labelDirection", connect<&MorvaTTViewControllerKV2::setLabelDirection>},
    {"labelPosition", connect<&MorvaTTViewControllerKV2::setLabelPosition>},
    {"labelMarginTop", connect<&MorvaTTViewControllerKV2::setLabelMarginTop>},
    {"labelMarginBottom", connect<&MorvaTTViewControllerKV2::setLabelMarginBottom>},
    {"labelMarginLeft", connect<&MorvaTTViewControllerKV2::setLabelMarginLeft>},
    {"labelMarginRight", connect<&MorvaTTViewControllerKV2::setLabelMarginRight>},
    {"labelMarginLimitTop", connect<&MorvaTTViewControllerKV2::setLabelMarginLimitTop>},
    {"labelMarginLimitBottom", connect<&MorvaTTViewControllerKV2::setLabelMarginLimitBottom>},
    {"labelMarginLimitLeft", connect<&MorvaTTViewControllerKV2::setLabelMarginLimitLeft>},
    {"labelMarginLimitRight", connect<&MorvaTTViewControllerKV2::setLabelMarginLimitRight>},
    {"textBoxMarginTop", connect<&MorvaTTViewControllerKV2::setTextBoxMarginTop>},
    {"textBoxMarginBottom", connect<&MorvaTTViewControllerKV2::setTextBoxMarginBottom>},
    {"textBoxMarginLeft", connect<&MorvaTTViewControllerKV2::setTextBoxMarginLeft>},
    {"textBoxMarginRight", connect<&MorvaTTViewControllerKV2::setTextBoxMarginRight>},
    {"stepperMarginTop", connect<&MorvaTTViewControllerKV2::setStepperMarginTop>},
    {"stepperMarginBottom", connect<&MorvaTTViewControllerKV2::setStepperMarginBottom>},
    {"stepperMarginLeft", connect<&MorvaTTViewControllerKV2::setStepperMarginLeft>},
    {"stepperMarginRight", connect<&MorvaTTViewControllerKV2::setStepperMarginRight>},
    {"tandemTrimValid", connect<&MorvaTTViewControllerKV2::setTandemTrimValid>},
    {"directionPopUp", connect<&MorvaTTViewControllerKV2::setDirectionPopUp>},
    {"positionPopUp", connect<&MorvaTTViewControllerKV2::setPositionPopUp>},
    {"defaultButton", connect<&MorvaTTViewControllerKV2::setDefaultButton>},
    {"tandemTrimView", connect<&MorvaTTViewControllerKV2::setTandemTrimView>},
}};

template <auto action>
void perform(MorvaTTViewControllerKV2& controller, platform::NibObject* sender) {
  (controller.*action)(sender);
}

constexpr std::array<Connection, 2> kActions{{
    {"changeTandemTrimValid:", perform<&MorvaTTViewControllerKV2::changeTandemTrimValid>},
    {"setDefaultValue:", perform<&MorvaTTViewControllerKV2::setDefaultValue>},
}};

template <class Table>
void runNamed(const Table& table, std::string_view name, MorvaTTViewControllerKV2& controller,
              platform::NibObject* object) {
  const auto* connection = std::ranges::find(table, name, &Connection::name);
  if (connection != table.end()) connection->run(controller, object);
}

}  // namespace

std::vector<std::string_view> MorvaTTViewControllerKV2::outletNames() const {
  std::vector<std::string_view> names;
  std::ranges::transform(kOutlets, std::back_inserter(names), &Connection::name);
  return names;
}

void MorvaTTViewControllerKV2::setOutlet(std::string_view name, platform::NibObject* object) {
  runNamed(kOutlets, name, *this, object);
}

void MorvaTTViewControllerKV2::performAction(std::string_view name, platform::NibObject* sender) {
  runNamed(kActions, name, *this, sender);
}

}  // namespace tandemtrim
