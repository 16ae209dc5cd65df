#pragma once

#include <memory>
#include <string>

#include "platform/object.hpp"

namespace tandemtrim::platform::linux {

/// Reads the XML property list in the file at `path`, in UTF-8 or, after a byte order mark, UTF-16, of up to
/// 4 MB. A value that cannot be read counts as absent (parsePropertyList). Null for anything else and for a
/// root that is not a dictionary; `fault` then names the file and what is wrong with it.
std::shared_ptr<const Dictionary> readPropertyList(const std::string& path, std::string& fault);

/// The same for the bytes of such a file; `fault` is then the text to append to the file's name.
std::shared_ptr<const Dictionary> propertyListIn(const std::string& bytes, std::string& fault);

}  // namespace tandemtrim::platform::linux
