#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/object.hpp"

namespace tandemtrim {

/// Turns numbers into plain decimal integers and texts into integers, whatever the locale. Neither way ever
/// fails.
class MorvaTTDecimalFormatterKV2 {
 public:
  /// The object's integer value in decimal digits, "-" before a negative one; "0" for none.
  [[nodiscard]] std::string stringForObjectValue(const platform::Object* object) const;

  /// Stores the text's integer value (0 for none) as a new number in `object` and returns true;
  /// `errorDescription` stays as it is.
  bool getObjectValue(platform::ObjectRef& object, std::optional<std::string_view> text,
                      std::string* errorDescription) const;
};

}  // namespace tandemtrim
