#include "view/margin_entry.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::margin_entry {
namespace {

TEST(DigitString, KeepsTheAsciiDigitsInTheirOrder) {
  const std::pair<std::string, std::string_view> texts[] = {
      {"", ""},     {"12", "12"},    {"007", "007"},    {"1a2", "12"}, {"-5", "5"},    {"+5", "5"},
      {" 3 ", "3"}, {"12.5", "125"}, {"1,250", "1250"}, {"abc", ""},   {"0x1F", "01"}, {"1e3", "13"},
  };
  for (const auto& [text, digits] : texts) EXPECT_EQ(digitString(text), digits) << '"' << text << '"';
}

TEST(DigitString, RemovesDigitsOfOtherScriptsAndHalvesOfCharacters) {
  const std::pair<std::string, std::string_view> texts[] = {
      {"\uFF11\uFF12", ""}, {"\u0661\u0662", ""}, {"1\u06F52", "12"},
      {"\U0001D7CF3", "3"}, {"\xE2\x91\xA0", ""}, {"4\xFF\xC3", "4"},
  };
  for (const auto& [text, digits] : texts) EXPECT_EQ(digitString(text), digits) << text;
}

TEST(DigitString, SkipsANulByte) { EXPECT_EQ(digitString({'1', '\0', '2'}), "12"); }

TEST(DigitTest, AcceptsDigitsToTheEndAndTheEmptyText) {
  for (const char* text : {"", "0", "9", "12", "0123456789"}) EXPECT_TRUE(isDigitChar(text)) << text;
}

TEST(DigitTest, RejectsATextWithAnythingElse) {
  for (const char* text : {"a", "1a", "a1", " 1", "1 ", "-", "+1", ".", ",", "\uFF11", "\u0661", "/", ":"}) {
    EXPECT_FALSE(isDigitChar(text)) << text;
  }
}

TEST(DigitTest, AcceptsTheTenDigitsAndNoOtherByte) {
  std::string digits;
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    if (isDigitChar(text)) digits += text;
  }
  EXPECT_EQ(digits, "0123456789");
}

TEST(TicketOfAMarginBox, IsNamedByTheFourMarginNamesOnly) {
  for (const char* name : {"Top", "Bottom", "Left", "Right"}) EXPECT_EQ(ticketName(name), name);
  for (const char* name : {"", "top", "MarginTop", "Valid", "Position", "Top "}) {
    EXPECT_EQ(ticketName(name), std::nullopt) << name;
  }
}

}  // namespace
}  // namespace tandemtrim::margin_entry
