#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "platform/extension.hpp"

/// Another family of printers: a plug-in that shares nothing with Tandem Trim but `platform/` and, without
/// a screen, the interface of a view (`adapters/memory/panel_view.hpp`).
namespace foldline {

/// A setting of the family. `name`, `values` and `unit` are also the keys of its texts in the bundle.
struct Setting {
  const char* keyword;
  const char* name;
  tandemtrim::platform::PanelSetting::Kind kind;
  std::vector<std::string> values;
  std::int64_t minimum;
  std::int64_t maximum;
  /// The PPD attribute that sets the largest value; empty if `maximum` always applies.
  const char* limit;
  const char* unit;
  const char* defaultValue;
};

inline const std::array<Setting, 5> kSettings{{
    {"LNFold",
     "Fold",
     tandemtrim::platform::PanelSetting::Kind::choice,
     {"None", "Half", "Letter"},
     0,
     0,
     "",
     "",
     "None"},
    {"LNSheetsPerSet",
     "SheetsPerSet",
     tandemtrim::platform::PanelSetting::Kind::number,
     {},
     1,
     50,
     "LNMaxSheetsPerSet",
     "sheets",
     "1"},
    {"LNCover", "Cover", tandemtrim::platform::PanelSetting::Kind::onOff, {"Yes", "No"}, 0, 0, "", "", "Yes"},
    {"LNPunch",
     "Punch",
     tandemtrim::platform::PanelSetting::Kind::choice,
     {"None", "TwoHoles", "FourHoles"},
     0,
     0,
     "",
     "",
     "None"},
    {"LNDryingTime", "DryingTime", tandemtrim::platform::PanelSetting::Kind::number, {}, 0, 60, "", "s", "0"},
}};

/// The controls that show the settings.
class Controls {
 public:
  virtual ~Controls() = default;
  virtual tandemtrim::platform::View& view() = 0;
  virtual void show(std::size_t setting, const std::string& value) = 0;
  [[nodiscard]] virtual std::string shown(std::size_t setting) const = 0;
};

/// Controls for these settings, in their order; each module has its own.
std::unique_ptr<Controls> makeControls(const std::vector<tandemtrim::platform::PanelSetting>& settings);

}  // namespace foldline
