#include <array>

#include "model/ticket_names.hpp"
#include "plugin/setting_info/setting_names.hpp"
#include "view/view_controller.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace {

// A row of the summary: the key of its title and the ticket whose value it shows, in the words of the menus
// or as it stands.
struct Row {
  std::string_view titleKey;
  std::string_view ticketName;
  bool valueIsLocalized;
};

constexpr std::array<Row, 6> kRows{{
    {TTVCLabelNameImageDirection, TTPTMNameDirection, true},
    {TTVCLabelNamePosition, TTPTMNamePosition, true},
    {TTVCLabelNameMarginTop, TTPTMNameMarginTop, false},
    {TTVCLabelNameMarginBottom, TTPTMNameMarginBottom, false},
    {TTVCLabelNameMarginLeft, TTPTMNameMarginLeft, false},
    {TTVCLabelNameMarginRight, TTPTMNameMarginRight, false},
}};

}  // namespace

platform::Dictionary MorvaTTViewControllerKV2::summaryInfoWithDispOrderKey(std::string_view dispOrderKey) {
  platform::Dictionary summary;
  const auto add = [&](const Row& row, std::string value) {
    if (row.valueIsLocalized) value = commonInfo_->localizedString(value);
    summary.insert_or_assign(commonInfo_->localizedString(row.titleKey),
                             platform::makeObject(std::move(value)));
  };

  auto valid = ticket_->restoreTicketFailSafe(TTPTMNameValid).value();
  if (valid != TTCITandemTrimOn) {
    add({TTVCLabelNameValid, TTPTMNameValid, true}, std::move(valid));
    return summary;
  }

  platform::Array titles;
  for (const auto& row : kRows) {
    add(row, ticket_->restoreTicketFailSafe(row.ticketName).value());
    titles.push_back(platform::makeObject(commonInfo_->localizedString(row.titleKey)));
  }
  summary.insert_or_assign(std::string(dispOrderKey), platform::makeObject(std::move(titles)));
  return summary;
}

}  // namespace tandemtrim
