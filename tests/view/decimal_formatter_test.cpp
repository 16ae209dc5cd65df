#include "view/decimal_formatter.hpp"

#include <limits>

#include <gmock/gmock.h>

namespace tandemtrim {
namespace {

using platform::Object;
using Number = std::int64_t;

constexpr auto kLargest = std::numeric_limits<Number>::max();
constexpr auto kSmallest = std::numeric_limits<Number>::min();

TEST(DecimalFormatter, WritesTheIntegerValueInPlainDigits) {
  const std::pair<Object, std::string> objects[] = {
      {Object(Number{42}), "42"},
      {Object(Number{-7}), "-7"},
      {Object(Number{0}), "0"},
      {Object(Number{1234567}), "1234567"},
      {Object(2.9), "2"},
      {Object(-2.9), "-2"},
      {Object(1e300), std::to_string(kLargest)},
      {Object(true), "1"},
      {Object(" 12mm"), "12"},
      {Object("abc"), "0"},
      {Object(kSmallest), std::to_string(kSmallest)},
  };
  for (const auto& [object, text] : objects) {
    EXPECT_EQ(MorvaTTDecimalFormatterKV2().stringForObjectValue(&object), text);
  }
}

TEST(DecimalFormatter, WritesZeroForNull) {
  EXPECT_EQ(MorvaTTDecimalFormatterKV2().stringForObjectValue(nullptr), "0");
}

TEST(DecimalFormatter, ReadsAnyTextAsAnIntegerAndReportsSuccess) {
  const std::string nines(20, '9');
  const std::pair<std::optional<std::string>, Number> texts[] = {
      {"12", 12}, {"12abc", 12}, {"3.9", 3},        {"-4", -4},   {" +5", 5},        {"abc", 0},
      {"", 0},    {"- 4", 0},    {std::nullopt, 0}, {"1,000", 1}, {nines, kLargest}, {'-' + nines, kSmallest},
  };
  for (const auto& [text, value] : texts) {
    platform::ObjectRef object;
    std::string error = "untouched";
    EXPECT_TRUE(MorvaTTDecimalFormatterKV2().getObjectValue(object, text, &error));
    ASSERT_TRUE(object);
    ASSERT_NE(object->as<Number>(), nullptr);
    EXPECT_EQ(*object->as<Number>(), value) << text.value_or("none");
    EXPECT_EQ(error, "untouched");
  }
}

TEST(DecimalFormatter, StoresANewObjectEachTime) {
  const auto before = platform::makeObject(Number{12});
  auto object = before;
  EXPECT_TRUE(MorvaTTDecimalFormatterKV2().getObjectValue(object, "12", nullptr));
  EXPECT_NE(object, before);
}

}  // namespace
}  // namespace tandemtrim
