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

/// A counted reference to an object; null is none.
using ObjectRef = std::shared_ptr<const Object>;
using Array = std::vector<ObjectRef>;
/// Keys are unique; none is never stored as a value.
using Dictionary = std::map<std::string, ObjectRef, std::less<>>;
struct Data {
  std::vector<std::byte> bytes;
};
struct Date {
  double secondsSince2001;
};

/// One value of a property list, immutable, with the kind that it was written in. Objects are told apart by
/// address: an operation that hands back "the very object" hands back the same address. A platform may derive
/// from it to carry an object of its own along.
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

  /// A number cut toward zero (held within 64 bits; not-a-number is 0; true is 1), or a string's leading
  /// integer. Any other kind raises std::invalid_argument.
  [[nodiscard]] std::int64_t integerValue() const;

  /// A number's decimal text: "12", "2.5", "5" for 5.0, "1" for true. Any other kind, a string included,
  /// raises std::invalid_argument.
  [[nodiscard]] std::string stringValue() const;

 private:
  Value value_;
};

/// A counted object of the given value.
inline ObjectRef makeObject(Object::Value value) { return std::make_shared<const Object>(std::move(value)); }

/// The integer value of an object that may be none, which counts as 0.
inline std::int64_t integerValue(const ObjectRef& object) { return object ? object->integerValue() : 0; }

/// The value itself when its integer value stands between those of two inclusive bounds, else the bound that
/// it passes. The minimum is looked at first, so that it holds where the bounds cross. A bound that is none
/// counts as 0 and is handed back as none. `Reference` is ObjectRef or a pointer to const Object.
template <class Reference>
Reference heldBetween(const Reference& value, const Reference& minimum, const Reference& maximum) {
  const auto number = [](const Reference& object) { return object ? object->integerValue() : 0; };
  const auto integer = number(value);
  if (integer < number(minimum)) return minimum;
  if (integer > number(maximum)) return maximum;
  return value;
}

/// The text of an object that must be a string; none and any other kind raise std::invalid_argument that
/// names `what`.
const std::string& requiredText(const ObjectRef& object, std::string_view what);

/// The decimal text of an object that must be a number; none and any other kind raise std::invalid_argument.
std::string requiredDecimalText(const ObjectRef& object, std::string_view what);

/// The object under `key`, or none.
inline ObjectRef find(const Dictionary& dictionary, std::string_view key) {
  const auto entry = dictionary.find(key);
  return entry == dictionary.end() ? nullptr : entry->second;
}

}  // namespace tandemtrim::platform
