#include <algorithm>
#include <map>

#include <gtest/gtest.h>

#include "tests/adapters/gtk/picture.hpp"
#include "tests/adapters/gtk/shown_panel.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::test {
namespace {

const auto kLabels = [] {
  std::vector<std::string> labels{"labelDirection", "labelPosition"};
  for (const auto& margin : kMarginOutlets)
    labels.insert(labels.end(), {std::string(margin.label), std::string(margin.limitLabel)});
  return labels;
}();

// The background is the most frequent colour, the text the one with most contrast to it.
double contrastOfText(const Picture& picture) {
  const auto pixels = picture.pixels();
  std::map<std::array<std::uint8_t, 3>, int> counts;
  for (const auto& pixel : pixels) ++counts[{pixel.red, pixel.green, pixel.blue}];
  const auto& [red, green, blue] =
      std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; })->first;
  const Colour background{red, green, blue};
  double best = 1;
  for (const auto& pixel : pixels) best = std::max(best, contrast(pixel, background));
  return best;
}

class LabelColours : public testing::TestWithParam<bool> {
 protected:
  static void expectContrast(const std::string& valid, double least, double most) {
    ShownPanel shown({.dark = GetParam(), .stored = {{"MVTandemTrim", valid}}});
    shown.user().awaitFrame();
    for (const auto& label : kLabels) {
      const double found = contrastOfText(Picture(shown.widget(label)));
      EXPECT_GE(found, least) << label;
      EXPECT_LT(found, most) << label;
    }
  }
};

TEST_P(LabelColours, AreEasyToReadWhileTheFunctionIsOn) { expectContrast("On", 4.5, 22); }

TEST_P(LabelColours, AreDimmedButReadableWhileItIsOff) { expectContrast("Off", 3, 9); }

INSTANTIATE_TEST_SUITE_P(LightAndDark, LabelColours, testing::Bool(),
                         [](const auto& dark) { return std::string(dark.param ? "Dark" : "Light"); });

}  // namespace
}  // namespace tandemtrim::test
