#pragma once

#include <string>

namespace tandemtrim::host {

/// Whether the text is a time of day as a print server accepts it: "7:05", "07:05" or "07:05:30".
bool isTimeOfDay(const std::string& text);

}  // namespace tandemtrim::host
