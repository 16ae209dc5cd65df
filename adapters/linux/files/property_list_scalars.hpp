#pragma once

#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

constexpr bool isBlank(char character) {
  return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

/// Reads a value from its text, in the same way in every locale; null if the text is malformed.
using ScalarReader = ObjectRef (*)(std::string_view text);

/// The reader for the elements of this name ("key", "string", "integer", "real", "true", "false", "date",
/// "data"), or null for any other name. Integers are decimal or, after 0x, hexadecimal, and clamped to 64
/// bits. Dates are in the form 2001-12-31T23:59:59Z.
ScalarReader findScalarReader(std::string_view element);

}  // namespace tandemtrim::platform::linux
