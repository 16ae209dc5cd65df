#pragma once

#include <cstddef>
#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

/// The deepest level of nesting that is read; the root is the first level.
inline constexpr std::size_t kPropertyListLevels = 8;

/// Reads the text of an XML property list in UTF-8 and returns its root, which may be of any kind.
///
/// An unreadable value does not affect others: its key is missing from its dictionary; an array that has one
/// is unreadable itself. These values are unreadable: unknown elements, malformed numbers, dates and data,
/// texts with invalid bytes or references, dictionaries whose keys and values do not alternate, and values
/// nested deeper than kPropertyListLevels. Of equal keys the last one counts.
///
/// Null if the elements do not match (those that are too deep are only counted), if there is more than one
/// list, if the text defines entities, or if the root cannot be read; `line` is then the line where reading
/// ended.
ObjectRef parsePropertyList(std::string_view text, std::size_t& line);

}  // namespace tandemtrim::platform::linux
