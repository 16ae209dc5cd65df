#include "adapters/appkit/foundation/foundation.hpp"

#include <gmock/gmock.h>

#include "adapters/appkit/foundation/bundle.hpp"
#include "adapters/appkit/foundation/host_callback.hpp"
#include "tests/support/comma_locale.hpp"

/// A host whose job has one value.
@interface HostOfANumber : NSObject {
  NSDictionary* settings;
}
@property(retain, nonatomic) NSDictionary* settings;
@end

@implementation HostOfANumber
@synthesize settings;
- (void)dealloc {
  [settings release];
  [super dealloc];
}
- (PMPrintSettings)printSettings {
  return reinterpret_cast<PMPrintSettings>(settings);
}
@end

namespace tandemtrim::platform::appkit {
namespace {

TEST(Text, IsUnchangedByConversion) {
  using std::string_literals::operator""s;
  for (const std::string& text : {""s, "plain"s, "\u00E9\u20AC\U0001F600"s, "a\0b"s, "%@%n"s, "\uFEFF12"s,
                                  "\uFEFF\uFEFF"s, "1\uFEFF2"s, "\uFFFE12"s}) {
    EXPECT_EQ(textOf(stringOf(text)), text);
  }
  EXPECT_EQ(textOf(nil), "");
}

// The text that remains when half of a character is deleted.
TEST(Text, IsUnchangedByConversionWithHalfASurrogatePair) {
  NSMutableString* torn = [NSMutableString stringWithString:@"3\U0001F6001\U0001F600"];
  for (NSUInteger half = 0; half < [torn length]; ++half) {
    NSMutableString* other = [NSMutableString stringWithString:torn];
    [other deleteCharactersInRange:NSMakeRange(half, 1)];
    EXPECT_TRUE([stringOf(textOf(other)) isEqualToString:other]) << half;
  }
  [torn deleteCharactersInRange:NSMakeRange(2, 2)];
  EXPECT_EQ(textOf(torn), "3\xED\xA0\xBD\U0001F600");
}

// The first and the last unit of each half, and their neighbours.
TEST(Text, JoinsTheHalvesOfASurrogatePairAndNothingElse) {
  const auto stringOfUnits = [](const std::u16string& units) {
    NSMutableString* const string = [NSMutableString string];
    for (const unichar unit : units) [string appendFormat:@"%C", unit];
    return string;
  };
  for (const auto& [units, bytes] : {std::pair<std::u16string, std::string>{{0xD800, 0xDC00}, "\U00010000"},
                                     {{0xD800, 0xDFFF}, "\U000103FF"},
                                     {{0xDBFF, 0xDC00}, "\U0010FC00"},
                                     {{0xDBFF, 0xDFFF}, "\U0010FFFF"},
                                     {{0xD7FF, 0xDC00}, "\xED\x9F\xBF\xED\xB0\x80"},
                                     {{0xDC00, 0xDC00}, "\xED\xB0\x80\xED\xB0\x80"},
                                     {{0xD800, 0xDBFF}, "\xED\xA0\x80\xED\xAF\xBF"},
                                     {{0xD800, 0xE000}, "\xED\xA0\x80\xEE\x80\x80"}}) {
    EXPECT_EQ(textOf(stringOfUnits(units)), bytes) << testing::PrintToString(units);
    EXPECT_TRUE([stringOf(bytes) isEqualToString:stringOfUnits(units)]) << testing::PrintToString(units);
  }
}

TEST(Text, HasAReplacementForEachInvalidByte) {
  for (const auto& [bytes, text] : {std::pair<std::string, std::string>{"1\xFF\xC3", "1\uFFFD\uFFFD"},
                                    {"\xED\xA0", "\uFFFD\uFFFD"},
                                    {"\xED\xA0(", "\uFFFD\uFFFD("},
                                    {"\xED\xC0\x80", "\uFFFD\uFFFD\uFFFD"}}) {
    EXPECT_EQ(textOf(stringOf(bytes)), text);
  }
}

TEST(FoundationObject, ComesBackAsTheSameObject) {
  for (id object : @[ @"text", @12, @2.5, @(true), @[ @1 ], @{@"key" : @2}, [NSData data], [NSDate date] ]) {
    EXPECT_EQ(foundationObjectOf(objectOf(object)), object);
  }
  EXPECT_EQ(objectOf(nil), nullptr);
  EXPECT_EQ(foundationObjectOf(ObjectRef()), nil);
}

TEST(FoundationObject, KeepsItsKindAndValueForTheCore) {
  EXPECT_EQ(*objectOf(@"text")->as<std::string>(), "text");
  EXPECT_EQ(*objectOf(@12)->as<std::int64_t>(), 12);
  EXPECT_EQ(*objectOf([NSNumber numberWithLongLong:LLONG_MIN])->as<std::int64_t>(), INT64_MIN);
  EXPECT_EQ(*objectOf(@2.5)->as<double>(), 2.5);
  EXPECT_EQ(*objectOf([NSNumber numberWithFloat:2.5F])->as<double>(), 2.5);
  for (const bool flag : {true, false})
    EXPECT_EQ(*objectOf([NSNumber numberWithBool:flag])->as<bool>(), flag);
  EXPECT_EQ(*objectOf([NSNumber numberWithChar:1])->as<std::int64_t>(), 1);
  EXPECT_EQ(objectOf(@[ @1, @2 ])->as<Array>()->size(), 2U);
  EXPECT_EQ(find(*objectOf(@{@"key" : @2})->as<Dictionary>(), "key")->integerValue(), 2);
  const auto data = objectOf([NSData dataWithBytes:"ab" length:2]);
  EXPECT_EQ(data->as<Data>()->bytes, (std::vector{std::byte{'a'}, std::byte{'b'}}));
  NSDate* const date = [NSDate dateWithTimeIntervalSinceReferenceDate:7];
  EXPECT_EQ(objectOf(date)->as<Date>()->secondsSince2001, 7);
  EXPECT_EQ(*objectOf([NSURL URLWithString:@"ipp://server"])->as<std::string>(), "ipp://server");
}

TEST(ObjectOfTheCore, BecomesANewObjectOfTheSameValue) {
  const auto array = makeObject(Array{makeObject(std::int64_t{7}), makeObject(std::string("seven"))});
  const auto dictionary = makeObject(Dictionary{{"array", array},
                                                {"real", makeObject(2.5)},
                                                {"flag", makeObject(true)},
                                                {"data", makeObject(Data{{std::byte{'a'}}})},
                                                {"date", makeObject(Date{7})}});
  NSDictionary* expected = @{
    @"array" : @[ @7, @"seven" ],
    @"real" : @2.5,
    @"flag" : @(true),
    @"data" : [NSData dataWithBytes:"a" length:1],
    @"date" : [NSDate dateWithTimeIntervalSinceReferenceDate:7]
  };
  EXPECT_TRUE([foundationObjectOf(dictionary) isEqual:expected]);
}

TEST(BundleOfTheCore, FindsATextInTheNamedTableOrTheDefaultOne) {
  NSString* const folder = [NSTemporaryDirectory() stringByAppendingPathComponent:@"Texts.bundle"];
  NSString* const resources = [folder stringByAppendingPathComponent:@"Resources"];
  [[NSFileManager defaultManager] createDirectoryAtPath:resources
                            withIntermediateDirectories:YES
                                             attributes:nil
                                                  error:nullptr];
  for (NSString* table in @[ @"Localizable", @"Other" ]) {
    [[NSString stringWithFormat:@"\"Key\" = \"of %@\";", table]
        writeToFile:[[resources stringByAppendingPathComponent:table]
                        stringByAppendingPathExtension:@"strings"]
         atomically:NO
           encoding:NSUTF8StringEncoding
              error:nullptr];
  }
  const auto bundle = bundleOf([NSBundle bundleWithPath:folder]);
  EXPECT_EQ(bundle->localizedStringForKey("Key", "", std::nullopt), "of Localizable");
  EXPECT_EQ(bundle->localizedStringForKey("Key", "", "Other"), "of Other");
  EXPECT_EQ(bundle->localizedStringForKey("Other", "missing", std::nullopt), "missing");
  EXPECT_EQ(bundle->pathForResource("Other", "strings"),
            textOf([resources stringByAppendingPathComponent:@"Other.strings"]));
  EXPECT_EQ(bundle->pathForResource("Other", "plist"), std::nullopt);
}

using NumberWithADecimalComma = test::CommaLocaleTest;

TEST_F(NumberWithADecimalComma, IsTheSameTextForTheCoreAsEverywhere) {
  EXPECT_EQ(objectOf(@2.5)->stringValue(), "2.5");
  EXPECT_EQ(objectOf(@1234567)->stringValue(), "1234567");
  HostOfANumber* const host = [[[HostOfANumber alloc] init] autorelease];
  const auto callback = hostCallbackOf(host);
  for (const auto& [number, text] : {std::pair{@2.5, "2.5"}, {@1234567, "1234567"}}) {
    [host setSettings:@{@"MVTopMargin" : number}];
    std::optional<std::string> value;
    EXPECT_EQ(callback->printSettings()->PMPrintSettingsGetValue("MVTopMargin", value), kNoError);
    EXPECT_EQ(value, text);
  }
}

}  // namespace
}  // namespace tandemtrim::platform::appkit
