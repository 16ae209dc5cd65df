#include "host/plain_text.hpp"

#include <gtest/gtest.h>

namespace tandemtrim::host {
namespace {

TEST(PlainText, KeepsTextInAnyLanguage) {
  for (const std::string text : {"", "12", "Größe 日本 قص 🖨", "%s%n $(reboot) \\ \"'",
                                 "\u00A0\u200F\u2027\u2030\u2044\u2070"})
    EXPECT_EQ(plainText(text), text);
}

TEST(PlainText, HasNoControlCharacterLineEndOrDirectionMark) {
  for (const std::string mark : {"\x1B", "\n", "\t", "\x7F", "\u0080", "\u009B", "\u2028", "\u2029", "\u202A",
                                 "\u202E", "\u2066", "\u2069"})
    EXPECT_EQ(plainText("a" + mark + "b"), "a\uFFFDb");
  EXPECT_EQ(plainText(std::string_view("a\0b", 3)), "a\uFFFDb");
}

TEST(PlainText, ReplacesEachByteThatIsNotUtf8) {
  EXPECT_EQ(plainText("5\xE9"), "5\uFFFD");
  EXPECT_EQ(plainText("\xE2\x82"), "\uFFFD\uFFFD");
  EXPECT_EQ(plainText("\xED\xA0\x80x"), "\uFFFD\uFFFD\uFFFDx");
}

TEST(AShortText, IsTheBeginningOfALongOneInWholeCharacters) {
  EXPECT_EQ(shortText(std::string(200, '5')), std::string(200, '5'));
  EXPECT_EQ(shortText(std::string(1 << 20, '5')), std::string(200, '5') + "...");
  EXPECT_EQ(shortText(std::string(199, '5') + "日本"), std::string(199, '5') + "日...");
}

}  // namespace
}  // namespace tandemtrim::host
