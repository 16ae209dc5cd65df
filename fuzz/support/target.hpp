#pragma once

#include <string>
#include <string_view>

namespace tandemtrim::fuzz {

/// Each target defines it: tries one input and requires that the properties hold.
void examine(std::string_view input);

/// Aborts the program if the property does not hold, and names it.
void require(bool holds, const std::string& property);

}  // namespace tandemtrim::fuzz
