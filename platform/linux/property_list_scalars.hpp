#pragma once

#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

/// Reads the number or date that a text stands for, whatever the locale; null when it stands for none.
using ScalarReader = ObjectRef (*)(std::string_view text);

/// The reader for the elements of this name ("integer", "real", "date"), or null for any other name. Integers
/// beyond 64 bits are held at the nearest one. Dates are in the form 2001-12-31T23:59:59Z.
ScalarReader findScalarReader(std::string_view element);

}  // namespace tandemtrim::platform::linux
