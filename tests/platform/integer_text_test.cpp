#include "platform/integer_text.hpp"

#include <limits>
#include <string>

#include <gmock/gmock.h>

namespace tandemtrim::platform {
namespace {

constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
constexpr auto kSmallest = std::numeric_limits<std::int64_t>::min();

struct Reading {
  std::string text;
  std::int64_t value;
};

void expectEach(std::initializer_list<Reading> readings) {
  for (const auto& [text, value] : readings)
    EXPECT_EQ(integerValue(text), value) << "text: \"" << text << '"';
}

TEST(IntegerText, ReadsDigitsUpToTheFirstOtherCharacter) {
  expectEach({{"12", 12}, {"007", 7}, {"12abc", 12}, {"12.9", 12}, {"1 2", 1}, {"0x10", 0}, {"3,5", 3}});
}

TEST(IntegerText, SkipsLeadingWhiteSpaceOfEveryKind) {
  expectEach({{" \t\n\v\f\r12", 12}, {"  -7 ", -7}, {" \n+4", 4}});
}

TEST(IntegerText, TakesOneSignRightBeforeTheDigits) {
  expectEach({{"-5", -5}, {"+5", 5}, {"- 5", 0}, {"+ 5", 0}, {"+-5", 0}, {"-+5", 0}, {"--5", 0}, {"++5", 0}});
}

TEST(IntegerText, IsZeroForATextWithoutANumber) {
  expectEach({{"", 0},
              {" \t ", 0},
              {"abc", 0},
              {"-", 0},
              {"+", 0},
              {"inf", 0},
              {"\xD9\xA1", 0},
              {std::string("\0"
                           "1",
                           2),
               0}});
}

TEST(IntegerText, IsClampedTo64Bits) {
  const std::string nines(20, '9');
  expectEach({{nines, kLargest},
              {"+" + nines, kLargest},
              {"-" + nines, kSmallest},
              {" -" + nines + "x", kSmallest},
              {"9223372036854775807", kLargest},
              {"9223372036854775808", kLargest},
              {"-9223372036854775808", kSmallest},
              {"-9223372036854775809", kSmallest}});
}

}  // namespace
}  // namespace tandemtrim::platform
