// The input is the text of a string table. A table that is read can be written and read again, in each
// encoding; a fault has a line.
#include "adapters/linux/files/strings_table.hpp"

#include <algorithm>

#include "fuzz/support/target.hpp"
#include "fuzz/support/utf.hpp"

namespace tandemtrim::fuzz {
namespace {

using platform::linux::parseStringsTable;
using platform::linux::StringsTable;

std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') out += '\\';
    out += character;
  }
  return out + '"';
}

std::string written(const StringsTable& table) {
  std::string text;
  for (const auto& [key, value] : table) text += quoted(key) + " = " + quoted(value) + ";\n";
  return text;
}

}  // namespace

void examine(std::string_view input) {
  std::size_t line = 0;
  const auto table = parseStringsTable(input, &line);
  require(parseStringsTable(input) == table, "a table is read the same without its fault's line");
  if (!table) {
    require(line >= 1, "a fault has a line");
    require(line <= 1 + static_cast<std::size_t>(std::count(input.begin(), input.end(), '\n')),
            "a fault's line is one of the text's");
    return;
  }
  require(line == 0, "a table without a fault names no line");
  for (const auto& [key, value] : *table) {
    require(isUtf8(key) && isUtf8(value), "keys and texts are UTF-8");
  }
  const auto text = written(*table);
  require(parseStringsTable(text) == table, "a table that is written is read again");
  for (const auto& encoding : {"UTF-16LE", "UTF-16BE"}) {
    require(parseStringsTable(utf16(text, encoding)) == table, std::string("it is read in ") + encoding);
  }

  auto longer = *table;
  longer["one more"] = "entry";
  require(parseStringsTable(text + "'one more'=entry;") == longer, "an appended entry is read, too");
}

}  // namespace tandemtrim::fuzz
