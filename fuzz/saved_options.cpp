// The input is the system's file of saved options and, after "|||", the user's. The program reads from them
// the same options as libcups, for a printer, for an instance of it and for the default printer.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>

#include "fuzz/support/print_server.hpp"
#include "fuzz/support/target.hpp"
#include "host/cups/printer.hpp"

namespace tandemtrim::fuzz {
namespace {

namespace fs = std::filesystem;
using namespace host;
using namespace std::string_view_literals;

constexpr std::string_view kBetweenFiles = "|||";
// The number of a status, then the server's answer about its only printer: the attributes that begin every
// answer, and the printer's name.
constexpr std::string_view kPrinter =
    "\0\1"
    "\x47\0\x12"
    "attributes-charset\0\5utf-8"
    "\x48\0\x1B"
    "attributes-natural-language\0\2en"
    "\4\x42\0\x0C"
    "printer-name\0\5Morva"
    "\3"sv;
constexpr std::array kAlwaysAnswered{"attributes-charset", "attributes-natural-language", "printer-name"};
constexpr std::size_t kAnswers = 20;

// The folder of both files; libcups reads its path only once.
const fs::path& folder() {
  static const fs::path only = [] {
    std::string name = fs::temp_directory_path() / "saved-options-XXXXXX";
    require(mkdtemp(name.data()) != nullptr, "a folder is made");
    setenv("HOME", name.c_str(), 1);
    setenv("CUPS_SERVERROOT", name.c_str(), 1);
    for (const char* variable : {"LPDEST", "PRINTER"}) unsetenv(variable);
    fs::create_directory(name + "/.cups");
    std::atexit([] { fs::remove_all(folder()); });
    return fs::path(name);
  }();
  return only;
}

void write(const fs::path& file, std::string_view text) { std::ofstream(file, std::ios::binary) << text; }

// Whether libcups may read a name that no printer has as that of the default printer: unlike the program, it
// knows fewer kinds of blanks there, keeps only 255 bytes, accepts an instance after an empty name, and
// allows #.
bool mayNameNoPrinter(std::string_view input) {
  return input.size() > 255 || input.find_first_of("\v\f\0"sv) != std::string_view::npos ||
         input.find(" /") != std::string_view::npos || input.find("\t/") != std::string_view::npos ||
         input.find("\\#") != std::string_view::npos;
}

std::optional<Options> readByProgram(const Connection& connection, const std::optional<std::string>& name) {
  try {
    return findPrinter(connection, name).saved;
  } catch (const Failure&) {
    return std::nullopt;
  }
}

Options readByLibcups(const cups_dest_t& destination) {
  Options options;
  for (const auto& found : std::span(destination.options, static_cast<std::size_t>(destination.num_options)))
    if (std::ranges::none_of(kAlwaysAnswered,
                             [&](const char* attribute) { return isSameKeyword(found.name, attribute); }))
      options.push_back({found.name, found.value});
  return options;
}

}  // namespace

void examine(std::string_view input) {
  setenv("TANDEM_TRIM_TIMEOUT", "1", 1);
  const auto end = input.find(kBetweenFiles);
  write(folder() / "lpoptions", input.substr(0, end));
  write(folder() / ".cups/lpoptions",
        end == std::string_view::npos ? "" : input.substr(end + kBetweenFiles.size()));
  const Connection connection(serveAnswers(std::deque<std::string>(kAnswers, std::string(kPrinter))));
  const auto compare = [&](const std::optional<std::string>& name, const char* printer,
                           const char* instance) {
    const auto found = readByProgram(connection, name);
    const auto expected = connection.destination(printer, instance);
    require(found.has_value() == (expected != nullptr), "both find the printer");
    require(!found || *found == readByLibcups(*expected), "both read the same options");
  };
  compare("Morva", "Morva", nullptr);
  compare("Morva/draft", "Morva", "draft");
  if (!mayNameNoPrinter(input)) compare(std::nullopt, nullptr, nullptr);
}

}  // namespace tandemtrim::fuzz
