#include "adapters/linux/files/strings_table.hpp"

#include <functional>

#include <gmock/gmock.h>

namespace tandemtrim::platform::linux {
namespace {

using testing::ElementsAre;
using testing::Optional;
using testing::Pair;

// The value of the only entry; nullopt for a table with a fault.
std::optional<std::string> valueIn(const std::string& literal) {
  const auto table = parseStringsTable("key = " + literal + ";");
  return table ? std::optional(table->at("key")) : std::nullopt;
}

std::size_t faultyLine(std::string_view text) {
  std::size_t line = 0;
  EXPECT_EQ(parseStringsTable(text, &line), std::nullopt) << text;
  return line;
}

// The text in UTF-16 after a byte order mark.
std::string utf16(const std::u16string& text, bool littleEndian) {
  std::string bytes = littleEndian ? "\xFF\xFE" : "\xFE\xFF";
  for (const char16_t unit : text) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += littleEndian ? std::string{low, high} : std::string{high, low};
  }
  return bytes;
}

TEST(StringsTable, ReadsEntriesBetweenBlanksAndComments) {
  const auto table = parseStringsTable(
      "/* A comment; \"with\" = \"marks\" // and ** stars **/\r\n"
      "\"Top\" = \"Oben\"; // \"Top\" = \"Over\";\n"
      "\t/**/\"Left\"/* between */=\n\"Links\" ;\"Right\"=\"Rechts\";\n"
      "// the end");
  EXPECT_THAT(table,
              Optional(ElementsAre(Pair("Left", "Links"), Pair("Right", "Rechts"), Pair("Top", "Oben"))));
}

TEST(StringsTable, IsEmptyForATextWithoutEntries) {
  for (const char* text : {"", " \n\v\f", "// only", "/* only */", "\xEF\xBB\xBF", "\xFF\xFE"}) {
    EXPECT_THAT(parseStringsTable(text), Optional(testing::IsEmpty())) << text;
  }
}

TEST(StringsTable, ReadsTextsWithoutQuotesAndInSingleQuotes) {
  EXPECT_THAT(parseStringsTable("Top_1 = a/b.c:$d-9;"), Optional(ElementsAre(Pair("Top_1", "a/b.c:$d-9"))));
  EXPECT_THAT(parseStringsTable("'single' = 'a \"quoted\" word';"),
              Optional(ElementsAre(Pair("single", "a \"quoted\" word"))));
}

// The bytes that, put in front of this text, make a table with only this key, in ascending order.
std::string bytesBefore(const std::string& text, const std::function<std::string(char)>& key) {
  std::string bytes;
  for (int number = 0; number < 256; ++number) {
    const char byte = static_cast<char>(number);
    const auto table = parseStringsTable(byte + text);
    if (table && table->size() == 1 && table->contains(key(byte))) bytes += byte;
  }
  return bytes;
}

TEST(StringsTable, HasWordsOfLettersDigitsAndAFewMarksBetweenBlanks) {
  EXPECT_EQ(bytesBefore(" = 1;", [](char byte) { return std::string(1, byte); }),
            "$-./0123456789:ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
  EXPECT_EQ(bytesBefore("a = 1;", [](char) { return "a"; }), "\t\n\v\f\r ");
}

TEST(StringsTable, UsesAKeyWithoutAValueAsItsOwnValue) {
  EXPECT_THAT(parseStringsTable("\"On\"; Off;"), Optional(ElementsAre(Pair("Off", "Off"), Pair("On", "On"))));
}

TEST(StringsTable, UsesTheLastOfEqualKeys) {
  EXPECT_THAT(parseStringsTable("a = 1; b = 2; a = 3;"),
              Optional(ElementsAre(Pair("a", "3"), Pair("b", "2"))));
}

TEST(StringsTable, KeepsTextsUnchanged) {
  EXPECT_EQ(valueIn("\"\""), "");
  EXPECT_EQ(valueIn("\"two\nlines // no comment /* either */ 100% %s = ;\""),
            "two\nlines // no comment /* either */ 100% %s = ;");
}

TEST(StringsTable, ReadsEscapes) {
  const std::pair<const char*, const char*> escapes[] = {
      {R"("\"\\\'\?")", "\"\\'?"},
      {R"("\a\b\f\n\r\t\v")", "\a\b\f\n\r\t\v"},
      {"\"a\\\nb\"", "a\nb"},
      {R"("\101\1011\18\7")",
       "AA1\x01"
       "8\a"},
      {R"("\344")", "\xC3\xA4"},
      {R"("\U263A\u263a")", "\xE2\x98\xBA\xE2\x98\xBA"},
      {R"("\U00e4bc")",
       "\xC3\xA4"
       "bc"},
      {R"("\UE4")", "\xC3\xA4"},
      {R"("\UD83D\UDE00\ud83d\ude00")", "\xF0\x9F\x98\x80\xF0\x9F\x98\x80"},
      {R"("\UD800\UDC00\UDBFF\UDFFF")", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
      {R"("\UD83D\UDE00a")", "\xF0\x9F\x98\x80\x61"},
      {R"("\UD7FF\UE000")", "\xED\x9F\xBF\xEE\x80\x80"},
  };
  for (const auto& [literal, value] : escapes) EXPECT_EQ(valueIn(literal), value) << literal;
}

TEST(StringsTable, RefusesEscapesThatEncodeNoCharacter) {
  for (const char* literal : {R"("\U")", R"("\U)", R"("\0)", R"("\UD83DDE00")", R"("\Uxyz")", R"("\U0000")",
                              R"("\0")", R"("\UD83D")", R"("\UD83Dx")", R"("\UD83D\n")", R"("\UD83D\U")",
                              R"("\UD83D\U0041")", R"("\UD83D\UDBFF")", R"("\UD83D\UE000")", R"("\UDE00")",
                              R"("\UDC00")", R"("\UDC00\UDC00")", R"("\UDFFF")", R"("\UDBFF")"}) {
    EXPECT_EQ(valueIn(literal), std::nullopt) << literal;
  }
}

TEST(StringsTable, IsReadInEveryEncodingAlike) {
  const auto expected = Optional(ElementsAre(Pair("k\xC3\xA4", "\xE2\x98\xBA\xF0\x9F\x98\x80")));
  const std::string utf8 = "\"k\xC3\xA4\" = \"\xE2\x98\xBA\xF0\x9F\x98\x80\";";
  EXPECT_THAT(parseStringsTable(utf8), expected);
  EXPECT_THAT(parseStringsTable("\xEF\xBB\xBF" + utf8), expected);
  for (const bool littleEndian : {true, false}) {
    EXPECT_THAT(parseStringsTable(utf16(u"\"k\u00E4\" = \"\u263A\U0001F600\";", littleEndian)), expected);
  }
}

TEST(StringsTable, IsReadWithTheFirstAndTheLastCharactersOnEachSideOfSurrogates) {
  const auto expected =
      Optional(ElementsAre(Pair("a", "\xED\x9F\xBF\xEE\x80\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF")));
  for (const bool littleEndian : {true, false}) {
    EXPECT_THAT(parseStringsTable(utf16(u"a = \"\uD7FF\uE000\U00010000\U0010FFFF\";", littleEndian)),
                expected);
    EXPECT_THAT(parseStringsTable(utf16(u"// \U0001F600", littleEndian)), Optional(testing::IsEmpty()));
  }
}

TEST(StringsTable, ReportsTheLineOfAnEncodingFault) {
  EXPECT_EQ(faultyLine("a = b;\n\"\xE4\" = c;"), 2U);
  EXPECT_EQ(faultyLine("a = b;\n// \xE4"), 2U);
  std::u16string halves[] = {u"a=b;\n\n\xD83D", u"a=\"\n\nx\";", u"a=b;\n\n//x"};
  halves[1][5] = 0xDE00;
  halves[2].back() = 0xD83D;
  halves[2] += u"A";
  for (const auto& text : halves) EXPECT_EQ(faultyLine(utf16(text, true)), 3U);
  EXPECT_EQ(faultyLine(utf16(u"a=b;\n", false) + "x"), 2U);
}

TEST(StringsTable, ReportsTheLineOfAFault) {
  const std::pair<const char*, std::size_t> faults[] = {
      {"a = b", 1},
      {"a = b;\nc = d\ne = f;", 3},
      {"a = b;\n\n\"c\" = \"d;\ne = f;\n", 3},
      {"a = b;\n\"c\\", 2},
      {"\"a\nb\\", 1},
      {"a = \";", 1},
      {"/*/", 1},
      {"a = b;\n/* no end\n\n", 2},
      {"a = b;\nc = /* no end", 2},
      {"a = b;\nc /* no end", 2},
      {"a = b;\nc = d /* no end", 2},
      {"a = b;\n = c;", 2},
      {"a = ;", 1},
      {"a == b;", 1},
      {";", 1},
      {"a = b;;", 1},
      {"\n{ a = b; }", 2},
      {"a = \"b\" \"c\";", 1},
      {"\xC3\xA4 = b;", 1},
  };
  for (const auto& [text, line] : faults) EXPECT_EQ(faultyLine(text), line) << text;
}

TEST(StringsTable, MayBeReadWithoutRequestingTheLine) { EXPECT_EQ(parseStringsTable("a"), std::nullopt); }

}  // namespace
}  // namespace tandemtrim::platform::linux
