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

/// One value of a property list, immutable, with the kind that it was written in. Objects are told apart by address:
/// an operation that hands back "the very object" hands back the same address. A platform may derive from it to
/// carry an object of its own along.
class Object {
 public:
  using Value = std::variant<std::string, std::int64_t, double, bool, Array, Dictionary, Data, Date>;

  explicit Object(Value value) : value_(std::move(value)) {}

  [[nodiscard]] const Value& value() const noexcept { return value_; }

  /// The value of this kind, or null when the object is of another kind.
  template <class Kind>
  [[nodiscard]] const Kind* as() const noexcept {
    return std::get_if<Kind>(&value_);
  }

  /// A number cut toward zero (held within 64 bits; not-a-number is 0; true is 1), or a string's leading integer.
  /// Any other kind raises std::invalid_argument.
  [[nodiscard]] std::int64_t integerValue() const;

  /// A number's decimal text: "12", "2.5", "5" for 5.0, "1" for true. Any other kind, a string included, raises
  /// std::invalid_argument.
  [[nodiscard]] std::string stringValue() const;

 private:
  Value value_;
};

/// A counted object of the given value.
inline ObjectRef makeObject(Object::Value value) { return std::make_shared<const Object>(std::move(value)); }

/// The integer value of an object that may be none; none counts as 0.
inline std::int64_t integerValue(const Object* object) { return object == nullptr ? 0 : object->integerValue(); }

/// The object under `key`, or none.
inline ObjectRef find(const Dictionary& dictionary, std::string_view key) {
  const auto entry = dictionary.find(key);
  return entry == dictionary.end() ? nullptr : entry->second;
}

}  // namespace tandemtrim::platform
