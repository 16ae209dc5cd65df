#include "tests/conformance/conformance_test.hpp"

namespace tandemtrim::conformance {
namespace {

constexpr std::size_t kMegabyte = 1 << 20;

class HugeText : public Conformance {};

TEST_F(HugeText, ThatIsPastedIsCorrectedLikeAShortOne) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  const std::pair<std::string, const char*> pastes[] = {{std::string(kMegabyte, '9'), "50"},
                                                        {std::string(kMegabyte, '0'), "0"},
                                                        {"12" + std::string(kMegabyte, 'x'), "12"},
                                                        {std::string(kMegabyte, ' '), "0"}};
  for (const auto& [pasted, left] : pastes) {
    panel->replaceText("textBoxMarginTop", pasted);
    EXPECT_EQ(text("textBoxMarginTop"), left);
    EXPECT_EQ(text("stepperMarginTop"), left);
  }
}

TEST_F(HugeText, ThatIsStoredIsSummarisedAndSavedUnchangedAndShownUpToTheLimitOfABox) {
  const std::string huge(kMegabyte, '8');
  const auto shown = huge.substr(0, longestText());
  scene.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", huge}, {"MVImageDirectionPriority", huge}};
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_EQ(text("textBoxMarginTop"), shown);
  EXPECT_EQ(panel->look("directionPopUp").chosen, std::nullopt);
  EXPECT_EQ(panel->summaryInfo().rows.at("Above"), huge);
  EXPECT_EQ(panel->summaryInfo().rows.at("Which Way"), huge);
  panel->restore();
  panel->save();
  EXPECT_EQ(dialog->stored("MVTopMargin"), huge);
  panel->replaceText("textBoxMarginTop", "3");
  panel->save();
  EXPECT_EQ(dialog->stored("MVTopMargin"), "3");
}

}  // namespace
}  // namespace tandemtrim::conformance
