#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tandemtrim::platform {

class Object;

/// A counted reference to an object, or null.
using ObjectRef = std::shared_ptr<const Object>;
using Array = std::vector<ObjectRef>;
/// Its values are never null.
using Dictionary = std::map<std::string, ObjectRef, std::less<>>;
struct Data {
  std::vector<std::byte> bytes;
};
struct Date {
  double secondsSince2001;
};

/// One value of a property list, immutable, of the kind in which it was written. An object's identity is its
/// address: an operation that returns "the very object" returns the same address. A platform may derive from
/// this class to attach its own object.
class Object {
 public:
  using Value = std::variant<std::string, std::int64_t, double, bool, Array, Dictionary, Data, Date>;

  explicit Object(Value value) : value_(std::move(value)) {}
  Object(const Object&) = default;
  Object& operator=(const Object&) = default;
  virtual ~Object() = default;

  [[nodiscard]] const Value& value() const noexcept { return value_; }

  /// The value of this kind, or null when the object is of another kind.
  template <class Kind>
  [[nodiscard]] const Kind* as() const noexcept {
    return std::get_if<Kind>(&value_);
  }

  /// A number truncated toward zero (clamped to 64 bits; not-a-number is 0; true is 1), or a string's leading
  /// integer. Any other kind raises std::invalid_argument.
  [[nodiscard]] std::int64_t integerValue() const;

  /// A number's decimal text: "12", "2.5", "5" for 5.0, "1" for true. Any other kind, a string included,
  /// raises std::invalid_argument.
  [[nodiscard]] std::string stringValue() const;

 private:
  Value value_;
};

inline ObjectRef makeObject(Object::Value value) { return std::make_shared<const Object>(std::move(value)); }

/// The object's integer value; 0 for null.
inline std::int64_t integerValue(const ObjectRef& object) { return object ? object->integerValue() : 0; }

/// Clamps: returns `value` itself if its integer value is between those of the two inclusive bounds, else the
/// bound that it violates. The minimum is checked first, so it wins where the bounds cross. A null bound
/// counts as 0 and is returned as null. `Reference` is ObjectRef or a pointer to const Object.
template <class Reference>
Reference heldBetween(const Reference& value, const Reference& minimum, const Reference& maximum) {
  const auto number = [](const Reference& object) { return object ? object->integerValue() : 0; };
  const auto integer = number(value);
  if (integer < number(minimum)) return minimum;
  if (integer > number(maximum)) return maximum;
  return value;
}

/// The text of an object that must be a string. Null and any other kind raise std::invalid_argument, which
/// names `what`.
const std::string& requiredText(const ObjectRef& object, std::string_view what);

/// The decimal text of an object that must be a number. Null and any other kind raise std::invalid_argument.
std::string requiredDecimalText(const ObjectRef& object, std::string_view what);

/// The object under `key`, or null.
inline ObjectRef find(const Dictionary& dictionary, std::string_view key) {
  const auto entry = dictionary.find(key);
  return entry == dictionary.end() ? nullptr : entry->second;
}

}  // namespace tandemtrim::platform
