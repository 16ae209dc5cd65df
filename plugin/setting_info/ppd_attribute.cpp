#include "plugin/setting_info/ppd_attribute.hpp"

#include <cups/ppd.h>

#include "platform/utf8.hpp"

namespace tandemtrim {
std::optional<std::string> ppdAttribute(ppd_file_s* ppd, std::string_view keyword) {
  const ppd_attr_t* attribute = ppdFindAttr(ppd, std::string(keyword).c_str(), nullptr);
  if (attribute == nullptr || attribute->value == nullptr || !platform::isUtf8(attribute->value))
    return std::nullopt;
  return attribute->value;
}

}  // namespace tandemtrim
