#include "view/decimal_formatter.hpp"

#include "platform/integer_text.hpp"

namespace tandemtrim {

std::string MorvaTTDecimalFormatterKV2::stringForObjectValue(const platform::Object* object) const {
  return platform::Object(object == nullptr ? 0 : object->integerValue()).stringValue();
}

bool MorvaTTDecimalFormatterKV2::getObjectValue(platform::ObjectRef& object,
                                                std::optional<std::string_view> text,
                                                std::string* /*errorDescription*/) const {
  object = platform::makeObject(platform::integerValue(text.value_or("")));
  return true;
}

}  // namespace tandemtrim
