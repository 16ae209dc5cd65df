#pragma once

#include <string>
#include <string_view>

#import "platform/appkit/toolkit.h"
#include "platform/object.hpp"

/// Foundation's values and the core's.
namespace tandemtrim::platform::appkit {

/// The text in UTF-8; half a surrogate pair becomes U+FFFD, none the empty text.
std::string textOf(NSString* string);
NSString* stringOf(std::string_view text);

/// A property list's object for the core. It carries the given object along, and none is none.
ObjectRef objectOf(id foundationObject);

/// The object that objectOf() was given, or a new one of the same value; nil for none.
id foundationObjectOf(const Object* object);
inline id foundationObjectOf(const ObjectRef& object) { return foundationObjectOf(object.get()); }

/// A new dictionary of such objects.
NSMutableDictionary* foundationDictionaryOf(const Dictionary& dictionary);

}  // namespace tandemtrim::platform::appkit
