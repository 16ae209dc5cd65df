#pragma once

#include <string_view>

namespace tandemtrim {

/// Localisation keys of the panel's texts; the labels' keys also name the rows of the summary.
inline constexpr std::string_view TTVCLabelNameValid = "EnableTandemTrim";
inline constexpr std::string_view TTVCLabelNameImageDirection = "ImageDirection";
inline constexpr std::string_view TTVCLabelNamePosition = "InformPrintingPosition";
inline constexpr std::string_view TTVCLabelNameMarginTop = "TopMargin";
inline constexpr std::string_view TTVCLabelNameMarginBottom = "BottomMargin";
inline constexpr std::string_view TTVCLabelNameMarginLeft = "LeftMargin";
inline constexpr std::string_view TTVCLabelNameMarginRight = "RightMargin";
inline constexpr std::string_view TTVCLabelNameRestoreDefault = "RestoreDefault";
inline constexpr std::string_view TTVCLabelNameRangeFormat = "IntegerValueRangeFormat";
/// Appended to each label's text.
inline constexpr std::string_view TTVCLabelNameDelimiter = ":";

/// Names of the menu items: their represented objects, and the localisation keys of their titles.
inline constexpr std::string_view TTVCPopUpNamePositionLeft = "Left";
inline constexpr std::string_view TTVCPopUpNamePositionCenter = "Center";
inline constexpr std::string_view TTVCPopUpNamePositionRight = "Right";
inline constexpr std::string_view TTVCPopUpNameDirectionLEF = "LongEdgeFeed";
inline constexpr std::string_view TTVCPopUpNameDirectionSEF = "ShortEdgeFeed";

/// The fields of a menu's and of a margin's set-up entry.
inline constexpr std::string_view TTVCKeyInstance = "instance";
inline constexpr std::string_view TTVCKeyNames = "names";
inline constexpr std::string_view TTVCKeyMarginName = "name";
inline constexpr std::string_view TTVCKeyMarginText = "text";
inline constexpr std::string_view TTVCKeyMarginStepper = "stepper";
inline constexpr std::string_view TTVCKeyMarginSetting = "key";

}  // namespace tandemtrim
