#include "host/job/time_of_day.hpp"

#include <regex>

namespace tandemtrim::host {

bool isTimeOfDay(const std::string& text) {
  static const std::regex time(R"(([01]?\d|2[0-3]):[0-5]\d(:[0-5]\d)?)");
  return std::regex_match(text, time);
}

}  // namespace tandemtrim::host
