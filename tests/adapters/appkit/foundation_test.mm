#include "adapters/appkit/foundation/foundation.hpp"

#include <gmock/gmock.h>

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
  for (const bool flag : {true, false})
    EXPECT_EQ(*objectOf([NSNumber numberWithBool:flag])->as<bool>(), flag);
  EXPECT_EQ(*objectOf([NSNumber numberWithChar:1])->as<std::int64_t>(), 1);
  EXPECT_EQ(objectOf(@[ @1, @2 ])->as<Array>()->size(), 2U);
  EXPECT_EQ(find(*objectOf(@{@"key" : @2})->as<Dictionary>(), "key")->integerValue(), 2);
  const auto data = objectOf([NSData dataWithBytes:"ab" length:2]);
  EXPECT_EQ(data->as<Data>()->bytes, (std::vector{std::byte{'a'}, std::byte{'b'}}));
  NSDate* const date = [NSDate dateWithTimeIntervalSinceReferenceDate:7];
  EXPECT_EQ(objectOf(date)->as<Date>()->secondsSince2001, 7);
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

}  // namespace
}  // namespace tandemtrim::platform::appkit
