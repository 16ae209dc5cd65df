#include "adapters/appkit/foundation/foundation.hpp"

#include <cstring>
#include <type_traits>

#include "adapters/appkit/foundation/retained.hpp"
#include "platform/utf8.hpp"

namespace tandemtrim::platform::appkit {
namespace {

class FoundationObject : public Object {
 public:
  FoundationObject(Value value, NSObject* original) : Object(std::move(value)), original_(original) {}
  [[nodiscard]] NSObject* original() const { return original_.get(); }

 private:
  Retained<NSObject> original_;
};

constexpr bool isHigh(unichar unit) { return unit >= 0xD800 && unit < 0xDC00; }
constexpr bool isLow(unichar unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Booleans are two singletons, so their addresses are compared; their type code depends on the toolkit.
Object::Value valueOf(NSNumber* number) {
  for (const bool flag : {true, false}) {
    if (number == [NSNumber numberWithBool:flag]) return flag;
  }
  const char type = *[number objCType];
  if (type == 'f' || type == 'd') return static_cast<double>([number doubleValue]);
  return static_cast<std::int64_t>([number longLongValue]);
}

Object::Value valueOf(NSArray* array) {
  Array elements;
  for (id element in array) elements.push_back(objectOf(element));
  return elements;
}

Object::Value valueOf(NSDictionary* dictionary) {
  Dictionary entries;
  for (NSString* key in dictionary) entries.emplace(textOf(key), objectOf([dictionary objectForKey:key]));
  return entries;
}

Object::Value valueOf(NSData* data) {
  Data copy;
  copy.bytes.resize([data length]);
  [data getBytes:copy.bytes.data() length:copy.bytes.size()];
  return copy;
}

// An object of a class that property lists do not have becomes its description.
Object::Value valueOfAny(id object) {
  if ([object isKindOfClass:[NSString class]]) return textOf(object);
  if ([object isKindOfClass:[NSNumber class]]) return valueOf(static_cast<NSNumber*>(object));
  if ([object isKindOfClass:[NSArray class]]) return valueOf(static_cast<NSArray*>(object));
  if ([object isKindOfClass:[NSDictionary class]]) return valueOf(static_cast<NSDictionary*>(object));
  if ([object isKindOfClass:[NSData class]]) return valueOf(static_cast<NSData*>(object));
  if ([object isKindOfClass:[NSDate class]]) return Date{[object timeIntervalSinceReferenceDate]};
  return textOf([object description]);
}

constexpr unichar kReplacement = 0xFFFD;

// The toolkit drops a byte order mark at the beginning of a text, but keeps one after another character.
NSString* stringOfUtf8(std::string_view text) {
  if (text.starts_with("\uFEFF")) return [stringOfUtf8("-" + std::string(text)) substringFromIndex:1];
  return [[[NSString alloc] initWithBytes:text.data() length:text.size()
                                 encoding:NSUTF8StringEncoding] autorelease];
}

// The unpaired surrogate in the text's first three bytes, or 0.
unichar halfAtStart(std::string_view text) {
  const auto bits = [&](std::size_t index) { return static_cast<unsigned>(text[index] & 0x3F); };
  const bool isHalf =
      text.size() >= 3 && text[0] == '\xED' && (text[1] & 0xE0) == 0xA0 && (text[2] & 0xC0) == 0x80;
  return isHalf ? static_cast<unichar>(0xD000U | bits(1) << 6U | bits(2)) : 0;
}

struct NewFoundationObject {
  id operator()(const std::string& text) const { return stringOf(text); }
  id operator()(std::int64_t number) const { return [NSNumber numberWithLongLong:number]; }
  id operator()(double number) const { return [NSNumber numberWithDouble:number]; }
  id operator()(bool flag) const { return [NSNumber numberWithBool:flag]; }
  id operator()(const Array& array) const {
    NSMutableArray* elements = [NSMutableArray arrayWithCapacity:array.size()];
    for (const auto& element : array) [elements addObject:foundationObjectOf(element)];
    return elements;
  }
  id operator()(const Dictionary& dictionary) const { return foundationDictionaryOf(dictionary); }
  id operator()(const Data& data) const {
    return [NSData dataWithBytes:data.bytes.data() length:data.bytes.size()];
  }
  id operator()(const Date& date) const {
    return [NSDate dateWithTimeIntervalSinceReferenceDate:date.secondsSince2001];
  }
};

}  // namespace

std::string textOf(NSString* string) {
  std::string text;
  const NSUInteger length = [string length];
  for (NSUInteger index = 0; index < length; ++index) {
    const unichar unit = [string characterAtIndex:index];
    char32_t point = unit;
    if (isHigh(unit) && index + 1 < length && isLow([string characterAtIndex:index + 1]))
      point = 0x10000U + ((unit - 0xD800U) << 10U) + ([string characterAtIndex:++index] - 0xDC00U);
    appendUtf8(text, point);
  }
  return text;
}

NSString* stringOf(std::string_view text) {
  if (isUtf8(text)) return stringOfUtf8(text);
  NSMutableString* string = [NSMutableString string];
  for (;;) {
    const auto utf8 = utf8PrefixLength(text);
    [string appendString:stringOfUtf8(text.substr(0, utf8))];
    text.remove_prefix(utf8);
    if (text.empty()) return string;
    const unichar half = halfAtStart(text);
    [string appendFormat:@"%C", half == 0 ? kReplacement : half];
    text.remove_prefix(half == 0 ? 1 : 3);
  }
}

ObjectRef objectOf(id foundationObject) {
  if (foundationObject == nil) return nullptr;
  return std::make_shared<const FoundationObject>(valueOfAny(foundationObject), foundationObject);
}

id foundationObjectOf(const Object* object) {
  if (object == nullptr) return nil;
  if (const auto* carried = dynamic_cast<const FoundationObject*>(object)) return carried->original();
  return std::visit(NewFoundationObject{}, object->value());
}

NSMutableDictionary* foundationDictionaryOf(const Dictionary& dictionary) {
  NSMutableDictionary* entries = [NSMutableDictionary dictionaryWithCapacity:dictionary.size()];
  for (const auto& [key, value] : dictionary) {
    [entries setObject:foundationObjectOf(value) forKey:stringOf(key)];
  }
  return entries;
}

}  // namespace tandemtrim::platform::appkit
