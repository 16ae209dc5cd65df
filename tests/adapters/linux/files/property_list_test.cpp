#include "adapters/linux/files/property_list.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>

#include <gmock/gmock.h>
#include <malloc.h>
#include <sys/stat.h>

#include "platform/property_list.hpp"
#include "tests/support/comma_locale.hpp"
#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::platform {
namespace {

using test::TemporaryFolder;
using testing::IsNull;

constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
constexpr auto kSmallest = std::numeric_limits<std::int64_t>::min();

std::shared_ptr<const Dictionary> read(const std::string& bytes) {
  const TemporaryFolder folder;
  return dictionaryWithContentsOfFile(folder.write("list.plist", bytes));
}

std::string list(const std::string& root) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">)" +
         root + "</plist>\n";
}

std::string entry(const std::string& value) { return list("<dict><key>k</key>" + value + "</dict>"); }

// The object of a list with this one value; null if the list or the value cannot be read.
ObjectRef valueOf(const std::string& value) {
  const auto dictionary = read(entry(value));
  return dictionary ? find(*dictionary, "k") : nullptr;
}

template <class Kind>
std::optional<Kind> valueAs(const std::string& text) {
  const auto object = valueOf(text);
  const auto* value = object ? object->as<Kind>() : nullptr;
  return value == nullptr ? std::nullopt : std::optional(*value);
}

TEST(PropertyList, KeepsTheKindOfEachValue) {
  EXPECT_EQ(valueAs<std::string>("<string>12</string>"), "12");
  EXPECT_EQ(valueAs<std::int64_t>("<integer>12</integer>"), 12);
  EXPECT_EQ(valueAs<double>("<real>12</real>"), 12.0);
  EXPECT_EQ(valueAs<bool>("<true/>"), true);
  EXPECT_EQ(valueAs<bool>("<false/>"), false);
  EXPECT_EQ(valueAs<Data>("<data>AP8=</data>").value().bytes, (std::vector{std::byte{0}, std::byte{0xFF}}));
  EXPECT_EQ(valueAs<Date>("<date>2001-01-02T00:00:01Z</date>").value().secondsSince2001, 86401);
}

TEST(PropertyList, NestsArraysAndDictionariesInTheirOrder) {
  const auto array =
      valueAs<Array>("<array><integer>3</integer><dict><key>in</key><real>2.5</real></dict><array/></array>");
  ASSERT_TRUE(array && array->size() == 3);
  EXPECT_EQ((*array)[0]->integerValue(), 3);
  EXPECT_EQ(find(*(*array)[1]->as<Dictionary>(), "in")->stringValue(), "2.5");
  EXPECT_TRUE((*array)[2]->as<Array>()->empty());
}

TEST(PropertyList, ReadsEmptyElements) {
  for (const char* root : {"<dict/>", "<dict></dict>", "<dict />", "<dict > </dict >"}) {
    const auto dictionary = read(list(root));
    ASSERT_TRUE(dictionary) << root;
    EXPECT_TRUE(dictionary->empty()) << root;
  }
  EXPECT_EQ(valueAs<std::string>("<string/>"), "");
  EXPECT_EQ(valueAs<std::string>("<string></string>"), "");
  EXPECT_TRUE(valueAs<Data>("<data/>").value().bytes.empty());
  EXPECT_TRUE(valueAs<Dictionary>("<dict/>").value().empty());
  EXPECT_TRUE(read(list("<dict><key></key><string>v</string></dict>"))->contains(""));
}

TEST(PropertyList, ReadsIntegersOfEveryFormClampedTo64Bits) {
  const std::pair<std::string, std::int64_t> integers[] = {
      {"0", 0},
      {"-5", -5},
      {"+5", 5},
      {" \n 12\t", 12},
      {"010", 10},
      {"0x10", 16},
      {"0X1f", 31},
      {"-0xFF", -255},
      {"+0xff", 255},
      {"0x7FFFFFFFFFFFFFFF", kLargest},
      {"0x8000000000000000", kLargest},
      {"-0x8000000000000000", kSmallest},
      {"-9223372036854775807", -kLargest},
      {"9223372036854775807", kLargest},
      {"9223372036854775808", kLargest},
      {"18446744073709551615", kLargest},
      {"18446744073709551617", kLargest},
      {std::string(40, '9'), kLargest},
      {"-9223372036854775808", kSmallest},
      {"-9223372036854775809", kSmallest},
      {"-18446744073709551615", kSmallest},
      {"-" + std::string(40, '9'), kSmallest},
  };
  for (const auto& [text, value] : integers) {
    EXPECT_EQ(valueAs<std::int64_t>("<integer>" + text + "</integer>"), value) << text;
  }
}

TEST(PropertyList, ReadsRealNumbersOfEveryForm) {
  const std::pair<const char*, double> reals[] = {
      {"2.5", 2.5}, {"-2.5", -2.5}, {"+2.5", 2.5},       {" 2.5\n", 2.5},   {"5", 5.0},
      {".5", 0.5},  {"1e3", 1000},  {"-1.5E-2", -0.015}, {"inf", HUGE_VAL}, {"-infinity", -HUGE_VAL}};
  for (const auto& [text, value] : reals) {
    EXPECT_EQ(valueAs<double>("<real>" + std::string(text) + "</real>"), value) << text;
  }
  EXPECT_TRUE(std::isnan(valueAs<double>("<real>nan</real>").value()));
  EXPECT_EQ(valueOf("<real>nan</real>")->integerValue(), 0);
  EXPECT_EQ(valueOf("<real>inf</real>")->integerValue(), kLargest);
}

TEST(PropertyList, ReadsDatesBeforeAndAfterTheReferenceDate) {
  const std::pair<const char*, double> dates[] = {{"2001-01-01T00:00:00Z", 0},
                                                  {"2000-12-31T23:59:59Z", -1},
                                                  {"2000-02-29T12:30:00Z", -26479800},
                                                  {"2101-01-01T00:00:00Z", 3155673600},
                                                  {"1901-01-01T00:00:00Z", -3155760000}};
  for (const auto& [text, seconds] : dates) {
    const auto date = valueAs<Date>("<date>" + std::string(text) + "</date>");
    ASSERT_TRUE(date) << text;
    EXPECT_EQ(date->secondsSince2001, seconds) << text;
  }
}

// Expects a list with this value and an ordinary one to be read without this value.
void expectAbsent(const std::string& value) {
  const auto dictionary =
      read(list("<dict><key>bad</key>" + value + "<key>good</key><string>v</string></dict>"));
  ASSERT_THAT(dictionary, testing::NotNull()) << value;
  EXPECT_THAT(find(*dictionary, "bad"), IsNull()) << value;
  EXPECT_THAT(find(*dictionary, "good"), testing::NotNull()) << value;
}

TEST(PropertyList, LacksANumberDateOrDataThatCannotBeRead) {
  for (const char* value : {"<integer/>",
                            "<integer></integer>",
                            "<integer>-</integer>",
                            "<integer>+-5</integer>",
                            "<integer>5x</integer>",
                            "<integer>0x</integer>",
                            "<integer>0xg</integer>",
                            "<integer>0x-5</integer>",
                            "<integer>2.5</integer>",
                            "<integer>99999999999999999999x</integer>",
                            "<integer>5<string/></integer>",
                            "<real/>",
                            "<real>x</real>",
                            "<real>2,5</real>",
                            "<real>+-2</real>",
                            "<real>1e999</real>",
                            "<true>yes</true>",
                            "<false>no</false>",
                            "<data>A-</data>",
                            "<data>\xC3\xA4</data>",
                            "<date/>",
                            "<date>today</date>",
                            "<date>2001-01-01</date>",
                            "<date>2001-01-01T00:00:00</date>",
                            "<date>2001-01-01T00:00:00ZZ</date>",
                            "<date>2001-02-30T00:00:00Z</date>",
                            "<date>2001-01-01T24:00:00Z</date>",
                            "<date>2001-01-01T00:60:00Z</date>",
                            "<date>2001-01-01T00:00:60Z</date>",
                            "<date>2001-01-01 00:00:00Z</date>",
                            "<date>200x-01-01T00:00:00Z</date>",
                            "<date>99999999999-01-01T00:00:00Z</date>"}) {
    expectAbsent(value);
  }
}

TEST(PropertyList, LacksATextWithAnInvalidCharacter) {
  for (const std::string text :
       {"&unknown;", "&;",         "&",           "&amp",        "a&lt",          "&#0;",        "&#xD800;",
        "&#xDFFF;",  "&#x110000;", "&#x4000041;", "&#x4010041;", "&#4294967361;", "&#-5;",       "&#x;",
        "&#6x;",     "&#X41;",     "&41;",        "&#xg;",       "\xE4",          "\xED\xA0\x80"}) {
    expectAbsent("<string>" + text + "</string>");
  }
  expectAbsent(std::string("<string>a\0b</string>", 20));
  expectAbsent("<string><![CDATA[\xE4]]></string>");
}

TEST(PropertyList, LacksAnUnknownElement) {
  for (const char* value :
       {"<unknown/>", "<unknown>5</unknown>", "<unknown><dict/></unknown>", "<ustring>a</ustring>",
        "<String>a</String>", "<plist><dict/></plist>", "<string><string>a</string></string>",
        "<string>a<unknown/></string>", "<string><dict/></string>"}) {
    expectAbsent(value);
  }
}

TEST(PropertyList, LacksAnArrayWithAnItemThatCannotBeRead) {
  for (const char* value : {"<array><string>&#xD800;</string></array>",
                            "<array><string>a</string><unknown/></array>", "<array>text<string/></array>",
                            "<array><key>k</key></array>", "<array><array><unknown/></array></array>"}) {
    expectAbsent(value);
  }
}

TEST(PropertyList, LacksADictionaryWhoseKeysAndValuesDoNotAlternate) {
  for (const char* value : {"<dict><string>no key</string></dict>", "<dict><key>no value</key></dict>",
                            "<dict><key>k</key><key>k</key></dict>", "<dict><string/><string/></dict>",
                            "<dict><key>k</key><string/><string/></dict>", "<dict>text</dict>",
                            "<dict><![CDATA[text]]></dict>"}) {
    expectAbsent(value);
  }
}

TEST(PropertyList, LacksAKeyThatIsNotAText) {
  for (const char* key : {"&#xD800;", "\xE4", "&unknown;", "<string/>"}) {
    const auto dictionary = read(
        list("<dict><key>" + std::string(key) + "</key><string/><key>good</key><string>v</string></dict>"));
    ASSERT_THAT(dictionary, testing::NotNull()) << key;
    EXPECT_EQ(dictionary->size(), 1U) << key;
    EXPECT_TRUE(dictionary->contains("good")) << key;
  }
}

TEST(PropertyList, LacksAKeyWhoseLastValueCannotBeRead) {
  const auto dictionary = read(list("<dict><key>k</key><string>1</string><key>k</key><unknown/></dict>"));
  ASSERT_THAT(dictionary, testing::NotNull());
  EXPECT_TRUE(dictionary->empty());
}

TEST(PropertyList, ReadsDataOfEveryLength) {
  const std::pair<const char*, std::string> texts[] = {{"", ""},
                                                       {"YQ==", "a"},
                                                       {"YWI=", "ab"},
                                                       {"YWJj", "abc"},
                                                       {"YWJjZA==", "abcd"},
                                                       {" Y W\n\tJ\rj ", "abc"},
                                                       {"AP+/", std::string("\0\xFF\xBF", 3)},
                                                       {"YQ", "a"}};
  for (const auto& [text, bytes] : texts) {
    const auto data = valueAs<Data>("<data>" + std::string(text) + "</data>");
    ASSERT_TRUE(data) << text;
    std::string read;
    for (const auto byte : data->bytes) read += static_cast<char>(byte);
    EXPECT_EQ(read, bytes) << text;
  }
}

// The bytes that a list may contain where `around` puts them, in ascending order.
std::string bytesAllowed(const std::function<std::string(const std::string&)>& around) {
  const TemporaryFolder folder;
  std::string allowed;
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    const auto path = folder.write(std::to_string(byte), around(text));
    const auto dictionary = dictionaryWithContentsOfFile(path);
    if (dictionary && (dictionary->contains("k") || around("").find("<key>") == std::string::npos))
      allowed += text;
  }
  return allowed;
}

TEST(PropertyList, AllowsOnlyBlanksAroundNumbersAndElements) {
  EXPECT_EQ(bytesAllowed([](auto& text) { return entry("<integer>" + text + "5</integer>"); }),
            "\t\n\r +-0123456789");
  EXPECT_EQ(bytesAllowed([](auto& text) { return entry("<true>" + text + "</true>"); }), "\t\n\r ");
  EXPECT_EQ(bytesAllowed([](auto& text) { return entry("<array>" + text + "</array>"); }), "\t\n\r ");
  EXPECT_EQ(bytesAllowed([](auto& text) { return entry("<integer>5" + text + "</integer>"); }),
            "\t\n\r 0123456789");
  EXPECT_EQ(bytesAllowed([](auto& text) { return list("<dict" + text + "></dict>"); }), "\t\n\r ");
  EXPECT_EQ(bytesAllowed([](auto& text) { return text + list("<dict/>"); }), "\t\n\r ");
  EXPECT_EQ(bytesAllowed([](auto& text) { return list("<dict/>") + text; }), "\t\n\r ");
}

TEST(PropertyList, ReadsEntitiesAndCharacterData) {
  EXPECT_EQ(valueAs<std::string>("<string>&lt;a&gt; &amp;amp; &quot;&apos; &#228;&#x263A;&#x1F600;</string>"),
            "<a> &amp; \"' \xC3\xA4\xE2\x98\xBA\xF0\x9F\x98\x80");
  EXPECT_EQ(valueAs<std::string>("<string>&#x10FFFF;</string>"), "\U0010FFFF");
  EXPECT_EQ(valueAs<std::string>("<string>a<![CDATA[<b>&amp;</b>]]>c</string>"), "a<b>&amp;</b>c");
  EXPECT_TRUE(read(list("<dict><key>a&amp;b</key><string/></dict>"))->contains("a&b"));
}

TEST(PropertyList, IgnoresCommentsAndInstructions) {
  EXPECT_EQ(valueAs<std::string>("<!-- <array> --><string>a<!-- b -->c</string><?array <array>?>"), "ac");
  EXPECT_EQ(valueAs<std::string>("<string>a<?b?>c<!DOCTYPE d>e</string>"), "ace");
  EXPECT_EQ(valueAs<Data>("<data>AP<!-- -->8=</data>").value().bytes.size(), 2U);
  EXPECT_EQ(valueAs<std::int64_t>("<integer>1<!-- -->2</integer>"), 12);
  EXPECT_TRUE(read("\xEF\xBB\xBF" + list("<dict/>")));
  EXPECT_TRUE(read("<!-- a --> <plist><dict/></plist> <!-- b -->\n"));
}

TEST(PropertyList, KeepsBlanksOnlyInTexts) {
  const auto dictionary =
      read(list("\r\n\t<dict >\r\n\t<key> k </key>\t<string>\t</string>\r\n</dict\t>\r\n"));
  ASSERT_THAT(dictionary, testing::NotNull());
  ASSERT_EQ(dictionary->size(), 1U);
  ASSERT_THAT(find(*dictionary, " k "), testing::NotNull());
  EXPECT_EQ(*find(*dictionary, " k ")->as<std::string>(), "\t");
}

TEST(PropertyList, UsesTheLastOfEqualKeys) {
  const auto dictionary =
      read(list("<dict><key>k</key><string>1</string><key>k</key><integer>2</integer></dict>"));
  ASSERT_TRUE(dictionary);
  EXPECT_EQ(dictionary->size(), 1U);
  EXPECT_EQ(find(*dictionary, "k")->integerValue(), 2);
}

TEST(PropertyList, ReadsLargeDictionaries) {
  std::string entries;
  for (int i = 0; i < 1000; ++i) {
    entries += "<key>" + std::to_string(i) + "</key><integer>" + std::to_string(-i) + "</integer>";
  }
  const auto dictionary = read(list("<dict>" + entries + "</dict>"));
  ASSERT_TRUE(dictionary);
  EXPECT_EQ(dictionary->size(), 1000U);
  EXPECT_EQ(find(*dictionary, "999")->integerValue(), -999);
}

TEST(PropertyList, IsRefusedUnlessTheRootIsADictionary) {
  for (const char* root :
       {"<array/>", "<string>a</string>", "<integer>1</integer>", "<true/>", "<data/>", ""}) {
    EXPECT_THAT(read(list(root)), IsNull()) << root;
  }
}

TEST(PropertyList, IsRefusedWhereItIsMalformed) {
  const std::string files[] = {
      "",
      " \n",
      "text",
      "<",
      "<plist",
      "<plist>",
      "<plist/>",
      "<plist></plist>",
      "<dict/>",
      "?plist><dict/></plist>",
      "{ k = v; }",
      "{\"k\": 1}",
      // A dictionary without entries in the binary form.
      std::string("bplist00\xD0\x08\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x09",
                  42),
      "\xFF\xFE<\0p\0",
      list("<dict/>") + "garbage",
      list("<dict/>") + list("<dict/>"),
      list("<dict/>") + "<dict/>",
      list("<dict/>") + "<integer>5</integer>",
      "garbage" + list("<dict/>"),
      "<plist><plist><dict/></plist></plist>",
      "<dict><dict/></dict>",
      "<array><dict/></array>",
      list("<dict>text</dict>"),
      list("<dict><key>k</key></key></dict>"),
      list("<dict><string>no key</string></dict>"),
      list("<dict><key/><string>v</string><unknown/></dict>"),
      list("<dict>"),
      list("</dict>"),
      list("<dict></array>"),
      list("<dict></dict></dict>"),
      list("<dict><!ELEMENT a></dict>"),
      list("<dict/><!-- no end"),
      entry("<integer>5"),
      entry("<integer/>5</integer>"),
      list("<![CDATA[") + "<dict/>",
      "<![CDATA[ ]]>" + list("<dict/>"),
      list("<dict/>") + "<![CDATA[ ]]>",
      list("<dict/") + "plist",
      list("<key>k</key>"),
      list("<unknown/>"),
      entry("<>a</>"),
      entry("<string>a"),
      entry("<string>a</key>"),
      list("<dict><key>k</key><string>a</string>") + "<!DOCTYPE plist",
      "<!DOCTYPE plist [<!ENTITY e \"text\">]>" + list("<dict/>"),
      "<!DOCTYPE plist [<!ENTITY e SYSTEM "
      "\"/etc/passwd\">]><plist><dict><key>k</key><string>&e;</string></dict></plist>",
  };
  for (const auto& bytes : files) EXPECT_THAT(read(bytes), IsNull()) << bytes;
}

TEST(PropertyList, IgnoresWhatFollowsTheRoot) {
  const auto dictionary = read(list("<dict><key>k</key><string>v</string></dict><dict/><string>x</string>"));
  ASSERT_TRUE(dictionary);
  EXPECT_EQ(dictionary->size(), 1U);
}

// A value nested in `levels` elements, each with `before` in front of its content.
std::string nested(std::size_t levels, const std::string& element, const std::string& before,
                   const std::string& value = "<string>v</string>") {
  std::string text;
  for (std::size_t i = 0; i < levels; ++i) text += "<" + element + ">" + before;
  text += value;
  for (std::size_t i = 0; i < levels; ++i) text += "</" + element + ">";
  return text;
}

std::size_t depthOf(const std::shared_ptr<const Dictionary>& root) {
  std::size_t depth = 1;
  for (auto object = find(*root, "k"); object; ++depth) {
    const auto* dictionary = object->as<Dictionary>();
    object = dictionary == nullptr ? nullptr : find(*dictionary, "k");
  }
  return depth;
}

TEST(PropertyList, IsReadEightLevelsDeepAndLacksWhatNestsDeeper) {
  for (const std::size_t levels : {1U, 2U, 7U, 8U, 9U, 10U, 100U, 20000U}) {
    const auto dictionary = read(list(nested(levels, "dict", "<key>k</key>")));
    ASSERT_THAT(dictionary, testing::NotNull()) << levels;
    EXPECT_EQ(depthOf(dictionary), std::min<std::size_t>(levels + 1, 8)) << levels;
  }
  const auto* characters = "<string><![CDATA[v]]></string>";
  EXPECT_EQ(depthOf(read(list(nested(9, "dict", "<key>k</key>", characters)))), 8U);
  EXPECT_THAT(valueOf(nested(6, "array", "")), testing::NotNull());
  for (const std::size_t levels : {7U, 8U, 9U, 20000U}) expectAbsent(nested(levels, "array", ""));
}

TEST(PropertyList, IsRefusedForEndlessNesting) {
  std::string open = "<plist>";
  while (open.size() < 1000000) open += "<array>";
  EXPECT_THAT(read(open), IsNull());
}

TEST(PropertyList, IsReadUpToFourMegabytes) {
  constexpr std::size_t kLargestFile = 4194304;
  const auto bytes = list("<dict/>");
  EXPECT_TRUE(read(bytes + std::string(kLargestFile - bytes.size(), '\n')));
  EXPECT_THAT(read(bytes + std::string(kLargestFile - bytes.size() + 1, '\n')), IsNull());
}

TEST(PropertyList, OfAMegabyteOfValuesTakesLessThanSixtyTimesItsSizeInMemory) {
  std::string items;
  while (items.size() < (1U << 20U)) items += "<true/>";
  const auto before = mallinfo2().uordblks + mallinfo2().hblkhd;
  const auto dictionary = read(entry("<array>" + items + "</array>"));
  ASSERT_THAT(dictionary, testing::NotNull());
  EXPECT_EQ(find(*dictionary, "k")->as<Array>()->size(), items.size() / 7);
  EXPECT_LT(mallinfo2().uordblks + mallinfo2().hblkhd - before, 60U << 20U);
}

// The text in UTF-16 after a byte order mark.
std::string inUtf16(const std::u16string& text, bool bigEndian) {
  std::string bytes;
  for (const auto unit : u"\uFEFF" + text) {
    const char low = static_cast<char>(unit & 0xFF);
    const char high = static_cast<char>(unit >> 8);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

TEST(PropertyList, IsReadInUtf16AfterAByteOrderMark) {
  for (const bool bigEndian : {false, true}) {
    const auto dictionary =
        read(inUtf16(u"<?xml version=\"1.0\" "
                     u"encoding=\"UTF-16\"?>\n<plist><dict><key>\u00E4</key><string>\u263A\U0001F600</string>"
                     u"<key>n</key><integer>12</integer></dict></plist>",
                     bigEndian));
    ASSERT_THAT(dictionary, testing::NotNull());
    EXPECT_EQ(*find(*dictionary, "\u00E4")->as<std::string>(), "\u263A\U0001F600");
    EXPECT_EQ(find(*dictionary, "n")->integerValue(), 12);
    const std::u16string half(1, u'\xD800');
    EXPECT_THAT(
        read(inUtf16(u"<plist><dict><key>k</key><string>" + half + u"</string></dict></plist>", bigEndian)),
        IsNull());
  }
}

// An odd byte, or half of a surrogate pair, is a fault even after the list's end.
TEST(PropertyList, IsReadOnlyIfAllOfItsFileIsUtf16) {
  const TemporaryFolder folder;
  for (const bool bigEndian : {false, true}) {
    const std::u16string sound = u"<plist>\n<dict/></plist>\n";
    EXPECT_THAT(read(inUtf16(sound, bigEndian)), testing::NotNull());
    for (const auto& faulty : {inUtf16(sound, bigEndian) + '\n', inUtf16(sound + u'\xD800', bigEndian),
                               inUtf16(sound + u'\xDC00', bigEndian)}) {
      const auto path = folder.write("list.plist", faulty);
      std::string fault;
      EXPECT_THAT(linux::readPropertyList(path, fault), IsNull());
      EXPECT_EQ(fault, path + ":3: not a valid XML property list");
    }
  }
}

struct Faulty {
  std::string bytes;
  std::string fault;
};

TEST(PropertyList, SaysWhatIsWrongWithItsFile) {
  const std::string binary(
      "bplist00\xD0\x08\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x01\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x09", 42);
  const Faulty files[] = {
      {binary, ": a property list in binary form; only XML is read"},
      {"", ":1: not a valid XML property list"},
      {"<plist>\n<dict>\n</array>\n</plist>", ":3: not a valid XML property list"},
      {"<plist>\n<dict>\n", ":3: not a valid XML property list"},
      {"<plist>\n\n<dict>text</dict></plist>", ":3: not a valid XML property list"},
      {list("<array/>"), ": its root is not a dictionary"},
      {std::string(4194305, ' '), ": longer than 4194304 bytes"},
  };
  const TemporaryFolder folder;
  for (const auto& [bytes, expected] : files) {
    const auto path = folder.write("list.plist", bytes);
    std::string fault;
    EXPECT_THAT(linux::readPropertyList(path, fault), IsNull());
    EXPECT_EQ(fault, path + expected);
  }
  std::string fault;
  EXPECT_THAT(linux::readPropertyList(folder.path() / "missing", fault), IsNull());
  EXPECT_EQ(fault, (folder.path() / "missing").string() + ": cannot be read");
}

TEST(PropertyList, IsReadFromRegularFilesOnly) {
  const TemporaryFolder folder;
  const auto pipe = (folder.path() / "pipe.plist").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_THAT(dictionaryWithContentsOfFile(std::nullopt), IsNull());
  for (const auto& path : {pipe, folder.path().string(), pipe + ".missing", std::string()}) {
    EXPECT_THAT(dictionaryWithContentsOfFile(path), IsNull()) << path;
  }
}

TEST(PropertyList, SurvivesEveryTruncationAndEveryChangedByte) {
  const auto whole = entry(
      "<array><integer>-5</integer><real>2.5</real><!-- c "
      "--><data>AP8=</data><date>2001-01-01T00:00:00Z</date>"
      "<string>a&amp;<![CDATA[b]]></string><true/><dict><key>k</key><false/></dict></array>");
  ASSERT_TRUE(read(whole));
  const TemporaryFolder folder;
  // Each text gets a new file, as overwriting a file waits for the disk.
  auto readNext = [&folder, files = 0](const std::string& bytes) mutable {
    return dictionaryWithContentsOfFile(folder.write(std::to_string(++files), bytes));
  };
  const auto end = whole.find("</plist>") + 8;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    const auto truncated = readNext(whole.substr(0, i));
    EXPECT_EQ(truncated != nullptr, i >= end) << i;
    for (const char byte : {'<', '>', '/', '"', '&', '\0', 'x'}) {
      auto changed = whole;
      changed[i] = byte;
      const auto dictionary = readNext(changed);
      EXPECT_LE(dictionary ? dictionary->size() : 0, 1U) << changed;
    }
  }
}

TEST(PropertyList, LeavesNoMemoryBehind) {
  const auto readSome = [] {
    EXPECT_TRUE(read(entry("<array><string>a</string><true/><data>AP8=</data><dict/></array>")));
    EXPECT_THAT(valueOf("<string>&#xD800;</string>"), IsNull());
  };
  // The sizes of blocks vary a little, while leaks add up.
  constexpr std::size_t kRounds = 1000;
  readSome();
  const auto before = mallinfo2().uordblks;
  for (std::size_t round = 0; round < kRounds; ++round) readSome();
  EXPECT_LT(mallinfo2().uordblks, before + kRounds);
}

using PropertyListInACommaLocale = test::CommaLocaleTest;

TEST_F(PropertyListInACommaLocale, StillReadsRealNumbersWithAPoint) {
  const auto real = valueOf("<real>2.5</real>");
  ASSERT_TRUE(real);
  EXPECT_EQ(*real->as<double>(), 2.5);
  EXPECT_EQ(real->stringValue(), "2.5");
  EXPECT_THAT(valueOf("<real>2,5</real>"), IsNull());
}

TEST_F(PropertyListInACommaLocale, LeavesTheLocaleAsItIs) {
  ASSERT_TRUE(valueOf("<real>2.5</real>"));
  EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "de_DE.UTF-8");
  EXPECT_EQ(std::strtod("2,5", nullptr), 2.5);
}

}  // namespace
}  // namespace tandemtrim::platform
