#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim {

/// Turns numbers into plain decimal integers and texts into integers, in the same way in every locale. An
/// object that is neither raises std::invalid_argument.
class MorvaTTDecimalFormatterKV2 {
 public:
  /// The object's integer value in decimal digits, "-" before a negative one; "0" for null.
  [[nodiscard]] std::string stringForObjectValue(const platform::Object* object) const;

  /// Sets `object` to a new number, the text's integer value (0 for nullopt), and returns true; never writes
  /// `errorDescription`.
  bool getObjectValue(platform::ObjectRef& object, std::optional<std::string_view> text,
                      std::string* errorDescription) const;
};

}  // namespace tandemtrim
