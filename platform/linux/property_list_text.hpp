#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

/// Deepest nesting of dictionaries and arrays, the root being the first level.
inline constexpr std::size_t kPropertyListLevels = 8;

/// A property list's text, made safe for libplist. libplist reads real numbers by the process's locale, hands
/// out negative and big integers as unsigned ones and dates in 32 bits, and recurses as deep as the text
/// nests. So numbers and dates are read beforehand, and the text holds in their place an integer each: the
/// index into `scalars`.
struct PropertyListText {
  std::string xml;
  std::vector<ObjectRef> scalars;
};

/// Prepares the text of an XML property list, in UTF-8. None when it is none: elements that do not match, a
/// number or a date that cannot be read, more than kPropertyListLevels levels, entities of its own.
std::optional<PropertyListText> preparePropertyList(std::string_view text);

}  // namespace tandemtrim::platform::linux
