#include "platform/utf8.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::platform {
namespace {

TEST(Utf8, AcceptsEveryLengthOfSequenceUpToItsBounds) {
  for (const char* text :
       {"", "abc\x7F", "\xC2\x80\xDF\xBF", "\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF",
        "\xF0\x90\x80\x80\xF3\xBF\xBF\xBF\xF4\x8F\xBF\xBF"}) {
    EXPECT_TRUE(isUtf8(text)) << text;
  }
}

TEST(Utf8, EndsBeforeTheFirstFault) {
  for (const char* fault :
       {"\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
        "\xF5\x80\x80\x80", "\xFF", "\xC3", "\xC3(", "\xE2\x82", "\xE2\x82(", "\xF0\x9F\x98("}) {
    EXPECT_EQ(utf8PrefixLength(std::string("a\xC3\xA4") + fault + "z"), 3U) << testing::PrintToString(fault);
    EXPECT_EQ(utf8PrefixLength(std::string("a\xC3\xA4") + fault), 3U) << testing::PrintToString(fault);
  }
}

TEST(Utf8, WritesEachCodePointInItsShortestForm) {
  std::string text;
  for (const char32_t point :
       {U'\x7F', U'\x80', U'\u07FF', U'\u0800', U'\uFFFF', U'\U00010000', U'\U0010FFFF'}) {
    appendUtf8(text, point);
  }
  EXPECT_EQ(text, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf8, WritesASurrogateButDoesNotAcceptIt) {
  std::string text;
  appendUtf8(text, 0xD83D);
  EXPECT_EQ(text, "\xED\xA0\xBD");
  EXPECT_FALSE(isUtf8(text));
}

}  // namespace
}  // namespace tandemtrim::platform
