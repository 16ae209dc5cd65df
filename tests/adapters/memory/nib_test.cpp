#include <set>
#include <stdexcept>

#include "tests/adapters/memory/memory_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::IsNull;
using testing::NotNull;

class MemoryNib : public MemoryTest {};

// An owner that records what a nib connects to it.
class Owner : public platform::NibOwner {
 public:
  [[nodiscard]] std::vector<std::string_view> outletNames() const override { return {}; }
  void setOutlet(std::string_view name, platform::NibObject* object) override {
    EXPECT_THAT(object, NotNull());
    EXPECT_TRUE(outlets.insert(name).second) << name << " is connected twice";
  }
  void performAction(std::string_view name, platform::NibObject* sender) override {
    actions.emplace_back(name, sender);
  }

  std::set<std::string_view> outlets;
  std::vector<std::pair<std::string, platform::NibObject*>> actions;
};

TEST_F(MemoryNib, IsNamedTandemTrim) {
  Owner owner;
  for (const char* name : {"", "tandemtrim", "TandemTrim.nib", "Other"}) {
    EXPECT_FALSE(platform::loadNibNamed(name, owner)) << name;
  }
  EXPECT_TRUE(owner.outlets.empty());
  EXPECT_TRUE(platform::loadNibNamed("TandemTrim", owner));
}

TEST_F(MemoryNib, ConnectsEveryOutletThatAViewControllerHas) {
  ASSERT_NO_FATAL_FAILURE(makeController());
  Owner owner;
  platform::loadNibNamed("TandemTrim", owner);
  const auto names = controller->outletNames();
  EXPECT_EQ(owner.outlets, std::set<std::string_view>(names.begin(), names.end()));
}

TEST_F(MemoryNib, LacksTheOutletsThatItsDescriptionLeavesOut) {
  description.missingOutlets = {"defaultButton", "tandemTrimView"};
  Owner owner;
  platform::loadNibNamed("TandemTrim", owner);
  EXPECT_EQ(owner.outlets.size(), 21U);
  EXPECT_FALSE(owner.outlets.contains("defaultButton"));
  EXPECT_FALSE(owner.outlets.contains("tandemTrimView"));
}

TEST_F(MemoryNib, HasThreePositionsAndTwoDirectionsUnlessItsDescriptionSaysOtherwise) {
  ASSERT_NO_FATAL_FAILURE(showOn());
  EXPECT_EQ(view->control("positionPopUp").choices.size(), 3U);
  EXPECT_EQ(view->control("directionPopUp").choices.size(), 2U);
  description.positionItems = 1;
  description.directionItems = 0;
  ASSERT_NO_FATAL_FAILURE(showOn());
  EXPECT_EQ(view->control("positionPopUp").choices.size(), 1U);
  EXPECT_EQ(view->control("positionPopUp").selected, std::nullopt);
  EXPECT_EQ(view->control("directionPopUp").choices.size(), 0U);
  description.positionItems = 4;
  ASSERT_NO_FATAL_FAILURE(makeController());
  EXPECT_THROW(loadView(), std::out_of_range);
}

TEST_F(MemoryNib, RunsTheTwoActionsOfItsOwner) {
  struct Kept : Owner {
    void setOutlet(std::string_view name, platform::NibObject* object) override {
      if (name == "tandemTrimView") panel = dynamic_cast<platform::memory::Panel*>(object);
    }
    platform::memory::Panel* panel = nullptr;
  };
  Kept owner;
  platform::loadNibNamed("TandemTrim", owner);
  EXPECT_TRUE(owner.panel->click("Valid"));
  EXPECT_TRUE(owner.panel->click("RestoreDefault"));
  ASSERT_EQ(owner.actions.size(), 2U);
  EXPECT_EQ(owner.actions[0].first, "changeTandemTrimValid:");
  EXPECT_THAT(dynamic_cast<platform::CheckBox*>(owner.actions[0].second), NotNull());
  EXPECT_EQ(owner.actions[1].first, "setDefaultValue:");
  EXPECT_THAT(dynamic_cast<platform::Button*>(owner.actions[1].second), NotNull());
}

TEST_F(MemoryNib, LivesUntilTheTicketsThatReferToItsControlsAreGone) {
  long referencesWhenReleased = 0;
  description.onRelease = [&] { referencesWhenReleased = info.use_count(); };
  ASSERT_NO_FATAL_FAILURE(makeController());
  loadView();
  EXPECT_EQ(info.use_count(), 8);
  controller.reset();
  EXPECT_EQ(referencesWhenReleased, 1);
}

TEST_F(MemoryNib, StaysUntilTheControllerIsDestroyedEvenWhenAnotherIsLoaded) {
  int released = 0;
  description.onRelease = [&] { ++released; };
  description.missingOutlets = {"tandemTrimView"};
  ASSERT_NO_FATAL_FAILURE(makeController());
  EXPECT_THAT(loadView(), IsNull());
  EXPECT_THAT(loadView(), IsNull());
  EXPECT_EQ(subscriptions(), 8U);
  EXPECT_EQ(released, 0);
  controller.reset();
  EXPECT_EQ(subscriptions(), 0U);
  EXPECT_EQ(released, 2);
}

TEST_F(MemoryNib, LeavesNoDanglingOutletWhenTheNextOneLacksIt) {
  description.missingOutlets = {"tandemTrimView"};
  ASSERT_NO_FATAL_FAILURE(makeController());
  EXPECT_THAT(loadView(), IsNull());
  description.missingOutlets = {"labelMarginTop"};
  view = dynamic_cast<platform::memory::Panel*>(loadView());
  ASSERT_THAT(view, NotNull());
  EXPECT_EQ(view->control("labelMarginBottom").text, "Below:");
}

TEST_F(MemoryNib, IsSubscribedToFourTimesUntilTheControllerIsDestroyed) {
  ASSERT_NO_FATAL_FAILURE(makeController());
  EXPECT_EQ(subscriptions(), 0U);
  loadView();
  loadView();
  EXPECT_EQ(subscriptions(), 4U);
  controller.reset();
  EXPECT_EQ(subscriptions(), 0U);
}

}  // namespace
}  // namespace tandemtrim::test
