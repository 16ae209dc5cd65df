#include "host/job/options.hpp"

#include <array>
#include <fstream>
#include <new>

#include <gmock/gmock.h>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::HasSubstr;
using testing::UnorderedElementsAreArray;

struct Reading {
  std::string text;
  Options options;
};

class AnOptionText : public testing::TestWithParam<Reading> {};

TEST_P(AnOptionText, IsReadAsLpReadsIt) {
  EXPECT_THAT(parseOptions(GetParam().text), UnorderedElementsAreArray(GetParam().options));
}

INSTANTIATE_TEST_SUITE_P(
    Options, AnOptionText,
    testing::Values(Reading{"MVTopMargin=5", {{"MVTopMargin", "5"}}},
                    Reading{"landscape", {{"landscape", "true"}}},
                    Reading{"nocollate", {{"collate", "false"}}},
                    Reading{"a=1 b=2  c", {{"a", "1"}, {"b", "2"}, {"c", "true"}}},
                    Reading{" a='two words'", {{"a", "two words"}}}, Reading{"a=\"it's\"", {{"a", "it's"}}},
                    Reading{"a=", {{"a", ""}}}, Reading{"a =5", {{"a", "5"}}}, Reading{"no=5", {{"no", "5"}}},
                    Reading{"^a=^=5", {{"^a", "^=5"}}}, Reading{"a=b\\ c", {{"a", "b c"}}},
                    Reading{"page-ranges=1-4,7", {{"page-ranges", "1-4,7"}}},
                    Reading{"a={b=1 c=2}", {{"a", "{b=1 c=2}"}}},
                    Reading{"a={b={c=1} d=2}", {{"a", "{b={c=1} d=2}"}}},
                    Reading{"{a=1 b=2}", {{"a", "1"}, {"b", "2"}}}, Reading{"a=1 A=2", {{"a", "2"}}}));

class AMalformedOptionText : public testing::TestWithParam<std::string> {};

TEST_P(AMalformedOptionText, IsAWrongCommandLine) {
  const auto failure = failureOf([] { parseOptions(GetParam()); });
  EXPECT_EQ(failure.exitStatus(), kWrongCommandLine);
  EXPECT_THAT(failure.what(), HasSubstr("\"" + GetParam() + "\""));
}

INSTANTIATE_TEST_SUITE_P(Options, AMalformedOptionText,
                         testing::Values("", " ", "=5", "a=1 =2", "a='b", "a=\"b c", "a={b=1", "a={b={c=1}",
                                         "a=,'b", "no", "{}", "{a=1 =2", "{a='", "a='it\\'", "a='it\\"));

TEST(AMistakeInAnOptionText, IsSaidWithWhatToWrite) {
  const std::vector<std::pair<std::string, std::string>> mistakes{{" ", "it contains no option"},
                                                                  {"=5", "a keyword is empty"},
                                                                  {"a='b", "a quote is not closed"},
                                                                  {"a={b=1", "a brace is not closed"}};
  for (const auto& [text, mistake] : mistakes) {
    EXPECT_EQ(std::string(failureOf([&text = text] { parseOptions(text); }).what()),
              "-o \"" + text + "\": " + mistake +
                  "; write keyword=value, with quotes around a value that contains blanks");
  }
}

TEST(SettingAnOption, ReplacesAnEarlierOneInAnyLetterCase) {
  Options options{{"media", "A4"}, {"copies", "2"}};
  setOption(options, {"Media", "A5"});
  setOption(options, {"sides", "one-sided"});
  EXPECT_EQ(options, (Options{{"Media", "A5"}, {"copies", "2"}, {"sides", "one-sided"}}));
}

class AnOptionAsText : public testing::TestWithParam<std::string> {};

TEST_P(AnOptionAsText, IsReadBackUnchanged) {
  const Option option{"keyword", GetParam()};
  EXPECT_EQ(parseOptions(optionText(option)), Options{option});
}

INSTANTIATE_TEST_SUITE_P(Options, AnOptionAsText,
                         testing::Values("5", "", "two words", "it's", "say \"hi\"", "back\\slash", "a,b",
                                         "{brace}", "=", "line\nbreak", "true", "\xC3\xA4", "$HOME `x`"));

TEST(AnOptionText, IsQuotedOnlyWhereNecessary) {
  EXPECT_EQ(optionText({"MVTopMargin", "5"}), "MVTopMargin=5");
  EXPECT_EQ(optionText({"a", "b c"}), "a=\"b c\"");
}

TEST(AShellWord, IsOneWordForAShell) {
  EXPECT_EQ(shellWord("MVTopMargin=5"), "MVTopMargin=5");
  EXPECT_EQ(shellWord("a=\"b c\""), "'a=\"b c\"'");
  EXPECT_EQ(shellWord("it's $HOME"), "'it'\\''s $HOME'");
  EXPECT_EQ(shellWord(""), "''");
  EXPECT_EQ(shellWord("Größe ok"), "'Größe ok'");
  for (const char mark : std::string("^!~#*?[]{}()<>|&;`$\"\\")) {
    const std::string word{'a', mark};
    EXPECT_EQ(shellWord(word), "'" + word + "'");
  }
}

TEST(AShellWord, EscapesCharactersThatControlATerminal) {
  EXPECT_EQ(shellWord("it's \\ \x1B[31m\n1\x7F\u009B\u202E\xE9."),
            "$'it\\'s \\\\ \\033[31m\\0121\\177\\302\\233\\342\\200\\256\\351.'");
}

TEST(AValueThatCupsWouldLose, IsRefusedByItsKeywordWithTheReason) {
  const std::vector<std::pair<std::string, std::string>> reasons{
      {"{a=1}", "begins with a brace, so CUPS would read it as a collection of options"},
      {"one\rtwo", "contains a carriage return, where CUPS would cut it off"},
      {std::string(32768, 'x'), "is 32768 bytes long, and CUPS accepts 32767 at most"}};
  for (const auto& [value, reason] : reasons) {
    const auto failure = failureOf([&, &text = value] {
      refuseLossyValues({{"fine", "1"}, {"note", text}});
    });
    EXPECT_EQ(failure.exitStatus(), kFailed);
    EXPECT_EQ(failure.what(),
              "the value of note " + reason + "; nothing was sent. Give another value with -o note=...");
  }
}

TEST(AValueThatCupsCarries, IsNotRefused) {
  EXPECT_NO_THROW(
      refuseLossyValues({{"a", "x{y}"}, {"b", std::string(32767, 'x')}, {"c", "one\ntwo"}, {"d", ""}}));
}

TEST(ATitle, ThatCupsWouldLoseIsRefused) {
  const std::vector<std::pair<std::string, std::string>> faults{
      {"one\ntwo", "contains a control character"},
      {"unit\x1F", "contains a control character"},
      {"delete\x7F", "contains a control character"},
      {std::string(256, 'x'), "is longer than 255 bytes"}};
  for (const auto& [title, fault] : faults) {
    const auto failure = failureOf([&text = title] { refuseLossyTitle(text); });
    EXPECT_EQ(failure.what(),
              "the title " + fault +
                  ", and CUPS would print \"Untitled\" instead; nothing was sent. Give another with -t");
    EXPECT_EQ(test::inADialog(failure.fact()),
              "the job's title contains a control character, or is longer than 255 bytes");
  }
  for (const std::string& title : {std::string("~ \xC3\xA9"), std::string(255, 'x')})
    EXPECT_NO_THROW(refuseLossyTitle(title)) << title;
}

TEST(OptionsOfOneJob, AreNotKeptForLaterOnes) {
  const Options lasting{{"media", "A4"}};
  for (const char* keyword :
       {"copies", "Collate", "sheet-collate", "multiple-document-handling", "page-ranges", "page-set",
        "job-hold-until", "job-name", "COPIES", "notify-events"})
    EXPECT_EQ(withoutThoseOfOneJob({{"media", "A4"}, {keyword, "1"}}), lasting) << keyword;
}

TEST(AnOptionList, HasTheOptionsThatItIsMadeFrom) {
  const OptionList list({{"b", "2"}, {"a", "1"}});
  EXPECT_EQ(list.count(), 2);
  EXPECT_STREQ(cupsGetOption("a", list.count(), list.get()), "1");
  EXPECT_STREQ(cupsGetOption("b", list.count(), list.get()), "2");
}

// AddressSanitizer ends a program that runs out of memory, and has its own heap.
#ifndef TANDEM_TRIM_SANITIZED

constexpr std::size_t kMuch = 64 << 20;  // bytes; more than any free space of the heap

// While it exists, the process can get only so many bytes more of memory.
class LittleMemory {
 public:
  explicit LittleMemory(std::size_t bytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    getrlimit(RLIMIT_AS, &limit_);
    const struct rlimit little {
      pages* static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + bytes, limit_.rlim_max
    };
    setrlimit(RLIMIT_AS, &little);
  }
  LittleMemory(const LittleMemory&) = delete;
  LittleMemory& operator=(const LittleMemory&) = delete;
  ~LittleMemory() { setrlimit(RLIMIT_AS, &limit_); }

 private:
  struct rlimit limit_ {};
};

// While it exists, there is no memory at all.
class NoMemory {
 public:
  NoMemory() {
    for (std::size_t size = kMuch; size >= sizeof(Taken); size /= 2) {
      while (void* const place = std::malloc(size)) last_ = new (place) Taken{last_};
    }
  }
  NoMemory(const NoMemory&) = delete;
  NoMemory& operator=(const NoMemory&) = delete;
  ~NoMemory() {
    while (last_ != nullptr) std::free(std::exchange(last_, last_->before));
  }

 private:
  struct Taken {
    Taken* before;
  };

  LittleMemory none_{0};
  Taken* last_ = nullptr;
};

template <class Memory, class Call>
bool runsOut(const Call& call, auto... room) {
  const Memory memory(room...);
  try {
    call();
    return false;
  } catch (const std::bad_alloc&) {
    return true;
  }
}

TEST(Options, AreNotReadInPartWhenMemoryRunsOut) {
  const auto text = "a=1 b=" + std::string(kMuch, 'x');
  const auto read = [&] { readOptions(text); };
  EXPECT_TRUE(runsOut<LittleMemory>(read, kMuch / 2)) << "nothing is read";
  EXPECT_TRUE(runsOut<LittleMemory>(read, kMuch * 3 / 2)) << "an option without a value is read";
}

TEST(AnOptionList, IsNotMadeInPartWhenMemoryRunsOut) {
  const Options small{{"a", "1"}};
  const Options longKeyword{{"a", "1"}, {std::string(kMuch, 'x'), "1"}};
  const Options longValue{{"a", "1"}, {"b", std::string(kMuch, 'x')}};
  EXPECT_TRUE(runsOut<NoMemory>([&] { const OptionList list(small); }));
  EXPECT_TRUE(runsOut<LittleMemory>([&] { const OptionList list(longKeyword); }, kMuch / 2));
  EXPECT_TRUE(runsOut<LittleMemory>([&] { const OptionList list(longValue); }, kMuch / 2));
}

TEST(Options, GiveTheirMemoryBack) {
  const auto use = [](int number) {
    const auto value = std::string(1000, 'x') + std::to_string(number);
    EXPECT_EQ(OptionList(readOptions("a=" + value)).count(), 1);
  };
  use(0);
  const auto before = mallinfo2().uordblks;
  for (int number = 1; number <= 1000; ++number) use(number);
  EXPECT_LT(mallinfo2().uordblks, before + 100'000);
}

#endif

}  // namespace
}  // namespace tandemtrim::host
