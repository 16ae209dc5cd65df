#pragma once

#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

/// Whether the elements of this name are read by propertyListScalar.
bool isPropertyListScalar(std::string_view element);

/// The number or date that an element's text stands for, whatever the locale; null when it stands for none.
/// Integers beyond 64 bits are held at the nearest one. Dates are in the form 2001-12-31T23:59:59Z.
ObjectRef propertyListScalar(std::string_view element, std::string_view text);

}  // namespace tandemtrim::platform::linux
