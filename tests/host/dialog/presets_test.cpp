#include <gmock/gmock.h>

#include "host/dialog/panel/preset_list.hpp"
#include "host/dialog/presets/chosen_preset.hpp"

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The row's contents, and what its menu then allows: Save, Revert, Rename and Delete, Use by Default.
struct Menu {
  PresetList list;
  std::string title;
  LivePresetActions live;
};

class TheRowOfPresets : public testing::TestWithParam<Menu> {};

TEST_P(TheRowOfPresets, NamesTheChosenPresetAndAllowsWhatIsPossible) {
  EXPECT_EQ(titleOf(GetParam().list), GetParam().title);
  EXPECT_EQ(liveActions(GetParam().list), GetParam().live);
}

INSTANTIATE_TEST_SUITE_P(
    Presets, TheRowOfPresets,
    testing::Values(Menu{{}, "None", {false, false, false, false}},
                    Menu{{{"A"}, {}, true, true}, "None", {false, false, false, false}},
                    Menu{{{"A"}, "A", false, true}, "A", {false, false, true, true}},
                    Menu{{{"A"}, "A", true, true}, "A, changed", {true, true, true, true}},
                    Menu{{{"A"}, "A", false, false}, "A", {false, false, false, true}},
                    Menu{{{"A"}, "A", true, false}, "A, changed", {false, true, false, true}}));

TEST(TheRowOfPresets, ShowsUnderscoresOfNames) { EXPECT_EQ(unmarked("_a__b"), "__a____b"); }

class AChosenPreset : public testing::Test {
 protected:
  const Options panel_{{"Top", "3"}};
  ChosenPreset preset_{"Family", {"A", panel_, Options{{"Glue", "Hot"}, {"x-note", "kept"}}}};
};

TEST_F(AChosenPreset, LeavesOutWhatThePrinterRefuses) {
  preset_.refused = {"glue"};
  EXPECT_THAT(optionsOf(preset_, {}), ElementsAre(Option{"x-note", "kept"}));
}

TEST_F(AChosenPreset, OverridesTheCommandLineOnlyIfTheUserChoseIt) {
  const Options asked{{"GLUE", "Cold"}, {"x-note", "kept"}};
  EXPECT_THAT(optionsOf(preset_, asked), ElementsAre(Option{"x-note", "kept"}));
  preset_.isByHand = true;
  EXPECT_EQ(optionsOf(preset_, asked), preset_.preset.options);
}

TEST_F(AChosenPreset, OfThePanelAloneIsChangedByThePanelOnly) {
  preset_.preset.options = {};
  EXPECT_FALSE(isChanged(preset_, {{"Left", "1"}, {"top", "3"}}, {}));
  EXPECT_TRUE(isChanged(preset_, {{"Top", "4"}}, {}));
  EXPECT_TRUE(isChanged(preset_, {}, {}));
}

TEST_F(AChosenPreset, IsChangedIfThePagesShowSomethingElseThanWhenTheyLastShowedIt) {
  preset_.pages = Options{{"Glue", "HOT"}};
  EXPECT_FALSE(isChanged(preset_, panel_, Options{{"Glue", "HOT"}}));
  EXPECT_TRUE(isChanged(preset_, panel_, Options{{"Glue", "Hot"}}));
  EXPECT_TRUE(isChanged(preset_, panel_, Options{{"Glue", "HOT"}, {"number-up", "2"}}));
  EXPECT_TRUE(isChanged(preset_, panel_, Options{}));
  EXPECT_TRUE(isChanged(preset_, panel_, {})) << "the pages are incomplete";
}

TEST_F(AChosenPreset, IsChangedWhileThePagesHaveNotShownItOrThePrinterRefusesAPart) {
  EXPECT_TRUE(isChanged(preset_, panel_, Options{}));
  preset_.pages = Options{};
  EXPECT_FALSE(isChanged(preset_, panel_, Options{}));
  preset_.refused = {"Glue"};
  EXPECT_TRUE(isChanged(preset_, panel_, Options{}));
}

}  // namespace
}  // namespace tandemtrim::host
