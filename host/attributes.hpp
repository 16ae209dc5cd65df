#pragma once

#include <string>

#include "host/cups_handles.hpp"

namespace tandemtrim::host {

/// The attribute of this name in a message, or null.
ipp_attribute_t* findAttribute(const MessageHandle& message, const std::string& name);

/// All values of an attribute as one text, as libcups writes them.
std::string attributeText(ipp_attribute_t* attribute);

}  // namespace tandemtrim::host
