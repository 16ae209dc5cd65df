#include "adapters/gtk/controls/access_key.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::platform::gtk {
namespace {

struct Marked {
  const char* title;
  char32_t letter;
  const char* shown;
};

class ATitle : public testing::TestWithParam<Marked> {};

TEST_P(ATitle, HasItsAccessLetterMarkedAtTheStartOfAWordIfPossible) {
  const auto& [title, letter, shown] = GetParam();
  EXPECT_EQ(marked(title, letter), shown);
}

INSTANTIATE_TEST_SUITE_P(
    ThatBeginsAWordWithIt, ATitle,
    testing::Values(Marked{"To top", U't', "_To top"}, Marked{"Top Margin", U't', "_Top Margin"},
                    Marked{"Top Margin", U'M', "Top _Margin"}, Marked{"atop the top", U't', "atop _the top"},
                    Marked{"4to 1t to", U't', "4to 1t _to"}, Marked{"Über", U'ü', "_Über"}));
INSTANTIATE_TEST_SUITE_P(ThatHasItInsideWords, ATitle,
                         testing::Values(Marked{"Stop", U't', "S_top"}, Marked{"At it", U't', "A_t it"}));
INSTANTIATE_TEST_SUITE_P(ThatLacksIt, ATitle,
                         testing::Values(Marked{"Top", U'x', "Top(_X)"}, Marked{"Top:", U'x', "Top(_X):"},
                                         Marked{"上余白:", U't', "上余白(_T):"}, Marked{"", U'x', "(_X)"}));
INSTANTIATE_TEST_SUITE_P(WithTheMarkItself, ATitle,
                         testing::Values(Marked{"a_b", U'a', "_a__b"}, Marked{"_top", U't', "___top"}));

}  // namespace
}  // namespace tandemtrim::platform::gtk
