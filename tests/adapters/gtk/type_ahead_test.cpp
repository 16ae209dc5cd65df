#include "adapters/gtk/controls/type_ahead.hpp"

#include <gtest/gtest.h>

namespace tandemtrim::platform::gtk {
namespace {

const std::vector<std::string> kTitles{"Left", "Letter", "Center", "Échelle"};
constexpr std::uint32_t kTogether = 200;
constexpr std::uint32_t kApart = 2000;

struct Typed {
  std::u32string letters;
  std::optional<std::size_t> from;
  std::optional<std::size_t> expected;
  std::uint32_t pause = kTogether;
};

class TypeAheadOf : public testing::TestWithParam<Typed> {};

TEST_P(TypeAheadOf, FindsTheItemThatBeginsWithTheTypedLetters) {
  TypeAhead typeAhead;
  auto current = GetParam().from;
  std::optional<std::size_t> meant;
  std::uint32_t time = kApart;
  for (const auto letter : GetParam().letters) {
    meant = typeAhead.type(letter, time += GetParam().pause, kTitles, current);
    if (meant) current = meant;
  }
  EXPECT_EQ(meant, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(All, TypeAheadOf,
                         testing::Values(Typed{U"c", 0, 2},           //
                                         Typed{U"C", {}, 2},          //
                                         Typed{U"l", {}, 0},          //
                                         Typed{U"l", 0, 1},           //
                                         Typed{U"ll", {}, 1},         //
                                         Typed{U"lll", {}, 0},        //
                                         Typed{U"let", 2, 1},         //
                                         Typed{U"le", 1, 0},          //
                                         Typed{U"\u00E9", 0, 3},      //
                                         Typed{U"x", 0, {}},          //
                                         Typed{U"lc", 0, {}},         //
                                         Typed{U"lc", 0, 2, kApart},  //
                                         Typed{U"lc", 0, {}, 1000},   //
                                         Typed{U"lc", 0, 2, 1001},    //
                                         Typed{U"LEF", 3, 0}));

TEST(TypeAhead, FindsNothingWhereThereAreNoItems) {
  EXPECT_EQ(TypeAhead().type(U'x', 0, {}, std::nullopt), std::nullopt);
}

}  // namespace
}  // namespace tandemtrim::platform::gtk
