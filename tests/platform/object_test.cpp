#include "platform/object.hpp"

#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

#include <gmock/gmock.h>

namespace tandemtrim::platform {
namespace {

constexpr auto kLargest = std::numeric_limits<std::int64_t>::max();
constexpr auto kSmallest = std::numeric_limits<std::int64_t>::min();
constexpr auto kInfinity = std::numeric_limits<double>::infinity();

Object::Value integer(std::int64_t value) { return value; }

std::vector<Object::Value> valuesThatAreNotNumbers() { return {Array{}, Dictionary{}, Data{}, Date{5}}; }

TEST(Object, KeepsTheKindThatItWasMadeWith) {
  EXPECT_EQ(*makeObject(integer(5))->as<std::int64_t>(), 5);
  EXPECT_EQ(*makeObject(5.0)->as<double>(), 5.0);
  EXPECT_EQ(*makeObject("5")->as<std::string>(), "5");
  EXPECT_TRUE(*makeObject(true)->as<bool>());
  EXPECT_EQ(makeObject(5.0)->as<std::int64_t>(), nullptr);
  EXPECT_EQ(makeObject("5")->as<double>(), nullptr);
  EXPECT_EQ(makeObject(true)->as<std::int64_t>(), nullptr);
}

TEST(Object, ReturnsANumbersIntegerValueTruncated) {
  const std::pair<Object::Value, std::int64_t> numbers[] = {{integer(-12), -12},
                                                            {2.5, 2},
                                                            {-2.5, -2},
                                                            {5.0, 5},
                                                            {0.9, 0},
                                                            {-0.9, 0},
                                                            {true, 1},
                                                            {false, 0},
                                                            {1e18, 1'000'000'000'000'000'000}};
  for (const auto& [value, expected] : numbers) EXPECT_EQ(makeObject(value)->integerValue(), expected);
}

TEST(Object, ClampsANumbersIntegerValueTo64Bits) {
  const std::pair<double, std::int64_t> numbers[] = {
      {1e300, kLargest},   {9223372036854775808.0, kLargest}, {kInfinity, kLargest},
      {-1e300, kSmallest}, {-kInfinity, kSmallest},           {-9223372036854775808.0, kSmallest},
      {std::nan(""), 0}};
  for (const auto& [number, expected] : numbers) {
    EXPECT_EQ(makeObject(number)->integerValue(), expected) << number;
  }
}

TEST(Object, ReturnsTheLeadingIntegerOfAString) {
  EXPECT_EQ(makeObject(" 12mm")->integerValue(), 12);
  EXPECT_EQ(makeObject("abc")->integerValue(), 0);
}

TEST(Object, HasNoIntegerValueUnlessItIsANumberOrAString) {
  for (const auto& value : valuesThatAreNotNumbers()) {
    EXPECT_THROW((void)makeObject(value)->integerValue(), std::invalid_argument);
  }
}

TEST(Object, ReturnsANumbersDecimalText) {
  const std::pair<Object::Value, std::string> numbers[] = {
      {integer(12), "12"}, {integer(kSmallest), "-9223372036854775808"},
      {2.5, "2.5"},        {5.0, "5"},
      {0.1, "0.1"},        {-0.25, "-0.25"},
      {true, "1"},         {false, "0"}};
  for (const auto& [value, expected] : numbers) EXPECT_EQ(makeObject(value)->stringValue(), expected);
}

TEST(Object, HasNoDecimalTextUnlessItIsANumber) {
  EXPECT_THROW((void)makeObject("12")->stringValue(), std::invalid_argument);
  for (const auto& value : valuesThatAreNotNumbers()) {
    EXPECT_THROW((void)makeObject(value)->stringValue(), std::invalid_argument);
  }
}

TEST(Object, CountsAsZeroWhereItIsNull) {
  EXPECT_EQ(integerValue(ObjectRef()), 0);
  EXPECT_EQ(integerValue(makeObject(7.5)), 7);
}

TEST(HeldBetween, ReturnsTheSameObjectWithinTheBounds) {
  const auto minimum = makeObject(integer(0));
  const auto maximum = makeObject("10");
  for (const Object::Value& value :
       {Object::Value("0"), integer(10), Object::Value(10.9), Object::Value(true)}) {
    const auto object = makeObject(value);
    EXPECT_EQ(heldBetween(object, minimum, maximum), object);
  }
}

TEST(HeldBetween, ReturnsTheBoundsObjectForAValueBeyondIt) {
  const auto minimum = makeObject(2.5);
  const auto maximum = makeObject("10");
  EXPECT_EQ(heldBetween(makeObject(integer(1)), minimum, maximum), minimum);
  EXPECT_EQ(heldBetween(makeObject(integer(11)), minimum, maximum), maximum);
}

TEST(HeldBetween, ChecksTheMinimumFirstWhereTheBoundsCross) {
  const auto minimum = makeObject(integer(10));
  const auto maximum = makeObject(integer(5));
  EXPECT_EQ(heldBetween(makeObject(integer(7)), minimum, maximum), minimum);
  EXPECT_EQ(heldBetween(makeObject(integer(12)), minimum, maximum), maximum);
}

TEST(HeldBetween, CountsAMissingBoundAsZeroAndReturnsNullForIt) {
  const auto one = makeObject(integer(1));
  EXPECT_EQ(heldBetween(makeObject(integer(-1)), ObjectRef(), one), nullptr);
  EXPECT_EQ(heldBetween(one, ObjectRef(), ObjectRef()), nullptr);
}

TEST(Find, ReturnsTheObjectUnderAKeyOrNull) {
  const auto object = makeObject("value");
  const Dictionary dictionary{{"key", object}};
  EXPECT_EQ(find(dictionary, "key"), object);
  EXPECT_EQ(find(dictionary, "Key"), nullptr);
}

TEST(RequiredText, ReturnsAStringsTextAndRefusesAnythingElseByName) {
  const auto text = makeObject("text");
  EXPECT_EQ(requiredText(text, "the label"), "text");
  for (const auto& object : {ObjectRef(), makeObject(5.0)}) {
    EXPECT_THAT([&] { (void)requiredText(object, "the label"); },
                testing::ThrowsMessage<std::invalid_argument>(testing::HasSubstr("the label")));
  }
}

TEST(RequiredDecimalText, ReturnsANumbersTextAndRefusesAnythingElse) {
  EXPECT_EQ(requiredDecimalText(makeObject(2.5), "the limit"), "2.5");
  EXPECT_THROW((void)requiredDecimalText(makeObject("2.5"), "the limit"), std::invalid_argument);
  EXPECT_THAT([] { (void)requiredDecimalText(nullptr, "the limit"); },
              testing::ThrowsMessage<std::invalid_argument>(testing::HasSubstr("the limit")));
}

}  // namespace
}  // namespace tandemtrim::platform
