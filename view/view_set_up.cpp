#include <algorithm>
#include <array>
#include <span>
#include <stdexcept>
#include <utility>

#include "model/ticket_names.hpp"
#include "plugin/setting_info/setting_names.hpp"
#include "view/required.hpp"
#include "view/view_controller.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace {

// No text contains an empty token.
std::string replaceAll(std::string text, std::string_view token, std::string_view replacement) {
  if (token.empty()) return text;
  for (auto at = text.find(token); at != std::string::npos; at = text.find(token, at + replacement.size())) {
    text.replace(at, token.size(), replacement);
  }
  return text;
}

struct MenuEntry {
  MorvaTTPopUpButtonKV2* instance;
  std::vector<std::string_view> names;
};

struct MarginEntry {
  std::string_view name;
  MorvaTTTextBoxKV2* text;
  MorvaTTStepperKV2* stepper;
};

}  // namespace

void MorvaTTViewControllerKV2::TTVCInitializeView() {
  TTVCInitializeLabel();
  TTVCInitializePopUp();
  TTVCInitializeTicket();
  required(defaultButton_)->setTitle(commonInfo_->localizedString(TTVCLabelNameRestoreDefault));
  TTVCInitializeMargin();
  setViewIsInited(true);
}

void MorvaTTViewControllerKV2::TTVCInitializeLabel() {
  const std::array<std::pair<std::string_view, MorvaTTTextLabelKV2*>, 6> labels{{
      {TTVCLabelNameImageDirection, required(labelDirection_)},
      {TTVCLabelNamePosition, required(labelPosition_)},
      {TTVCLabelNameMarginTop, required(labelMarginTop_)},
      {TTVCLabelNameMarginBottom, required(labelMarginBottom_)},
      {TTVCLabelNameMarginLeft, required(labelMarginLeft_)},
      {TTVCLabelNameMarginRight, required(labelMarginRight_)},
  }};
  for (const auto& [key, label] : labels) {
    label->setStringValue(commonInfo_->localizedString(key).append(TTVCLabelNameDelimiter));
  }

  const std::array<std::pair<std::string_view, MorvaTTTextLabelKV2*>, 4> limitLabels{{
      {TTCINameMarginTop, required(labelMarginLimitTop_)},
      {TTCINameMarginBottom, required(labelMarginLimitBottom_)},
      {TTCINameMarginLeft, required(labelMarginLimitLeft_)},
      {TTCINameMarginRight, required(labelMarginLimitRight_)},
  }};
  for (const auto& [marginName, label] : limitLabels) label->setStringValue("mm   " + rangeText(marginName));
}

// The minimum goes in first: its text may bring a token of the maximum along.
std::string MorvaTTViewControllerKV2::rangeText(std::string_view marginName) const {
  const auto minLabel = commonInfo_->minLabelForIntegerValueRange();
  const auto maxLabel = commonInfo_->maxLabelForIntegerValueRange();
  auto text =
      replaceAll(commonInfo_->localizedString(TTVCLabelNameRangeFormat),
                 platform::requiredText(minLabel, "the token of the smallest margin"),
                 platform::requiredDecimalText(commonInfo_->defaultMarginMin(), "the smallest margin"));
  return replaceAll(
      std::move(text), platform::requiredText(maxLabel, "the token of the largest margin"),
      platform::requiredDecimalText(commonInfo_->marginLimit(marginName), "the largest margin"));
}

void MorvaTTViewControllerKV2::TTVCInitializePopUp() {
  const std::array<MenuEntry, 2> entries{{
      {required(positionPopUp_),
       {TTVCPopUpNamePositionLeft, TTVCPopUpNamePositionCenter, TTVCPopUpNamePositionRight}},
      {required(directionPopUp_), {TTVCPopUpNameDirectionLEF, TTVCPopUpNameDirectionSEF}},
  }};
  for (const auto& [popUp, names] : entries) {
    for (std::size_t index = 0; index < popUp->numberOfItems(); ++index) {
      const auto name = names.at(index);
      auto& item = popUp->itemAtIndex(index);
      item.setRepresentedObject(name);
      item.setTitle(commonInfo_->localizedString(name));
    }
  }
}

void MorvaTTViewControllerKV2::TTVCInitializeTicket() {
  const std::array<std::pair<std::string_view, MorvaTTPrintTicketKV2::Controls>, 7> controlsOfTickets{{
      {TTPTMNameValid, {required(tandemTrimValid_)}},
      {TTPTMNameDirection, {required(directionPopUp_)}},
      {TTPTMNamePosition, {required(positionPopUp_)}},
      {TTPTMNameMarginTop, {required(textBoxMarginTop_), required(stepperMarginTop_)}},
      {TTPTMNameMarginBottom, {required(textBoxMarginBottom_), required(stepperMarginBottom_)}},
      {TTPTMNameMarginLeft, {required(textBoxMarginLeft_), required(stepperMarginLeft_)}},
      {TTPTMNameMarginRight, {required(textBoxMarginRight_), required(stepperMarginRight_)}},
  }};
  for (const auto& [ticketName, controls] : controlsOfTickets)
    ticket_->registerTargetInstances(controls, ticketName);
  ticket_->setTitleToValid(commonInfo_->localizedString(TTVCLabelNameValid));
}

void MorvaTTViewControllerKV2::TTVCInitializeMargin() {
  const std::array<MarginEntry, 4> entries{{
      {TTCINameMarginTop, required(textBoxMarginTop_), required(stepperMarginTop_)},
      {TTCINameMarginBottom, required(textBoxMarginBottom_), required(stepperMarginBottom_)},
      {TTCINameMarginLeft, required(textBoxMarginLeft_), required(stepperMarginLeft_)},
      {TTCINameMarginRight, required(textBoxMarginRight_), required(stepperMarginRight_)},
  }};
  const auto minimum = commonInfo_->defaultMarginMin();
  const auto setUp = [&](const MarginEntry& entry) {
    const auto limit = commonInfo_->marginLimit(entry.name);
    entry.text->setIdentifier(entry.name);
    entry.text->setValueRange(minimum, limit);
    entry.stepper->setIdentifier(entry.name);
    entry.stepper->setMinValue(static_cast<double>(platform::integerValue(minimum)));
    entry.stepper->setMaxValue(static_cast<double>(platform::integerValue(limit)));
    platform::defaultCenter().addObserver(
        this, [this](const platform::Notification& notification) { controlTextDidChange(notification); },
        platform::NSControlTextDidChangeNotification, entry.text);
  };
  // A set-up that breaks off half-way takes its own subscriptions back: only a view that is set up is
  // unsubscribed when the controller goes. Those of an earlier set-up go on.
  std::size_t done = 0;
  try {
    for (; done < entries.size(); ++done) setUp(entries.at(done));
  } catch (...) {
    while (done > 0) {
      --done;
      platform::defaultCenter().removeObserver(this, platform::NSControlTextDidChangeNotification,
                                               entries.at(done).text);
    }
    throw;
  }
}

}  // namespace tandemtrim
