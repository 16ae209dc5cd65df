#include "host/cups/attributes.hpp"

namespace tandemtrim::host {

ipp_attribute_t* findAttribute(const MessageHandle& message, const std::string& name) {
  return ippFindAttribute(message.get(), name.c_str(), IPP_TAG_ZERO);
}

std::string attributeText(ipp_attribute_t* attribute) {
  std::string text(ippAttributeString(attribute, nullptr, 0), '\0');
  ippAttributeString(attribute, text.data(), text.size() + 1);
  return text;
}

void requestAttributes(const MessageHandle& request, const std::vector<std::string>& names) {
  std::vector<const char*> texts;
  texts.reserve(names.size());
  for (const auto& name : names) texts.push_back(name.c_str());
  ippAddStrings(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes",
                static_cast<int>(texts.size()), nullptr, texts.data());
}

void encodeOptions(const MessageHandle& request, const Options& options, std::span<const ipp_tag_t> groups) {
  const OptionList list(options);
  for (const auto group : groups) cupsEncodeOptions2(request.get(), list.count(), list.get(), group);
}

}  // namespace tandemtrim::host
