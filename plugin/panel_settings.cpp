// The panel's settings as a host sees them: one row for each, in the order of the panel's keywords.

#include <array>
#include <span>
#include <string_view>

#include "model/ticket_names.hpp"
#include "plugin/panel.hpp"
#include "plugin/setting_info/setting_names.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace {

using platform::PanelSetting;
using Names = std::span<const std::string_view>;

constexpr std::array kOnOff{TTCITandemTrimOn, TTCITandemTrimOff};
constexpr std::array kDirections{TTVCPopUpNameDirectionLEF, TTVCPopUpNameDirectionSEF};
constexpr std::array kPositions{TTVCPopUpNamePositionLeft, TTVCPopUpNamePositionCenter,
                                TTVCPopUpNamePositionRight};

struct Row {
  std::string_view ticketName;
  std::string_view titleKey;
  PanelSetting::Kind kind;
  Names choices;
  std::string_view marginName;
};

constexpr auto kNumber = PanelSetting::Kind::number;
constexpr std::array<Row, 7> kRows{{
    {TTPTMNameValid, TTVCLabelNameValid, PanelSetting::Kind::onOff, kOnOff, {}},
    {TTPTMNameDirection, TTVCLabelNameImageDirection, PanelSetting::Kind::choice, kDirections, {}},
    {TTPTMNamePosition, TTVCLabelNamePosition, PanelSetting::Kind::choice, kPositions, {}},
    {TTPTMNameMarginTop, TTVCLabelNameMarginTop, kNumber, {}, TTCINameMarginTop},
    {TTPTMNameMarginBottom, TTVCLabelNameMarginBottom, kNumber, {}, TTCINameMarginBottom},
    {TTPTMNameMarginLeft, TTVCLabelNameMarginLeft, kNumber, {}, TTCINameMarginLeft},
    {TTPTMNameMarginRight, TTVCLabelNameMarginRight, kNumber, {}, TTCINameMarginRight},
}};

}  // namespace

std::vector<PanelSetting> MorvaTTPdePanelKV2::settings() const {
  std::vector<PanelSetting> settings;
  for (const auto& row : kRows) {
    const auto& ticket = *viewController_->ticket()->ticketNamed(row.ticketName);
    auto& setting = settings.emplace_back();
    setting.keyword = ticket.key();
    setting.name = row.ticketName;
    setting.title = commonInfo_->localizedString(row.titleKey);
    setting.kind = row.kind;
    for (const auto name : row.choices)
      setting.choices.push_back({std::string(name), commonInfo_->localizedString(name)});
    if (row.kind == kNumber) {
      setting.minimum = platform::integerValue(commonInfo_->defaultMarginMin());
      setting.maximum = platform::integerValue(commonInfo_->marginLimit(row.marginName));
      setting.unit = "mm";
    }
    setting.value = ticket.currentValue();
  }
  return settings;
}

}  // namespace tandemtrim
