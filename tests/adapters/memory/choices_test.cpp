#include <array>
#include <stdexcept>

#include <gmock/gmock.h>

#include "adapters/memory/controls.hpp"

namespace tandemtrim::platform::memory {
namespace {

using testing::ElementsAre;
using testing::IsNull;
using testing::NotNull;

TEST(Button, RunsItsActionOnAClickUnlessItIsDisabled) {
  Button button;
  EXPECT_TRUE(button.userClicks());
  std::vector<NibObject*> senders;
  button.setAction([&](NibObject* sender) { senders.push_back(sender); });
  button.setTitle("Restore");
  EXPECT_EQ(button.title(), "Restore");
  EXPECT_TRUE(button.userClicks());
  button.setEnabled(false);
  EXPECT_FALSE(button.userClicks());
  EXPECT_THAT(senders, ElementsAre(&button));
}

TEST(CheckBox, TogglesAndThenRunsItsActionOnAClick) {
  CheckBox box;
  std::vector<int> states;
  box.setAction([&](NibObject*) { states.push_back(box.state()); });
  EXPECT_TRUE(box.userClicks());
  EXPECT_TRUE(box.userClicks());
  box.setState(CheckBox::kMixed);
  EXPECT_TRUE(box.userClicks());
  EXPECT_THAT(states, ElementsAre(CheckBox::kOn, CheckBox::kOff, CheckBox::kOn));
}

TEST(CheckBox, RunsNoActionWhenTheProgramSetsItsState) {
  CheckBox box;
  int runs = 0;
  box.setAction([&](NibObject*) { ++runs; });
  box.setState(CheckBox::kMixed);
  box.setTitle("Valid");
  EXPECT_EQ(box.state(), CheckBox::kMixed);
  EXPECT_EQ(box.title(), "Valid");
  EXPECT_EQ(runs, 0);
}

TEST(CheckBox, IgnoresTheUserWhileItIsDisabledAndNeedsNoAction) {
  CheckBox box;
  EXPECT_TRUE(box.userClicks());
  box.setEnabled(false);
  EXPECT_FALSE(box.userClicks());
  EXPECT_EQ(box.state(), CheckBox::kOn);
}

class Menu : public testing::Test {
 protected:
  Menu() {
    for (std::size_t index = 0; index < 3; ++index) {
      menu.itemAtIndex(index).setTitle(std::array{"one", "two", "two"}.at(index));
    }
  }
  PopUpButton menu{3};
};

TEST_F(Menu, StartsWithItsFirstItemSelectedAndWithoutValues) {
  EXPECT_EQ(menu.numberOfItems(), 3U);
  EXPECT_EQ(menu.selectedItem(), &menu.itemAtIndex(0));
  EXPECT_EQ(menu.itemAtIndex(0).representedObject(), std::nullopt);
  menu.itemAtIndex(0).setRepresentedObject("value");
  EXPECT_EQ(menu.items().front().representedObject(), "value");
  EXPECT_EQ(menu.items().front().title(), "one");
}

TEST_F(Menu, SelectsTheFirstItemOfATitle) {
  menu.selectItemWithTitle("two");
  EXPECT_EQ(menu.selectedIndex(), 1U);
}

TEST_F(Menu, HasNoSelectionAfterATitleThatNoItemHas) {
  for (const char* title : {"three", "Two", ""}) {
    menu.selectItemWithTitle("two");
    menu.selectItemWithTitle(title);
    EXPECT_THAT(menu.selectedItem(), IsNull()) << title;
  }
  menu.selectItemWithTitle("one");
  EXPECT_THAT(menu.selectedItem(), NotNull());
}

TEST_F(Menu, LetsTheUserChooseUnlessItIsDisabled) {
  EXPECT_TRUE(menu.userChooses(2));
  EXPECT_EQ(menu.selectedIndex(), 2U);
  EXPECT_THROW(menu.userChooses(3), std::out_of_range);
  menu.setEnabled(false);
  EXPECT_FALSE(menu.userChooses(0));
  EXPECT_EQ(menu.selectedIndex(), 2U);
}

TEST_F(Menu, SelectsNothingWithoutItems) {
  PopUpButton empty(0);
  EXPECT_THAT(empty.selectedItem(), IsNull());
  EXPECT_THROW((void)empty.itemAtIndex(0), std::out_of_range);
}

}  // namespace
}  // namespace tandemtrim::platform::memory
