#include "host/cups/connection/attributes.hpp"

#include <new>
#include <utility>

namespace tandemtrim::host {
namespace {

// Whether libcups stores values of this type as strings.
bool isText(ipp_tag_t type) {
  switch (type) {
    case IPP_TAG_TEXT:
    case IPP_TAG_TEXTLANG:
    case IPP_TAG_NAME:
    case IPP_TAG_NAMELANG:
    case IPP_TAG_KEYWORD:
    case IPP_TAG_URI:
    case IPP_TAG_URISCHEME:
    case IPP_TAG_CHARSET:
    case IPP_TAG_LANGUAGE:
    case IPP_TAG_MIMETYPE:
      return true;
    default:
      return false;
  }
}

std::optional<std::string> textAt(ipp_attribute_t* attribute, int index) {
  if (!isText(ippGetValueTag(attribute))) return std::nullopt;
  const char* const text = ippGetString(attribute, index, nullptr);
  return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

// The attribute of this type, or null.
ipp_attribute_t* findValue(const MessageHandle& message, const std::string& name, ipp_tag_t type) {
  auto* const attribute = findAttribute(message, name);
  return ippGetValueTag(attribute) == type ? attribute : nullptr;
}

}  // namespace

bool isError(const MessageHandle& answer) {
  return ippGetStatusCode(answer.get()) >= IPP_STATUS_ERROR_BAD_REQUEST;
}

ipp_attribute_t* findAttribute(const MessageHandle& message, const std::string& name) {
  return ippFindAttribute(message.get(), name.c_str(), IPP_TAG_ZERO);
}

std::optional<std::string> textIn(const MessageHandle& message, const std::string& name) {
  return textAt(findAttribute(message, name), 0);
}

std::optional<int> integerIn(const MessageHandle& message, const std::string& name) {
  auto* const attribute = findValue(message, name, IPP_TAG_INTEGER);
  return attribute == nullptr ? std::nullopt : std::optional(ippGetInteger(attribute, 0));
}

std::optional<int> enumIn(const MessageHandle& message, const std::string& name) {
  auto* const attribute = findValue(message, name, IPP_TAG_ENUM);
  return attribute == nullptr ? std::nullopt : std::optional(ippGetInteger(attribute, 0));
}

std::optional<bool> booleanIn(const MessageHandle& message, const std::string& name) {
  auto* const attribute = findValue(message, name, IPP_TAG_BOOLEAN);
  return attribute == nullptr ? std::nullopt : std::optional(ippGetBoolean(attribute, 0) != 0);
}

std::vector<std::string> textsIn(const MessageHandle& message, const std::string& name) {
  std::vector<std::string> texts;
  for (auto* attribute = findAttribute(message, name); attribute != nullptr;
       attribute = ippFindNextAttribute(message.get(), name.c_str(), IPP_TAG_ZERO)) {
    for (int index = 0; index < ippGetCount(attribute); ++index) {
      if (auto text = textAt(attribute, index)) texts.push_back(std::move(*text));
    }
  }
  return texts;
}

std::optional<std::string> onlyText(ipp_attribute_t* attribute) {
  return ippGetCount(attribute) == 1 ? textAt(attribute, 0) : std::nullopt;
}

std::string attributeText(ipp_attribute_t* attribute) {
  std::string text(ippAttributeString(attribute, nullptr, 0), '\0');
  ippAttributeString(attribute, text.data(), text.size() + 1);
  return text;
}

void refuseIncomplete(const MessageHandle& request) {
  if (!request) throw std::bad_alloc();
  for (auto* attribute = ippFirstAttribute(request.get()); attribute != nullptr;
       attribute = ippNextAttribute(request.get())) {
    if (ippGetName(attribute) == nullptr) throw std::bad_alloc();
    if (!isText(ippGetValueTag(attribute))) continue;
    for (int index = 0; index < ippGetCount(attribute); ++index)
      if (ippGetString(attribute, index, nullptr) == nullptr) throw std::bad_alloc();
  }
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
