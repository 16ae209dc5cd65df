#include <string_view>

#include <gmock/gmock.h>

#include "model/ticket_names.hpp"
#include "platform/extension.hpp"
#include "platform/notifications.hpp"
#include "plugin/panel.hpp"
#include "plugin/setting_info/setting_names.hpp"
#include "view/view_names.hpp"

namespace tandemtrim {
namespace {

struct Constant {
  std::string_view constant;
  std::string_view value;
};

const Constant kConstants[] = {
    {TTPanelNameKey, "TandemTrim"},
    {platform::kPrintDialogExtensionType, "BDB091F4-E57F-11D3-B5CC-0050E4603277"},
    {platform::kSummaryDisplayOrderKey, "Summary Display Order"},
    {platform::NSControlTextDidChangeNotification, "NSControlTextDidChangeNotification"},

    {TTCINameMarginTop, "Top"},
    {TTCINameMarginBottom, "Bottom"},
    {TTCINameMarginLeft, "Left"},
    {TTCINameMarginRight, "Right"},
    {TTCITandemTrimOn, "On"},
    {TTCITandemTrimOff, "Off"},
    {TTCIPpdKeyMarginTop, "MVMaxTandemTrimMarginTop"},
    {TTCIPpdKeyMarginBottom, "MVMaxTandemTrimMarginBottom"},
    {TTCIPpdKeyMarginLeft, "MVMaxTandemTrimMarginLeft"},
    {TTCIPpdKeyMarginRight, "MVMaxTandemTrimMarginRight"},
    {TTCILimitKey, "Limit"},
    {TTCISettingInfoName, "TandemTrimKV2-SettingInfo"},
    {TTCIPlistResourceType, "plist"},
    {TTCIPlistMainKeyDefaultValue, "DefaultValue"},
    {TTCIPlistMainKeyTicketKey, "TicketKey"},
    {TTCIPlistMainKeyId, "ID"},
    {TTCIPlistMainKeyWording, "Wording"},
    {TTCIPlistSubKeyPanelKind, "PanelKind"},
    {TTCIPlistSubKeyValid, "Valid"},
    {TTCIPlistSubKeyImageDirection, "ImageDirection"},
    {TTCIPlistSubKeyPosition, "Position"},
    {TTCIPlistSubKeyMarginTop, "MarginTop"},
    {TTCIPlistSubKeyMarginBottom, "MarginBottom"},
    {TTCIPlistSubKeyMarginLeft, "MarginLeft"},
    {TTCIPlistSubKeyMarginRight, "MarginRight"},
    {TTCIPlistSubKeyMarginMin, "MarginMin"},
    {TTCIPlistSubKeyMarginMax, "MarginMax"},
    {TTCIPlistSubKeyMarginLimit, "MarginLimit"},
    {TTCIPlistSubKeyMinLabelForValueRange, "MinLabelForValueRange"},
    {TTCIPlistSubKeyMaxLabelForValueRange, "MaxLabelForValueRange"},

    {TTPTMNameValid, "Valid"},
    {TTPTMNameDirection, "Direction"},
    {TTPTMNamePosition, "Position"},
    {TTPTMNameMarginTop, "Top"},
    {TTPTMNameMarginBottom, "Bottom"},
    {TTPTMNameMarginLeft, "Left"},
    {TTPTMNameMarginRight, "Right"},
    {TTPTMKeyInstancePointer, "InstancePointer"},
    {TTPTMKeyClass, "Class"},
    {TTPTMKeyDefaultValue, "DefaultValue"},
    {TTPTMKeyTicketKey, "TicketKey"},

    {TTVCLabelNameValid, "EnableTandemTrim"},
    {TTVCLabelNameImageDirection, "ImageDirection"},
    {TTVCLabelNamePosition, "InformPrintingPosition"},
    {TTVCLabelNameMarginTop, "TopMargin"},
    {TTVCLabelNameMarginBottom, "BottomMargin"},
    {TTVCLabelNameMarginLeft, "LeftMargin"},
    {TTVCLabelNameMarginRight, "RightMargin"},
    {TTVCLabelNameDelimiter, ":"},
    {TTVCLabelNameRestoreDefault, "RestoreDefault"},
    {TTVCLabelNameRangeFormat, "IntegerValueRangeFormat"},
    {TTVCPopUpNamePositionLeft, "Left"},
    {TTVCPopUpNamePositionCenter, "Center"},
    {TTVCPopUpNamePositionRight, "Right"},
    {TTVCPopUpNameDirectionLEF, "LongEdgeFeed"},
    {TTVCPopUpNameDirectionSEF, "ShortEdgeFeed"},
    {TTVCKeyInstance, "instance"},
    {TTVCKeyNames, "names"},
    {TTVCKeyMarginName, "name"},
    {TTVCKeyMarginText, "text"},
    {TTVCKeyMarginStepper, "stepper"},
    {TTVCKeyMarginSetting, "key"},
};

TEST(Constants, HaveTheValuesThatHostsBundlesAndPrintersKnow) {
  for (const auto& [constant, value] : kConstants) EXPECT_EQ(constant, value);
}

}  // namespace
}  // namespace tandemtrim
