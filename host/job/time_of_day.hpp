#pragma once

#include <string>

namespace tandemtrim::host {

/// Whether the text is a time of day, "7:05", "07:05" or "07:05:30", as a print server takes it.
bool isTimeOfDay(const std::string& text);

}  // namespace tandemtrim::host
