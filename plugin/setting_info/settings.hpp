#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "plugin/setting_info/setting_names.hpp"

namespace tandemtrim {

/// A setting's names in the PPD, in the property list and, for a margin, in the margin info.
struct Setting {
  /// The PPD option keyword that the panel declares.
  std::string_view keyword;
  /// The sub key of its default and of its print-settings key in the property list.
  std::string_view subKey;
  /// Margins only: the margin name, and the PPD keyword of the maximum.
  std::string_view marginName;
  std::string_view ppdKey;
};

/// All settings, in the order that everything else follows: the margins come last. Each layer adds its own
/// columns in the same order: `kTicketNames`, `kTitleKeys`, `kMarginOutlets`.
inline constexpr auto kSettings = std::to_array<Setting>({
    {"MVTandemTrim", TTCIPlistSubKeyValid, {}, {}},
    {"MVImageDirectionPriority", TTCIPlistSubKeyImageDirection, {}, {}},
    {"MVPrintPosition", TTCIPlistSubKeyPosition, {}, {}},
    {"MVTopMargin", TTCIPlistSubKeyMarginTop, TTCINameMarginTop, TTCIPpdKeyMarginTop},
    {"MVBottomMargin", TTCIPlistSubKeyMarginBottom, TTCINameMarginBottom, TTCIPpdKeyMarginBottom},
    {"MVLeftMargin", TTCIPlistSubKeyMarginLeft, TTCINameMarginLeft, TTCIPpdKeyMarginLeft},
    {"MVRightMargin", TTCIPlistSubKeyMarginRight, TTCINameMarginRight, TTCIPpdKeyMarginRight},
});

/// The sides of the sheet, which index the margins.
enum Side : std::size_t { kTop, kBottom, kLeft, kRight, kSides };

/// The index of the first margin among the settings, and the margins' part of a list of all settings.
inline constexpr std::size_t kFirstMargin = kSettings.size() - kSides;
template <class List>
constexpr auto marginsOf(const List& ofSettings) {
  return std::span(ofSettings).subspan(kFirstMargin);
}

inline constexpr auto kMargins = marginsOf(kSettings);

}  // namespace tandemtrim
