#include "host/panel/conflicts.hpp"

#include <array>
#include <utility>

#include <gmock/gmock.h>

#include "tests/host/dialog/sample_ppd.hpp"

namespace tandemtrim::host {
namespace {

using platform::PanelSetting;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kOptions =
    "*OpenUI *Trim/Trim: PickOne\n*DefaultTrim: Off\n*Trim On/On: \"\"\n*Trim Off/Off: \"\"\n*CloseUI: "
    "*Trim\n"
    "*OpenUI *Place/Place: PickOne\n*DefaultPlace: Left\n*Place Left/Left: \"\"\n*Place Right/Right: \"\"\n"
    "*CloseUI: *Place\n"
    "*OpenUI *Duplex/Two Sides: PickOne\n*DefaultDuplex: None\n*Duplex None/No: \"\"\n*Duplex Long/Long "
    "edge: "
    "\"\"\n*CloseUI: *Duplex\n";

std::vector<PanelSetting> panelWith(const std::string& trim, const std::string& place) {
  PanelSetting onOff;
  onOff.keyword = "Trim";
  onOff.title = "Use trim";
  onOff.kind = PanelSetting::Kind::onOff;
  onOff.choices = {{"On", "Yes"}, {"Off", "No"}};
  onOff.value = trim;
  PanelSetting where;
  where.keyword = "Place";
  where.title = "Where";
  where.kind = PanelSetting::Kind::choice;
  where.choices = {{"Left", "At the left"}, {"Right", "At the right"}};
  where.value = place;
  return {onOff, where};
}

std::vector<Conflict> conflictsWith(const std::string& constraints, const std::vector<PanelSetting>& panel,
                                    const Options& others) {
  const test::SamplePpd ppd(kOptions + constraints);
  return conflictsOf(*ppd.get(), panel, others);
}

TEST(Conflicts, AreFoundBetweenChosenOptions) {
  const std::string constraints =
      "*UIConstraints: *Trim On *Duplex Long\n*UIConstraints: *Duplex Long *Trim On\n";
  const Conflict expected{"Use trim", "Yes", "Two Sides", "Long edge"};
  EXPECT_THAT(conflictsWith(constraints, panelWith("On", "Left"), {{"duplex", "Long"}}),
              ElementsAre(expected));
  EXPECT_THAT(conflictsWith(constraints, panelWith("Off", "Left"), {{"Duplex", "Long"}}), IsEmpty());
  EXPECT_THAT(conflictsWith(constraints, panelWith("On", "Left"), {{"Duplex", "None"}}), IsEmpty());
  EXPECT_THAT(conflictsWith(constraints, panelWith("On", "Left"), {}), IsEmpty());
  EXPECT_THAT(conflictsWith(constraints, panelWith("Maybe", "Left"), {{"Duplex", "Long"}}), IsEmpty());
}

TEST(Conflicts, AreFoundForAnyChoiceButOffIfAConstraintNamesNoChoice) {
  const std::string constraints = "*UIConstraints: *Duplex *Place Right\n";
  const Conflict expected{"Where", "At the right", "Two Sides", "Long edge"};
  EXPECT_THAT(conflictsWith(constraints, panelWith("Off", "Right"), {{"Duplex", "Long"}}),
              ElementsAre(expected));
  EXPECT_THAT(conflictsWith(constraints, panelWith("Off", "Right"), {{"Duplex", "None"}}), IsEmpty());
}

TEST(Conflicts, AreNotFoundForTheChoicesOffAndFalseEither) {
  const std::string constraints = "*UIConstraints: *Place Right *Trim\n*UIConstraints: *Place Right *Fold\n";
  const std::string fold =
      "*OpenUI *Fold/Fold: Boolean\n*DefaultFold: False\n*Fold True/On: \"\"\n*Fold False/Off: \"\"\n"
      "*CloseUI: *Fold\n";
  EXPECT_THAT(conflictsWith(fold + constraints, panelWith("Off", "Right"), {}), IsEmpty());
  EXPECT_THAT(conflictsWith(fold + constraints, panelWith("Off", "Right"), {{"Fold", "True"}}),
              ElementsAre(Conflict{"Where", "At the right", "Fold", "On"}));
}

TEST(Conflicts, AreNotFoundForOptionsAndChoicesThatThePrinterDoesNotHave) {
  const std::string constraints = "*UIConstraints: *Trim On *Absent\n*UIConstraints: *Trim On *Absent Yes\n";
  EXPECT_THAT(conflictsWith(constraints, panelWith("On", "Left"), {{"Absent", "Yes"}}), IsEmpty());
}

TEST(Conflicts, AreThoseOfThePresentChoicesAlone) {
  const test::SamplePpd ppd(kOptions + "*UIConstraints: *Trim On *Duplex Long\n");
  EXPECT_EQ(conflictsOf(*ppd.get(), panelWith("On", "Left"), {{"Duplex", "Long"}}).size(), 1U);
  EXPECT_THAT(conflictsOf(*ppd.get(), panelWith("On", "Left"), {}), IsEmpty());
}

TEST(Conflicts, AreFoundWithADefaultThatNobodyChose) {
  const std::string fold =
      "*OpenUI *Fold/Fold: Boolean\n*DefaultFold: True\n*Fold True/On: \"\"\n*Fold False/Off: \"\"\n"
      "*CloseUI: *Fold\n";
  EXPECT_THAT(conflictsWith(fold + "*UIConstraints: *Trim On *Fold True\n", panelWith("On", "Left"), {}),
              ElementsAre(Conflict{"Use trim", "Yes", "Fold", "On"}));
}

TEST(Conflicts, AreJudgedByTheDefaultIfACustomValueIsChosen) {
  const std::string constraints =
      "*CustomDuplex True: \"pop\"\n*ParamCustomDuplex Gap/Gap: 1 int 0 10\n"
      "*UIConstraints: *Trim On *Duplex\n";
  EXPECT_THAT(conflictsWith(constraints, panelWith("On", "Left"), {{"Duplex", "Custom.5"}}), IsEmpty());
}

TEST(Conflicts, NameAValueWithoutATitleUnchanged) {
  PanelSetting margin;
  margin.keyword = "Place";
  margin.title = "Margin";
  margin.kind = PanelSetting::Kind::number;
  margin.value = "Right";
  EXPECT_THAT(conflictsWith("*UIConstraints: *Place Right *Duplex Long\n", {margin}, {{"Duplex", "Long"}}),
              ElementsAre(Conflict{"Margin", "Right", "Two Sides", "Long edge"}));
}

TEST(Conflicts, WithinThePanelAreNamedOnce) {
  const std::string constraints =
      "*UIConstraints: *Trim On *Place Right\n*UIConstraints: *Place Right *Trim On\n";
  const Conflict expected{"Use trim", "Yes", "Where", "At the right"};
  EXPECT_THAT(conflictsWith(constraints, panelWith("On", "Right"), {}), ElementsAre(expected));
}

struct PaperCase {
  std::array<const char*, 4> margins;
  std::vector<std::string> named;
};

// A panel that trims these millimetres off top, bottom, left and right.
std::vector<PanelSetting> panelThatTrims(const char* trim, const std::array<const char*, 4>& margins) {
  using enum PanelSetting::Edge;
  std::vector<PanelSetting> settings{panelWith(trim, "Left").front()};
  for (const auto& [edge, title] :
       {std::pair{top, "Top"}, {bottom, "Bottom"}, {left, "Left"}, {right, "Right"}}) {
    PanelSetting margin;
    margin.kind = PanelSetting::Kind::number;
    margin.title = title;
    margin.value = margins.at(settings.size() - 1);
    margin.unit = "mm";
    margin.maximum = 20;
    margin.trimmedEdge = edge;
    settings.push_back(margin);
  }
  return settings;
}

const Paper kSmall{21, 30, "Paper", "Small"};

TEST(ConflictsWithPaper, NameTheMarginsThatLeaveNoPaper) {
  const std::vector<PaperCase> cases{{{"0", "0", "0", "0"}, {}},
                                     {{"15", "14", "10", "10"}, {}},
                                     {{"15", "15", "0", "0"}, {"Top", "Bottom"}},
                                     {{"0", "0", "11", "10"}, {"Left", "Right"}},
                                     {{"0", "0", "0", "21"}, {"Right"}},
                                     {{"30", "5", "5", "21"}, {"Top", "Right"}},
                                     {{"abc", "-30", "-5", "21"}, {"Right"}}};
  for (const auto& [margins, named] : cases) {
    std::vector<std::string> found;
    for (const auto& conflict : conflictsWithPaper(panelThatTrims("On", margins), kSmall))
      found.push_back(conflict.setting);
    EXPECT_EQ(found, named) << testing::PrintToString(margins);
  }
}

TEST(ConflictsWithPaper, SayHowMuchIsTrimmedAndWhatThePaperIs) {
  EXPECT_THAT(conflictsWithPaper(panelThatTrims("On", {"30", "0", "0", "0"}), kSmall),
              ElementsAre(Conflict{"Top", "30 mm", "Paper", "Small"}));
}

TEST(ConflictsWithPaper, AreNotFoundWhileThePanelIsOff) {
  EXPECT_THAT(conflictsWithPaper(panelThatTrims("Off", {"30", "0", "0", "21"}), kSmall), IsEmpty());
}

TEST(ConflictsWithPaper, ArePossibleIfTheLargestOrThePresentMarginsReachAcross) {
  const auto panel = panelThatTrims("Off", {"0", "0", "0", "0"});
  EXPECT_TRUE(canConflictWithPaper(panel, {41, 40, "", ""}));
  EXPECT_TRUE(canConflictWithPaper(panel, {40, 41, "", ""}));
  EXPECT_FALSE(canConflictWithPaper(panel, {41, 41, "", ""}));
  EXPECT_TRUE(canConflictWithPaper(panelThatTrims("Off", {"0", "0", "50", "0"}), {41, 41, "", ""}));
  EXPECT_FALSE(canConflictWithPaper(panelWith("On", "Left"), {1, 1, "", ""}));
}

TEST(Constraints, AreFoundByKeyword) {
  const test::SamplePpd ppd(kOptions + "*UIConstraints: *Trim On *Duplex Long\n");
  EXPECT_TRUE(hasConstraints(*ppd.get(), {"trim"}));
  EXPECT_TRUE(hasConstraints(*ppd.get(), {"Place", "Duplex"}));
  EXPECT_FALSE(hasConstraints(*ppd.get(), {"Place"}));
}

}  // namespace
}  // namespace tandemtrim::host
