#pragma once

#include <string_view>

namespace tandemtrim {

/// Margin names: the sides' keys in the margin info dictionary, and the identifiers of their boxes and
/// steppers.
inline constexpr std::string_view TTCINameMarginTop = "Top";
inline constexpr std::string_view TTCINameMarginBottom = "Bottom";
inline constexpr std::string_view TTCINameMarginLeft = "Left";
inline constexpr std::string_view TTCINameMarginRight = "Right";

/// The stored values of the on/off setting.
inline constexpr std::string_view TTCITandemTrimOn = "On";
inline constexpr std::string_view TTCITandemTrimOff = "Off";

/// PPD keywords of the margins' maxima, in millimetres.
inline constexpr std::string_view TTCIPpdKeyMarginTop = "MVMaxTandemTrimMarginTop";
inline constexpr std::string_view TTCIPpdKeyMarginBottom = "MVMaxTandemTrimMarginBottom";
inline constexpr std::string_view TTCIPpdKeyMarginLeft = "MVMaxTandemTrimMarginLeft";
inline constexpr std::string_view TTCIPpdKeyMarginRight = "MVMaxTandemTrimMarginRight";

/// The key inside each entry of the margin info dictionary.
inline constexpr std::string_view TTCILimitKey = "Limit";

/// The resource with the setting-info property list.
inline constexpr std::string_view TTCISettingInfoName = "TandemTrimKV2-SettingInfo";
inline constexpr std::string_view TTCIPlistResourceType = "plist";

/// Main keys of the setting-info property list, and the sub keys below them.
inline constexpr std::string_view TTCIPlistMainKeyDefaultValue = "DefaultValue";
inline constexpr std::string_view TTCIPlistMainKeyTicketKey = "TicketKey";
inline constexpr std::string_view TTCIPlistMainKeyId = "ID";
inline constexpr std::string_view TTCIPlistMainKeyWording = "Wording";
inline constexpr std::string_view TTCIPlistSubKeyPanelKind = "PanelKind";
inline constexpr std::string_view TTCIPlistSubKeyValid = "Valid";
inline constexpr std::string_view TTCIPlistSubKeyImageDirection = "ImageDirection";
inline constexpr std::string_view TTCIPlistSubKeyPosition = "Position";
inline constexpr std::string_view TTCIPlistSubKeyMarginTop = "MarginTop";
inline constexpr std::string_view TTCIPlistSubKeyMarginBottom = "MarginBottom";
inline constexpr std::string_view TTCIPlistSubKeyMarginLeft = "MarginLeft";
inline constexpr std::string_view TTCIPlistSubKeyMarginRight = "MarginRight";
inline constexpr std::string_view TTCIPlistSubKeyMarginMin = "MarginMin";
inline constexpr std::string_view TTCIPlistSubKeyMarginMax = "MarginMax";
inline constexpr std::string_view TTCIPlistSubKeyMarginLimit = "MarginLimit";
inline constexpr std::string_view TTCIPlistSubKeyMinLabelForValueRange = "MinLabelForValueRange";
inline constexpr std::string_view TTCIPlistSubKeyMaxLabelForValueRange = "MaxLabelForValueRange";

}  // namespace tandemtrim
