#pragma once

#include <array>
#include <string_view>

#include "plugin/setting_info/settings.hpp"

namespace tandemtrim {

/// Localisation keys of the panel's texts; those of the settings also name the rows of the summary.
inline constexpr std::string_view TTVCLabelNameValid = "EnableTandemTrim";
inline constexpr std::string_view TTVCLabelNameImageDirection = "ImageDirection";
inline constexpr std::string_view TTVCLabelNamePosition = "InformPrintingPosition";
inline constexpr std::string_view TTVCLabelNameMarginTop = "TopMargin";
inline constexpr std::string_view TTVCLabelNameMarginBottom = "BottomMargin";
inline constexpr std::string_view TTVCLabelNameMarginLeft = "LeftMargin";
inline constexpr std::string_view TTVCLabelNameMarginRight = "RightMargin";
inline constexpr std::string_view TTVCLabelNameRestoreDefault = "RestoreDefault";
inline constexpr std::string_view TTVCLabelNameRangeFormat = "IntegerValueRangeFormat";
/// The note about page content in the margins, and the part of it for one margin.
inline constexpr std::string_view kContentInMarginsKey = "ContentInMargins";
inline constexpr std::string_view kContentInMarginKey = "ContentInMargin";
/// Appended to the localisation key of a control's title: the key of the letter that is its access key.
inline constexpr std::string_view kAccessKeySuffix = "AccessKey";
/// Appended to each label's text.
inline constexpr std::string_view TTVCLabelNameDelimiter = ":";

/// Names of the menu items: their represented objects and the localisation keys of their titles.
inline constexpr std::string_view TTVCPopUpNamePositionLeft = "Left";
inline constexpr std::string_view TTVCPopUpNamePositionCenter = "Center";
inline constexpr std::string_view TTVCPopUpNamePositionRight = "Right";
inline constexpr std::string_view TTVCPopUpNameDirectionLEF = "LongEdgeFeed";
inline constexpr std::string_view TTVCPopUpNameDirectionSEF = "ShortEdgeFeed";

/// The localisation key of each setting's title.
inline constexpr std::array kTitleKeys{
    TTVCLabelNameValid,        TTVCLabelNameImageDirection, TTVCLabelNamePosition,    TTVCLabelNameMarginTop,
    TTVCLabelNameMarginBottom, TTVCLabelNameMarginLeft,     TTVCLabelNameMarginRight,
};
static_assert(kTitleKeys.size() == kSettings.size(), "each setting needs the key of its title");

/// The items of each menu, in their order.
inline constexpr std::array kDirectionNames{TTVCPopUpNameDirectionLEF, TTVCPopUpNameDirectionSEF};
inline constexpr std::array kPositionNames{TTVCPopUpNamePositionLeft, TTVCPopUpNamePositionCenter,
                                           TTVCPopUpNamePositionRight};

/// The outlets of each margin.
struct MarginOutlets {
  std::string_view label;
  std::string_view limitLabel;
  std::string_view textBox;
  std::string_view stepper;
};
inline constexpr auto kMarginOutlets = std::to_array<MarginOutlets>({
    {"labelMarginTop", "labelMarginLimitTop", "textBoxMarginTop", "stepperMarginTop"},
    {"labelMarginBottom", "labelMarginLimitBottom", "textBoxMarginBottom", "stepperMarginBottom"},
    {"labelMarginLeft", "labelMarginLimitLeft", "textBoxMarginLeft", "stepperMarginLeft"},
    {"labelMarginRight", "labelMarginLimitRight", "textBoxMarginRight", "stepperMarginRight"},
});
static_assert(kMarginOutlets.size() == kSides, "each side needs its outlets");

/// Names of the fields of a menu's and of a margin's set-up entry. No code here reads them.
inline constexpr std::string_view TTVCKeyInstance = "instance";
inline constexpr std::string_view TTVCKeyNames = "names";
inline constexpr std::string_view TTVCKeyMarginName = "name";
inline constexpr std::string_view TTVCKeyMarginText = "text";
inline constexpr std::string_view TTVCKeyMarginStepper = "stepper";
inline constexpr std::string_view TTVCKeyMarginSetting = "key";

}  // namespace tandemtrim
