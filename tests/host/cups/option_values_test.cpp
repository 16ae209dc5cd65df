#include "host/cups/option_values.hpp"

#include <gmock/gmock.h>

#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::AllOf;
using testing::HasSubstr;

struct Translation {
  Option given;
  const char* sent;
};

class AnOption : public testing::TestWithParam<Translation> {};

TEST_P(AnOption, IsSentInTheFormThatLibcupsEncodes) {
  const auto& [given, sent] = GetParam();
  EXPECT_EQ(encodable({given}), (Options{{given.keyword, sent}}));
}

INSTANTIATE_TEST_SUITE_P(Keywords, AnOption,
                         testing::Values(Translation{{"orientation-requested", "landscape"}, "4"},
                                         Translation{{"orientation-requested", "4"}, "4"},
                                         Translation{{"print-quality", "high"}, "5"},
                                         Translation{{"finishings", "staple"}, "4"},
                                         Translation{{"finishings", "1"}, "1"},
                                         Translation{{"finishings", "staple,punch"}, "4,5"},
                                         Translation{{"finishings", "4,punch"}, "4,5"}));
INSTANTIATE_TEST_SUITE_P(
    Others, AnOption,
    testing::Values(Translation{{"copies", "02"}, "02"}, Translation{{"job-priority", "100"}, "100"},
                    Translation{{"job-priority", "1"}, "1"}, Translation{{"number-up", "1"}, "1"},
                    Translation{{"copies", "2147483647"}, "2147483647"}, Translation{{"scaling", "80"}, "80"},
                    Translation{{"scaling", "0"}, "0"}, Translation{{"page-ranges", "1-4,7,9-"}, "1-4,7,9-"},
                    Translation{{"printer-resolution", "600dpi"}, "600dpi"},
                    Translation{{"printer-resolution", "600x300dpi"}, "600x300dpi"},
                    Translation{{"printer-resolution", "1x1dpi"}, "1x1dpi"},
                    Translation{{"printer-resolution", "240dpc"}, "240dpc"},
                    Translation{{"printer-resolution", "240dpcm"}, "240dpcm"},
                    Translation{{"collate", "True"}, "True"}, Translation{{"landscape", "false"}, "false"},
                    Translation{{"landscape", "on"}, "on"}, Translation{{"landscape", "OFF"}, "OFF"},
                    Translation{{"landscape", "yes"}, "yes"}, Translation{{"landscape", "no"}, "no"},
                    Translation{{"sides", "two-sided-long-edge"}, "two-sided-long-edge"},
                    Translation{{"MVTopMargin", "5"}, "5"}, Translation{{"x-note", "1,b"}, "1,b"},
                    Translation{{"x-empty", ""}, ""}));

class AnOptionWithAWrongValue : public testing::TestWithParam<Option> {};

TEST_P(AnOptionWithAWrongValue, IsRefused) {
  const auto& option = GetParam();
  EXPECT_THAT(failureOf([&] {
                encodable({{"x-other", "1"}, option});
              }).what(),
              AllOf(HasSubstr(option.keyword + " is \"" + option.value + "\""), HasSubstr("nothing was sent"),
                    HasSubstr("-o " + option.keyword + "=")));
}

INSTANTIATE_TEST_SUITE_P(
    Options, AnOptionWithAWrongValue,
    testing::Values(Option{"orientation-requested", "sideways"}, Option{"orientation-requested", "0"},
                    Option{"finishings", "staple,glue-all"}, Option{"finishings", "staple,"},
                    Option{"copies", "0"}, Option{"copies", "2,3"}, Option{"scaling", "99999999999"},
                    Option{"scaling", ""}, Option{"job-priority", "200"}, Option{"job-priority", "101"},
                    Option{"job-priority", "0"}, Option{"number-up", "0"}, Option{"job-priority", "abc"},
                    Option{"job-priority", "5x"}, Option{"job-priority", ""}, Option{"landscape", "perhaps"},
                    Option{"page-ranges", "4-1"}, Option{"page-ranges", "one"}, Option{"page-ranges", "2- 4"},
                    Option{"page-ranges", "1-2,"}, Option{"page-ranges", "-"},
                    Option{"printer-resolution", "banana"}, Option{"printer-resolution", "600"},
                    Option{"printer-resolution", "600xdpi"}, Option{"printer-resolution", "0dpi"},
                    Option{"printer-resolution", "600x0dpi"}, Option{"printer-resolution", "0x600dpi"},
                    Option{"printer-resolution", "600dps"}, Option{"finishings", "glue-all,staple"}));

TEST(AWrongValue, IsRefusedWithWhatTheOptionTakes) {
  const std::vector<std::pair<Option, std::string>> expected{
      {{"job-priority", "200"}, "a number from 1 to 100"},
      {{"copies", "0"}, "a number from 1 up"},
      {{"scaling", "abc"}, "a number"},
      {{"finishings", "glue-all"}, "one of the keywords or numbers that IPP has for it"},
      {{"landscape", "perhaps"}, "true or false"},
      {{"page-ranges", "one"}, "a range of numbers, such as 2-4"},
      {{"printer-resolution", "banana"}, "a resolution, such as 600dpi"}};
  for (const auto& [option, words] : expected) {
    const auto failure = failureOf([&wrong = option] { encodable({wrong}); });
    EXPECT_EQ(failure.what(), option.keyword + " is \"" + option.value + "\", but must be " + words +
                                  "; nothing was sent. Give another value with -o " + option.keyword +
                                  "=...");
    EXPECT_EQ(test::inADialog(failure.fact()),
              "the value of " + option.keyword + " cannot be sent: " + option.value);
  }
}

}  // namespace
}  // namespace tandemtrim::host
