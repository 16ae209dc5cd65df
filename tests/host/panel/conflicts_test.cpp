#include "host/panel/conflicts.hpp"

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

TEST(Conflicts, AreOfWhatIsChosen) {
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

TEST(Conflicts, AreOfAnyChoiceButOffWhereNoneIsNamed) {
  const std::string constraints = "*UIConstraints: *Duplex *Place Right\n";
  const Conflict expected{"Where", "At the right", "Two Sides", "Long edge"};
  EXPECT_THAT(conflictsWith(constraints, panelWith("Off", "Right"), {{"Duplex", "Long"}}),
              ElementsAre(expected));
  EXPECT_THAT(conflictsWith(constraints, panelWith("Off", "Right"), {{"Duplex", "None"}}), IsEmpty());
}

TEST(Conflicts, AreNamedOnceWithinThePanelToo) {
  const std::string constraints =
      "*UIConstraints: *Trim On *Place Right\n*UIConstraints: *Place Right *Trim On\n";
  const Conflict expected{"Use trim", "Yes", "Where", "At the right"};
  EXPECT_THAT(conflictsWith(constraints, panelWith("On", "Right"), {}), ElementsAre(expected));
}

TEST(Constraints, AreThoseOfTheKeywords) {
  const test::SamplePpd ppd(kOptions + "*UIConstraints: *Trim On *Duplex Long\n");
  EXPECT_TRUE(hasConstraints(*ppd.get(), {"trim"}));
  EXPECT_TRUE(hasConstraints(*ppd.get(), {"Place", "Duplex"}));
  EXPECT_FALSE(hasConstraints(*ppd.get(), {"Place"}));
}

}  // namespace
}  // namespace tandemtrim::host
