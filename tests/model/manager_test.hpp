#pragma once

#include <array>

#include "model/print_ticket_manager.hpp"
#include "tests/support/core_test.hpp"

namespace tandemtrim::test {

/// One setting as an ordinary scene has it, in the manager's order.
struct Setting {
  std::string ticketName;
  std::string subKey;
  std::string key;
  std::string defaultText;
};

inline const std::vector<Setting> kSettings = [] {
  std::vector<Setting> settings{{"Valid", "Valid", "MVTandemTrim", "Off"},
                                {"Direction", "ImageDirection", "MVImageDirectionPriority", "LongEdgeFeed"},
                                {"Position", "Position", "MVPrintPosition", "Center"}};
  for (const auto& [name, title, limit, defaultValue] : conformance::kSceneSides)
    settings.push_back({name, "Margin" + name, "MV" + name + "Margin", std::to_string(defaultValue)});
  return settings;
}();

inline std::array<MorvaTTPrintTicketKV2*, 7> ticketsOf(const MorvaTTPrintTicketManagerKV2& manager) {
  return {manager.ticketValid(),      manager.ticketDirection(),    manager.ticketPosition(),
          manager.ticketMarginTop(),  manager.ticketMarginBottom(), manager.ticketMarginLeft(),
          manager.ticketMarginRight()};
}

/// The job's log after the first `count` tickets have stored their defaults.
inline Log seedingOf(std::size_t count) {
  Log log;
  for (std::size_t index = 0; index < count; ++index) {
    const auto& setting = kSettings.at(index);
    log.push_back("get " + setting.key);
    log.push_back("set " + setting.key + '=' + setting.defaultText);
  }
  return log;
}

}  // namespace tandemtrim::test
