#pragma once

#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

constexpr bool isBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

/// Reads the value of a text, in the same way in every locale; null when the text has none.
using ScalarReader = ObjectRef (*)(std::string_view text);

/// The reader for the elements of this name ("key", "string", "integer", "real", "true", "false", "date",
/// "data"), or null for any other name. Integers are decimal or, behind 0x, hexadecimal; those beyond 64 bits
/// are held at the nearest one. Dates are in the form 2001-12-31T23:59:59Z.
ScalarReader findScalarReader(std::string_view element);

}  // namespace tandemtrim::platform::linux
