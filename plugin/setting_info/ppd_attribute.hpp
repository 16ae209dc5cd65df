#pragma once

#include <optional>
#include <string>
#include <string_view>

struct ppd_file_s;

namespace tandemtrim {

/// The value of the first attribute of this keyword in an open PPD file. Nullopt when there is no file, no
/// such attribute, or a value that is not UTF-8.
std::optional<std::string> ppdAttribute(ppd_file_s* ppd, std::string_view keyword);

}  // namespace tandemtrim
