#include <stdexcept>

#include "tests/view/view_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::IsEmpty;

// The calls to the 21 dependent controls, in order.
Log greying(bool live) {
  const std::string enabled = live ? " enabled=true" : " enabled=false";
  const std::string color = live ? " color=black" : " color=gray";
  Log lines;
  const auto note = [&](const std::string& name, const std::string& state) { lines.push_back(name + state); };
  const auto noteOfEachSide = [&](const std::string& prefix, const std::string& state) {
    for (const auto& side : conformance::kSceneSides) note(prefix + side.name, state);
  };
  note("directionPopUp", enabled);
  note("positionPopUp", enabled);
  noteOfEachSide("textBoxMargin", enabled);
  noteOfEachSide("stepperMargin", enabled);
  note("defaultButton", enabled);
  note("labelDirection", color);
  note("labelPosition", color);
  noteOfEachSide("labelMargin", color);
  noteOfEachSide("labelMarginLimit", color);
  return lines;
}

class Greying : public ViewTest {};

TEST_F(Greying, ChangesTheDependentControlsInOrderAndNeverTheCheckBox) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  const std::pair<int, bool> states[] = {{1, true}, {0, false}, {-1, false}, {2, false}};
  for (const auto& [state, live] : states) {
    log.clear();
    nib.tandemTrimValid.current = state;
    controller->TTVCGreyView();
    EXPECT_EQ(log, greying(live)) << state;
  }
}

TEST_F(Greying, FollowsTheCheckBoxOnItsActionWithoutStoringIt) {
  ASSERT_NO_FATAL_FAILURE(loadView());
  forget();
  nib.tandemTrimValid.current = 1;
  controller->changeTandemTrimValid(&nib.tandemTrimValid);
  EXPECT_EQ(log, greying(true));
  EXPECT_THAT(settings().log, IsEmpty());
}

TEST_F(Greying, IsLeftOutOfAnUpdateBeforeTheViewIsSetUp) {
  connectOutlets();
  controller->updateView();
  EXPECT_THAT(log, IsEmpty());
  controller->setViewIsInited(true);
  controller->updateView();
  EXPECT_EQ(log, greying(false));
}

TEST_F(Greying, IsPartOfAnUpdateButNotOfARestore) {
  scene.stored["MVTandemTrim"] = "On";
  ASSERT_NO_FATAL_FAILURE(loadView());
  log.clear();
  EXPECT_TRUE(controller->restoreNonPPDSettingsFromPrintSettings());
  EXPECT_EQ(log.size(), 11U);
  EXPECT_EQ(nib.tandemTrimValid.current, 1);
  log.clear();
  controller->updateView();
  EXPECT_EQ(log, greying(true));
}

TEST_F(Greying, RaisesBeforeItChangesAnyControlWhereOneIsMissing) {
  connectOutlets();
  controller->setLabelMarginLimitRight(nullptr);
  EXPECT_THROW(controller->TTVCGreyView(), std::invalid_argument);
  connectOutlets();
  controller->setTandemTrimValid(nullptr);
  EXPECT_THROW(controller->TTVCGreyView(), std::invalid_argument);
  EXPECT_THAT(log, IsEmpty());
}

}  // namespace
}  // namespace tandemtrim::test
