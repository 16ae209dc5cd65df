#include "host/cli/arguments/command_line_parser.hpp"

#include <array>
#include <cctype>
#include <sstream>

#include <gmock/gmock.h>

#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::ElementsAre;
using testing::HasSubstr;

CommandLine parse(const std::vector<std::string>& arguments) {
  return std::get<CommandLine>(parseCommandLine(arguments));
}

TEST(ACommandLine, IsReadAsLpReadsIt) {
  const auto line = parse({"-h", "print.example:8631", "-dMorva/draft", "-n", "3", "-t", "Annual report",
                           "-o", "landscape", "-o", "media=A4 MVTopMargin=5", "a.pdf", "-", "b.pdf"});
  EXPECT_EQ(line.server, "print.example:8631");
  EXPECT_EQ(line.printer, "Morva/draft");
  EXPECT_EQ(line.title, "Annual report");
  EXPECT_EQ(line.options,
            (Options{{"copies", "3"}, {"landscape", "true"}, {"media", "A4"}, {"MVTopMargin", "5"}}));
  EXPECT_THAT(line.files, ElementsAre("a.pdf", "-", "b.pdf"));
}

TEST(ACommandLine, LetsLaterOptionsReplaceEarlierOnes) {
  EXPECT_EQ(parse({"-n", "2", "-o", "copies=5"}).options, (Options{{"copies", "5"}}));
  EXPECT_EQ(parse({"-o", "copies=5", "-n", "2"}).options, (Options{{"copies", "2"}}));
  EXPECT_EQ(parse({"-d", "One", "-d", "Two"}).printer, "Two");
}

TEST(ACommandLine, KeepsTheInputsToThePanelInTheirOrder) {
  const auto line = parse(
      {"--set", "Top=12", "--restore-defaults", "--set", "Valid=Off", "--restore-defaults", "--set=Left="});
  EXPECT_EQ(line.inputs, (std::vector<Input>{{"Top", "12"},
                                             {"RestoreDefault", std::nullopt},
                                             {"Valid", "Off"},
                                             {"RestoreDefault", std::nullopt},
                                             {"Left", ""}}));
}

TEST(ACommandLine, TakesAFileAfterAnOptionAndAfterTwoDashes) {
  EXPECT_THAT(parse({"-o", "landscape", "a.pdf"}).files, ElementsAre("a.pdf"));
  EXPECT_THAT(parse({"--set", "Top=1", "a.pdf"}).files, ElementsAre("a.pdf"));
  EXPECT_THAT(parse({"--", "-n", "--", "--bogus"}).files, ElementsAre("-n", "--", "--bogus"));
}

TEST(ACommandLine, TakesAFileOfAnyName) {
  EXPECT_THAT(parse({"[a.pdf,b.pdf]", "{}", "%%", "\"a\"", "a=b", "", "-"}).files,
              ElementsAre("[a.pdf,b.pdf]", "{}", "%%", "\"a\"", "a=b", "", "-"));
}

TEST(ACommandLine, PrintsStandardInputIfItNamesNeitherAFileNorAnotherUse) {
  const auto filesOf = [](const std::vector<std::string>& arguments) {
    return std::get<CommandLine>(parseCommandLine(arguments, true)).files;
  };
  EXPECT_THAT(filesOf({"-d", "Morva", "--set", "Top=1"}), ElementsAre("-"));
  EXPECT_THAT(filesOf({"--wait"}), ElementsAre("-"));
  EXPECT_THAT(filesOf({"a.pdf"}), ElementsAre("a.pdf"));
  for (const char* other : {"--summary", "--json", "--save-as-default", "--reset-defaults", "--list"})
    EXPECT_TRUE(filesOf({other}).empty()) << other;
}

TEST(ACommandLine, TurnsTheSwitchesOfLpIntoOptionsOfTheJob) {
  EXPECT_EQ(
      parse({"-q", "77", "-P", "16-, 3-5,1", "-H", "hold"}).options,
      (Options{{"job-priority", "77"}, {"page-ranges", "1,3-5,16-"}, {"job-hold-until", "indefinite"}}));
  EXPECT_EQ(parse({"-q", "5", "-H", "immediate"}).options,
            (Options{{"job-priority", "100"}, {"job-hold-until", "no-hold"}}));
  for (const char* time : {"3:15", "no-hold", "indefinite", "day-time", "evening", "night", "second-shift",
                           "third-shift", "weekend"})
    EXPECT_EQ(parse({"-H", time}).options, (Options{{"job-hold-until", time}}));
  for (const auto& [option, keyword, smallest, largest] :
       {std::array{"-n", "copies", "1", "9999"}, {"-q", "job-priority", "1", "100"}}) {
    EXPECT_EQ(parse({option, smallest}).options, (Options{{keyword, smallest}}));
    EXPECT_EQ(parse({option, largest}).options, (Options{{keyword, largest}}));
  }
  EXPECT_EQ(parse({"-n", "2", "-o", "copies=5 landscape", "-P", "-4"}).options,
            (Options{{"copies", "5"}, {"landscape", "true"}, {"page-ranges", "1-4"}}));
  const auto letter = parse({"-m", "-U", "amy"}).options;
  ASSERT_EQ(letter.size(), 1U);
  EXPECT_EQ(letter[0].keyword, "notify-recipient-uri");
  EXPECT_THAT(letter[0].value, testing::MatchesRegex("mailto:amy@.+"));
}

TEST(ACommandLine, KeepsABracketedValueUnchanged) {
  EXPECT_EQ(parse({"-o", "[a,b]"}).options, (Options{{"[a,b]", "true"}}));
  EXPECT_EQ(parse({"--set", "Top=[1,2]"}).inputs, (std::vector<Input>{{"Top", "[1,2]"}}));
}

TEST(ACommandLine, HasASwitchForEachMode) {
  const auto plain = parse({});
  EXPECT_FALSE(plain.summary || plain.json || plain.force || plain.saveAsDefault || plain.withoutPanel ||
               plain.verbose);
  const auto line = parse({"--summary", "--json", "--force", "--save-as-default", "--without-panel",
                           "--verbose", "--ppd", "morva.ppd", "--plugin", "/opt/TandemTrim.bundle"});
  EXPECT_TRUE(line.summary && line.json && line.force && line.saveAsDefault && line.withoutPanel &&
              line.verbose);
  const auto asInLp = parse({"-cs", "-E", "-Uamy", "--lenient"});
  EXPECT_TRUE(asInLp.silent && asInLp.encrypted && asInLp.lenient);
  EXPECT_EQ(asInLp.user, "amy");
  EXPECT_EQ(line.ppd, "morva.ppd");
  EXPECT_EQ(line.plugin, "/opt/TandemTrim.bundle");
}

TEST(ACommandLine, ChoosesWhetherADialogIsShown) {
  EXPECT_EQ(parse({"a.pdf"}).dialog, std::nullopt);
  EXPECT_EQ(parse({"--dialog", "a.pdf"}).dialog, true);
  EXPECT_EQ(parse({"--no-dialog", "a.pdf"}).dialog, false);
}

TEST(ACommandLine, ChoosesTheDialogOfApplications) {
  EXPECT_EQ(parse({"--applications", "on"}).applications, Applications::on);
  EXPECT_EQ(parse({"--applications", "off"}).applications, Applications::off);
  EXPECT_EQ(parse({"--applications", "status"}).applications, Applications::status);
}

TEST(ACommandLine, MayResetDefaultsAtAServer) {
  EXPECT_TRUE(parse({"--reset-defaults", "-h", "far", "-d", "Morva/draft", "--verbose"}).resetDefaults);
}

TEST(HelpAndVersion, AreShownAndNothingElseIsDone) {
  const auto help = std::get<Information>(parseCommandLine({"--help"})).text;
  for (const char* option : {"-h SERVER ",
                             "-U USER ",
                             "-d PRINTER ",
                             "-n COPIES ",
                             "-t TITLE ",
                             "-o \"KEYWORD=VALUE ...\" ",
                             "-q PRIORITY ",
                             "-H WHEN ",
                             "-P PAGES ",
                             "-i JOB ",
                             "--applications on|off|status\n",
                             "--set NAME=TEXT ",
                             "--restore-defaults ",
                             "--summary ",
                             "--json ",
                             "--force ",
                             "--preset NAME ",
                             "--save-preset NAME ",
                             "--delete-preset NAME ",
                             "--save-as-default ",
                             "--reset-defaults ",
                             "--ppd FILE ",
                             "--plugin DIR ",
                             "--without-panel ",
                             "--verbose ",
                             "--version "}) {
    EXPECT_THAT(help, HasSubstr(std::string("\n  ") + option));
  }
  EXPECT_THAT(help, testing::StartsWith("Print with the panel of the printer's plug-in, from a terminal.\n"
                                        "Usage: tandem-trim "));
  EXPECT_THAT(help, HasSubstr("\n  FILE ... "));
  EXPECT_THAT(std::get<Information>(parseCommandLine({"--version"})).text,
              testing::MatchesRegex("tandem-trim [0-9.]+\n"));
}

TEST(Help, DescribesEachOptionInASentence) {
  std::istringstream help(std::get<Information>(parseCommandLine({"--help"})).text);
  std::string line;
  int sentences = 0;
  // The column where an option's description begins, after the option or on the next line.
  constexpr std::size_t kColumn = 30;
  while (std::getline(help, line)) {
    if (!line.starts_with("  ") || line.size() <= kColumn || line[kColumn - 1] != ' ') continue;
    EXPECT_TRUE(std::isupper(static_cast<unsigned char>(line[kColumn]))) << line;
    ++sentences;
  }
  EXPECT_GE(sentences, 40);
}

TEST(OptionsThatDoNotGoTogether, AreRefusedWithTheReason) {
  const auto wordsOf = [](const std::vector<std::string>& arguments) {
    return std::string(failureOf([&] { parse(arguments); }).what());
  };
  using testing::StartsWith;
  EXPECT_THAT(wordsOf({"--list", "--set", "Top=1"}), StartsWith("--list only lists the printers"));
  EXPECT_THAT(wordsOf({"--list-presets", "--set", "Top=1"}),
              StartsWith("--list-presets only lists the presets"));
  EXPECT_THAT(wordsOf({"--delete-preset", "a", "--set", "Top=1"}),
              StartsWith("--delete-preset only deletes a preset"));
  EXPECT_THAT(wordsOf({"--delete-preset", "a", "--json"}),
              StartsWith("--delete-preset only deletes a preset; leave --json out"));
  EXPECT_THAT(wordsOf({"--delete-preset", "a", "--list-presets"}),
              StartsWith("--delete-preset and --list-presets cannot be combined"));
  EXPECT_THAT(wordsOf({"--reset-defaults", "--set", "Top=1"}),
              StartsWith("--reset-defaults only removes the saved defaults"));
  EXPECT_THAT(wordsOf({"--all-gtk"}), StartsWith("--all-gtk needs --applications on"));
  EXPECT_THAT(wordsOf({"--applications", "on", "--json"}),
              StartsWith("--applications only chooses the print dialog of applications; leave --json out"));
  EXPECT_THAT(wordsOf({"--dialog", "a.pdf", "--json"}),
              StartsWith("--dialog leaves the panel to the user; leave --json out"));
  EXPECT_THAT(wordsOf({"--wait"}), StartsWith("--wait needs a job; name a file to print"));
  EXPECT_THAT(
      wordsOf({"-H", "resume"}),
      StartsWith("-H resume is for a job that was sent before; nothing was sent. Use lp -i JOB -H resume"));
  EXPECT_THAT(wordsOf({"-H", "restart"}), StartsWith("-H restart is for a job that was sent before"));
}

class AWrongCommandLine : public testing::TestWithParam<std::vector<std::string>> {};

TEST_P(AWrongCommandLine, HasItsOwnExitStatus) {
  const auto failure = failureOf([] { parse(GetParam()); });
  EXPECT_EQ(failure.exitStatus(), kWrongCommandLine) << failure.what();
}

using Arguments = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(
    CommandLine, AWrongCommandLine,
    testing::Values(
        Arguments{"--unknown"}, Arguments{"-x"}, Arguments{"-o"}, Arguments{"--reset-defaults", "a.pdf"},
        Arguments{"--list", "a.pdf"}, Arguments{"--list", "-d", "Morva"},
        Arguments{"--reset-defaults", "--save-as-default"}, Arguments{"--reset-defaults", "-n", "2"},
        Arguments{"--reset-defaults", "--set", "Top=1"}, Arguments{"-o", ""}, Arguments{"-o", "=5"},
        Arguments{"-o", "a='b"}, Arguments{"-n", "0"}, Arguments{"-n", "two"}, Arguments{"-n", "1x"},
        Arguments{"-n", "10000"}, Arguments{"-n", "99999999999"}, Arguments{"--applications", "of"},
        Arguments{"--preset", ""}, Arguments{"--save-preset", " "}, Arguments{"--delete-preset", "a\n"},
        Arguments{"-n"}, Arguments{"-q", "0"}, Arguments{"-q", "101"}, Arguments{"-H", "noon"},
        Arguments{"-H", ""}, Arguments{"--set"}, Arguments{"--set", "Top"}, Arguments{"--set", "=12"},
        Arguments{"--ppd"}, Arguments{"--plugin"}, Arguments{"-d"}, Arguments{"--summary=maybe"},
        Arguments{"--json=false"}, Arguments{"-P", "1-2-3"}, Arguments{"-P", "3-1"}, Arguments{"-P", "0"},
        Arguments{"-h", ""}, Arguments{"-h", "far:x"}, Arguments{"-h", "far:"}, Arguments{"-h", ":631"},
        Arguments{"-h", "far:0"}, Arguments{"-h", "[::1]:65536"}, Arguments{"-d", ""}, Arguments{"-d", "/x"},
        Arguments{"-P", "-"}, Arguments{"-P", "1,,2"}, Arguments{"--dialog=maybe"},
        Arguments{"--no-dialog=maybe"}));

TEST(Pages, MayBeAsManyAsAUserLikes) {
  std::string pages = "1";
  for (int page = 3; page < 20'000; page += 2) pages += ',' + std::to_string(page);
  EXPECT_THAT(parse({"-P", pages}).options, testing::ElementsAre(Option{"page-ranges", pages}));
}

TEST(AServer, MayBeNamedInEveryFormThatLibcupsReads) {
  for (const char* server : {"far", "far:631", "far:1", "far:65535", "far:631/version=1.1", "[::1]",
                             "[::1]:8631", "fe80::a", "::1", "/run/cups/cups.sock"})
    EXPECT_EQ(parse({"-h", server}).server, server);
}

TEST(AMistake, IsReportedBrieflyHoweverLongItsTextIs) {
  const std::string text(100'000, 'x');
  for (const char* option : {"-n", "-q", "-H", "-P", "--set", "-h", "-i"}) {
    const auto failure = failureOf([&] {
      parse({option, option == std::string("-h") ? "a:" + text : text});
    });
    EXPECT_EQ(failure.exitStatus(), kWrongCommandLine);
    EXPECT_LT(std::string(failure.what()).size(), 700U) << option;
  }
  EXPECT_LT(std::string(failureOf([&] { parse({"-o", "a='" + text}); }).what()).size(), 500U);
}

TEST(AMistake, IsReportedWithTheOptionItsTextAndWhatToWrite) {
  const auto mistakeIn = [](const std::string& option, const std::string& text) {
    return std::string(failureOf([&] { parse({option, text}); }).what());
  };
  const std::string seeHelp = "; tandem-trim --help lists the options";
  EXPECT_EQ(mistakeIn("-n", "two"), "-n \"two\": this is not a number from 1 to 9999" + seeHelp);
  EXPECT_EQ(mistakeIn("-q", "0"), "-q \"0\": this is not a number from 1 to 100" + seeHelp);
  EXPECT_EQ(mistakeIn("-H", "noon"),
            "-H \"noon\": this is not a time in hours and minutes (UTC), hold or immediate" + seeHelp);
  EXPECT_EQ(mistakeIn("-h", ":631"), "-h \":631\": no server is named; write host or host:port");
  EXPECT_EQ(mistakeIn("-h", "far:0"),
            "-h \"far:0\": the port is not a number from 1 to 65535; write host or host:port");
  EXPECT_EQ(mistakeIn("-P", "x"),
            "-P \"x\": \"x\" is not a page or a range of pages; write pages as 1,3-5,16-, counted from 1");
}

TEST(AListOfPages, IsRefusedWithThePartAtFault) {
  const auto mistakeIn = [](const char* pages) {
    return std::string(failureOf([&] { parse({"-P", pages}); }).what());
  };
  EXPECT_THAT(mistakeIn("1,3-1"),
              testing::StartsWith("-P \"1,3-1\": \"3-1\" is not a page or a range of pages; "));
  EXPECT_THAT(mistakeIn("1,,2"), testing::StartsWith("-P \"1,,2\": a page is missing; "));
}

struct Typed {
  std::vector<std::string> words;
  std::string option;
  std::size_t valueAt;
  bool isName;
};

class TheLastWord : public testing::TestWithParam<Typed> {};

TEST_P(TheLastWord, IsAValueOrANameOrNeither) {
  const auto& typed = GetParam();
  const auto unfinished = parseUnfinished(typed.words);
  EXPECT_EQ(unfinished.lastWord, typed.words.back());
  EXPECT_EQ(unfinished.option, typed.option);
  EXPECT_EQ(unfinished.valueAt, typed.valueAt);
  EXPECT_EQ(unfinished.isName, typed.isName);
}

INSTANTIATE_TEST_SUITE_P(
    Unfinished, TheLastWord,
    testing::Values(
        Typed{{"-d", "Mor"}, "-d", 0, false}, Typed{{"-d", ""}, "-d", 0, false},
        Typed{{"-dMor"}, "-d", 2, false}, Typed{{"-csdMor"}, "-d", 4, false},
        Typed{{"--set", "Top=1"}, "--set", 0, false}, Typed{{"--set=Top=1"}, "--set", 6, false},
        Typed{{"--set="}, "--set", 6, false}, Typed{{"-d", "-d"}, "-d", 0, false},
        Typed{{"-d", "Morva", "--set", "-"}, "--set", 0, false}, Typed{{"-d"}, "-d", 2, true},
        Typed{{"--set"}, "", 0, true}, Typed{{"-E"}, "", 0, true}, Typed{{"-"}, "", 0, true},
        Typed{{"--"}, "", 0, true}, Typed{{"--su"}, "", 0, true}, Typed{{"--", "--su"}, "", 0, false},
        Typed{{"--", "-d", "Mor"}, "", 0, false}, Typed{{"-d", "--", "--su"}, "", 0, true},
        Typed{{""}, "", 0, false}, Typed{{"a.p"}, "", 0, false}, Typed{{"--bogus", "a.p"}, "", 0, false},
        Typed{{"--bogus", "-d", "M"}, "-d", 0, false}, Typed{{"--help", "-d", "M"}, "-d", 0, false},
        Typed{{"-n", "none", "-d", "M"}, "-d", 0, false}, Typed{{"-t", "x", "--json=x"}, "", 0, false},
        Typed{{"--bogus", "--json=x"}, "", 0, false}));

TEST(AnUnfinishedCommandLine, SaysWhichPanelIsMeant) {
  const auto line = parseUnfinished({"-hfar:8631", "-E", "-Uamy", "-d", "One", "-dTwo/draft", "--ppd=a.ppd",
                                     "--plugin", "/opt", "--set", "To"})
                        .line;
  EXPECT_EQ(line.server, "far:8631");
  EXPECT_TRUE(line.encrypted);
  EXPECT_EQ(line.user, "amy");
  EXPECT_EQ(line.printer, "Two/draft");
  EXPECT_EQ(line.ppd, "a.ppd");
  EXPECT_EQ(line.plugin, "/opt");
  EXPECT_TRUE(parseUnfinished({}).option.empty());
  EXPECT_FALSE(parseUnfinished({}).isName);
}

}  // namespace
}  // namespace tandemtrim::host
