#pragma once

#include <string>
#include <string_view>

namespace tandemtrim::fuzz {

/// What each target defines: takes one input to its subject and requires that the properties hold.
void examine(std::string_view input);

/// Ends the program when a property does not hold, naming it.
void require(bool holds, const std::string& property);

}  // namespace tandemtrim::fuzz
