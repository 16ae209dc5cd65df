#include "model/ticket_names.hpp"
#include "plugin/setting_info/settings.hpp"
#include "view/view_controller.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {

platform::Dictionary MorvaTTViewControllerKV2::summaryInfoWithDispOrderKey(std::string_view dispOrderKey) {
  platform::Dictionary summary;
  // Choices are localised as in the menus; margins are shown as stored.
  const auto add = [&](std::size_t setting, std::string value) {
    if (setting < kFirstMargin) value = commonInfo_->localizedString(value);
    summary.insert_or_assign(commonInfo_->localizedString(kTitleKeys.at(setting)),
                             platform::makeObject(std::move(value)));
  };

  auto valid = ticket_->restoreTicketFailSafe(TTPTMNameValid).value();
  if (valid != TTCITandemTrimOn) {
    add(0, std::move(valid));
    return summary;
  }

  platform::Array titles;
  for (std::size_t setting = 1; setting < kSettings.size(); ++setting) {
    add(setting, ticket_->restoreTicketFailSafe(kTicketNames.at(setting)).value());
    titles.push_back(platform::makeObject(commonInfo_->localizedString(kTitleKeys.at(setting))));
  }
  summary.insert_or_assign(std::string(dispOrderKey), platform::makeObject(std::move(titles)));
  return summary;
}

}  // namespace tandemtrim
