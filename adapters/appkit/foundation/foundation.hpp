#pragma once

#include <string>
#include <string_view>

#import "adapters/appkit/foundation/toolkit.h"
#include "platform/object.hpp"

/// Conversions between Foundation's values and the core's.
namespace tandemtrim::platform::appkit {

/// The text in UTF-8; empty for nil. An unpaired surrogate becomes three bytes that are not UTF-8.
std::string textOf(NSString* string);
/// The inverse of textOf(). A byte that textOf() never writes becomes U+FFFD.
NSString* stringOf(std::string_view text);

/// The core's object for an object of a property list, which it retains; null for nil.
ObjectRef objectOf(id foundationObject);

/// The object that objectOf() was given, or a new one of the same value; nil for null.
id foundationObjectOf(const Object* object);
inline id foundationObjectOf(const ObjectRef& object) { return foundationObjectOf(object.get()); }

/// A new dictionary of such objects.
NSMutableDictionary* foundationDictionaryOf(const Dictionary& dictionary);

}  // namespace tandemtrim::platform::appkit
