#include "host/cli/arguments/uses.hpp"

#include <regex>

#include <gmock/gmock.h>

#include "host/cli/arguments/command_line_parser.hpp"
#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::EndsWith;
using testing::HasSubstr;
using Arguments = std::vector<std::string>;

// The option, with a value if it takes one.
Arguments given(const std::string& option) {
  const std::map<std::string, std::string> values{
      {"-h", "far"},
      {"-U", "amy"},
      {"-d", "Morva"},
      {"-t", "Title"},
      {"-n", "2"},
      {"-o", "x-note=1"},
      {"-q", "7"},
      {"-H", "hold"},
      {"-P", "1"},
      {"--set", "Top=1"},
      {"--ppd", "a.ppd"},
      {"-i", "12"},
      {"--preset", "A"},
      {"--save-preset", "A"},
      {"--delete-preset", "A"},
      {"--plugin", "/opt"},
      {"--applications", "on"},
  };
  const auto value = values.find(option);
  return value == values.end() ? Arguments{option} : Arguments{option, value->second};
}

// A message about one of these may say something else, such as to leave the use out, but it names the option.
const Arguments kRefusedOtherwise{"--list",         "--reset-defaults", "--list-presets", "--delete-preset",
                                  "--applications", "--all-gtk",        "--dialog",       "--no-dialog"};

// The words by which a message names the option.
std::string nameOf(const std::string& option) {
  const Arguments together{"-n, -o, -q, -H, -P or -m", "--dialog or --no-dialog",
                           "--set or --restore-defaults"};
  const auto isAmong = [&](const std::string& words) {
    return std::regex_search(words, std::regex("(^| )" + option + "(,| |$)"));
  };
  const auto found = std::ranges::find_if(together, isAmong);
  return found == together.end() ? option : *found;
}

struct UseOfOptions {
  std::string name;
  // The arguments that choose the use.
  Arguments arguments;
  // The options that are allowed beside it.
  Arguments beside;

  friend void PrintTo(const UseOfOptions& use, std::ostream* out) { *out << use.name; }
};

class AUse : public testing::TestWithParam<UseOfOptions> {};

TEST_P(AUse, RefusesEachUnrelatedOptionByName) {
  const auto& use = GetParam();
  for (const auto& option : optionNames()) {
    const bool isElsewhere = option == "--help" || option == "--version" || option == "-i";
    if (isElsewhere || option == use.name) continue;
    SCOPED_TRACE(option + " beside " + use.name +
                 " (give a new option a row in uses.cpp and list it below with each use that accepts it)");
    auto arguments = given(option);
    arguments.insert(arguments.end(), use.arguments.begin(), use.arguments.end());
    const auto parse = [&] { parseCommandLine(arguments); };
    if (std::ranges::count(use.beside, option) != 0) {
      EXPECT_NO_THROW(parse()) << option;
      continue;
    }
    const auto failure = failureOf(parse);
    EXPECT_EQ(failure.exitStatus(), kWrongCommandLine) << option;
    if (std::ranges::count(kRefusedOtherwise, option) != 0) {
      EXPECT_THAT(failure.what(), HasSubstr(option));
    } else {
      EXPECT_THAT(failure.what(), EndsWith("; leave " + nameOf(option) + " out"));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    Uses, AUse,
    testing::Values(
        UseOfOptions{"--list", {"--list"}, {"-h", "-E", "-U", "--verbose", "--plugin", "-c"}},
        UseOfOptions{"--reset-defaults", {"--reset-defaults"}, {"-h", "-E", "-U", "--verbose", "-d", "-c"}},
        UseOfOptions{"--list-presets",
                     {"--list-presets"},
                     {"-h", "-E", "-U", "--verbose", "-d", "-c", "--plugin", "--ppd", "--json"}},
        UseOfOptions{"--delete-preset",
                     {"--delete-preset", "A"},
                     {"-h", "-E", "-U", "--verbose", "-d", "-c", "--plugin", "--ppd"}},
        UseOfOptions{"--applications", {"--applications", "on"}, {"--all-gtk", "-c"}},
        UseOfOptions{"--dialog",
                     {"--dialog", "a.pdf"},
                     {"-h", "-E", "-U", "-d", "-t", "-c", "-s", "-n", "-o", "-q", "-H", "-P", "-m",
                      "--plugin", "--verbose", "--no-notification", "--preset"}}),
    [](const auto& use) {
      return use.param.name.substr(2, use.param.name.find_first_of("-0", 2) - 2) + std::to_string(use.index);
    });

TEST(AUse, RefusesAnotherUseByTheNameOfItsOption) {
  const std::vector<std::pair<Arguments, std::string>> refused{
      {{"--list", "--dialog"}, "--dialog or --no-dialog"},
      {{"--list", "--applications", "on"}, "--applications"},
      {{"--reset-defaults", "--list"}, "--list"},
      {{"--reset-defaults", "--list-presets"}, "--list-presets"},
      {{"--reset-defaults", "--delete-preset", "A"}, "--delete-preset"},
      {{"--reset-defaults", "--all-gtk"}, "--all-gtk"},
      {{"--list", "--json", "--wait", "a.pdf"}, "files, --wait, --json"}};
  for (const auto& [arguments, options] : refused) {
    const auto failure = failureOf([&given = arguments] { parseCommandLine(given); });
    EXPECT_THAT(failure.what(), EndsWith("; leave " + options + " out"));
  }
}

TEST(TheNamesOfAllOptions, HaveTheirDashes) {
  EXPECT_THAT(optionNames(), testing::IsSupersetOf({"-h", "-E", "--list", "--set", "--help"}));
}

TEST(AUse, RefusesFilesThatItWouldIgnore) {
  for (const Arguments& use : {Arguments{"--list"}, {"--reset-defaults"}, {"--applications", "off"}}) {
    auto arguments = use;
    arguments.emplace_back("a.pdf");
    const auto failure = failureOf([&] { parseCommandLine(arguments); });
    EXPECT_THAT(failure.what(), HasSubstr("leave files out"));
  }
}

TEST(TheDialogOption, NeedsAFileToPrint) {
  EXPECT_THAT(failureOf([] { parseCommandLine({"--dialog"}); }).what(), HasSubstr("name a file"));
  EXPECT_NO_THROW(parseCommandLine({"--dialog"}, true));
}

}  // namespace
}  // namespace tandemtrim::host
