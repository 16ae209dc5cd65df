#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tandemtrim::platform::linux {

/// Texts in the user's language under their keys.
using StringsTable = std::map<std::string, std::string, std::less<>>;

/// Reads a string table in its classic text form: `"key" = "value";` entries, and comments of both kinds, in
/// UTF-8 or, after a byte order mark, UTF-16. `key;` is an entry whose value is the key; words of letters,
/// digits and _ $ / : . - need no quotes. Of equal keys the last one counts. Nullopt for a table with a
/// fault; `line` is then the fault's line.
std::optional<StringsTable> parseStringsTable(std::string_view bytes, std::size_t* line = nullptr);

}  // namespace tandemtrim::platform::linux
