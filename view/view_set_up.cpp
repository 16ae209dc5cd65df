#include <array>
#include <utility>
#include <vector>

#include "model/ticket_names.hpp"
#include "plugin/setting_info/settings.hpp"
#include "view/required.hpp"
#include "view/view_controller.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace {

// An empty token replaces nothing.
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
  std::vector<std::pair<std::string_view, MorvaTTTextLabelKV2*>> labels{
      {TTVCLabelNameImageDirection, required(labelDirection_)},
      {TTVCLabelNamePosition, required(labelPosition_)},
  };
  for (std::size_t side = 0; side < kSides; ++side)
    labels.emplace_back(marginsOf(kTitleKeys)[side], required(margins_.at(side).label));
  for (const auto& [key, label] : labels) {
    label->setStringValue(commonInfo_->localizedString(key).append(TTVCLabelNameDelimiter));
  }

  for (const auto& margin : margins_) (void)required(margin.limitLabel);
  for (std::size_t side = 0; side < kSides; ++side)
    margins_.at(side).limitLabel->setStringValue("mm   " + rangeText(kMargins[side].marginName));
}

// Inserts the minimum first; if its text contains the maximum's token, that is replaced too.
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
      {required(positionPopUp_), {kPositionNames.begin(), kPositionNames.end()}},
      {required(directionPopUp_), {kDirectionNames.begin(), kDirectionNames.end()}},
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
  std::vector<MorvaTTPrintTicketKV2::Controls> controlsOfTickets{
      {required(tandemTrimValid_)}, {required(directionPopUp_)}, {required(positionPopUp_)}};
  for (const auto& margin : margins_)
    controlsOfTickets.push_back({required(margin.textBox), required(margin.stepper)});
  for (std::size_t setting = 0; setting < kSettings.size(); ++setting)
    ticket_->registerTargetInstances(controlsOfTickets.at(setting), kTicketNames.at(setting));
  ticket_->setTitleToValid(commonInfo_->localizedString(TTVCLabelNameValid));
}

void MorvaTTViewControllerKV2::TTVCInitializeMargin() {
  std::vector<MarginEntry> entries;
  for (std::size_t side = 0; side < kSides; ++side) {
    const auto& margin = margins_.at(side);
    entries.push_back({kMargins[side].marginName, required(margin.textBox), required(margin.stepper)});
  }
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
  // If the set-up fails half-way, it removes its own subscriptions, since the destructor unsubscribes only a
  // view that is set up. Subscriptions of an earlier set-up remain.
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
