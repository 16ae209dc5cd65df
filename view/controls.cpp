#include "view/controls.hpp"

#include <utility>

namespace tandemtrim {
namespace {

bool isSet(const platform::Object& flag) { return flag.integerValue() != 0; }

}  // namespace

void MorvaTTCheckBoxKV2::changeState(const platform::Object& flag) { setEnabled(isSet(flag)); }

void MorvaTTPopUpButtonKV2::changeState(const platform::Object& flag) { setEnabled(isSet(flag)); }

void MorvaTTButtonKV2::changeState(const platform::Object& flag) { setEnabled(isSet(flag)); }

void MorvaTTStepperKV2::changeState(const platform::Object& flag) { setEnabled(isSet(flag)); }

void MorvaTTTextLabelKV2::changeState(const platform::Object& flag) {
  setTextColor(flag.integerValue() == 1 ? platform::Color::blackColor : platform::Color::lightGrayColor);
}

void MorvaTTTextBoxKV2::changeState(const platform::Object& flag) { setEnabled(isSet(flag)); }

void MorvaTTTextBoxKV2::setValueRange(platform::ObjectRef min, platform::ObjectRef max) {
  setMin(std::move(min));
  setMax(std::move(max));
}

const platform::Object* MorvaTTTextBoxKV2::verifyValue(const platform::Object& value) const {
  return platform::heldBetween(&value, static_cast<const platform::Object*>(min_.get()), max_.get());
}

}  // namespace tandemtrim
