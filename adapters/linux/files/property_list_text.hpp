#pragma once

#include <cstddef>
#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

/// Deepest nesting of values that is read, the root being the first level.
inline constexpr std::size_t kPropertyListLevels = 8;

/// Reads the text of an XML property list in UTF-8 and gives its root, which may be of any kind.
///
/// A value that cannot be read costs no other: its dictionary lacks its key, and an array that would lack an
/// item is such a value itself. That goes for unknown elements, numbers, dates and data of another form,
/// texts with bytes or references that are no characters, dictionaries whose keys and values do not
/// alternate, and what nests deeper than kPropertyListLevels. Of equal keys the last one counts.
///
/// None when the elements do not match (too deep ones are only counted), when there is more than one list,
/// when the text defines entities, or when the root cannot be read; `line` is then the line where reading
/// ended.
ObjectRef parsePropertyList(std::string_view text, std::size_t& line);

}  // namespace tandemtrim::platform::linux
