#pragma once

#include <string>
#include <string_view>

#import "platform/appkit/toolkit.h"
#include "platform/object.hpp"

/// Foundation's values and the core's.
namespace tandemtrim::platform::appkit {

/// The text in UTF-8, none as the empty text. Half a surrogate pair takes three bytes that are no UTF-8 and
/// comes back as it was.
std::string textOf(NSString* string);
/// The string that textOf() was given. U+FFFD stands for each byte that textOf() does not write.
NSString* stringOf(std::string_view text);

/// A property list's object for the core. It carries the given object along, and none is none.
ObjectRef objectOf(id foundationObject);

/// The object that objectOf() was given, or a new one of the same value; nil for none.
id foundationObjectOf(const Object* object);
inline id foundationObjectOf(const ObjectRef& object) { return foundationObjectOf(object.get()); }

/// A new dictionary of such objects.
NSMutableDictionary* foundationDictionaryOf(const Dictionary& dictionary);

}  // namespace tandemtrim::platform::appkit
