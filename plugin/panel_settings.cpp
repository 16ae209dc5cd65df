// The panel's settings as a host sees them: one row for each, in the order of the panel's keywords.

#include <array>
#include <span>
#include <string_view>

#include "model/ticket_names.hpp"
#include "plugin/panel.hpp"
#include "plugin/setting_info/settings.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace {

using platform::PanelSetting;

constexpr std::array kOnOff{TTCITandemTrimOn, TTCITandemTrimOff};

// Kind and choices of a setting that is not a margin.
struct Choice {
  PanelSetting::Kind kind;
  std::span<const std::string_view> names;
};

constexpr auto kChoices = std::to_array<Choice>({
    {PanelSetting::Kind::onOff, kOnOff},
    {PanelSetting::Kind::choice, kDirectionNames},
    {PanelSetting::Kind::choice, kPositionNames},
});

// In the order of the sides.
constexpr std::array kEdges{PanelSetting::Edge::top, PanelSetting::Edge::bottom, PanelSetting::Edge::left,
                            PanelSetting::Edge::right};
static_assert(kEdges.size() == kSides, "each margin needs its edge");

}  // namespace

std::vector<PanelSetting> MorvaTTPdePanelKV2::settings() const {
  std::vector<PanelSetting> settings;
  for (std::size_t index = 0; index < kSettings.size(); ++index) {
    const auto& ticket = *viewController_->ticket()->ticketNamed(kTicketNames.at(index));
    auto& setting = settings.emplace_back();
    setting.keyword = ticket.key();
    setting.name = kTicketNames.at(index);
    setting.title = commonInfo_->localizedString(kTitleKeys.at(index));
    if (index < kFirstMargin) {
      setting.kind = kChoices.at(index).kind;
      for (const auto name : kChoices.at(index).names)
        setting.choices.push_back({std::string(name), commonInfo_->localizedString(name)});
    } else {
      setting.kind = PanelSetting::Kind::number;
      setting.minimum = platform::integerValue(commonInfo_->defaultMarginMin());
      setting.maximum = platform::integerValue(commonInfo_->marginLimit(kSettings.at(index).marginName));
      setting.unit = "mm";
      setting.trimmedEdge = kEdges.at(index - kFirstMargin);
    }
    setting.value = ticket.currentValue();
  }
  return settings;
}

}  // namespace tandemtrim
