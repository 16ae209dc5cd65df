#include "host/panel/panel_session.hpp"

#include <gmock/gmock.h>

#include "adapters/linux/print_settings.hpp"
#include "adapters/memory/panel_view.hpp"
#include "tests/host/failure_matcher.hpp"
#include "tests/host/panel/fake_bundle.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

const Report quiet = [](const std::string&) {};
using testing::IsEmpty;

class APanelSession : public testing::Test {
 protected:
  PanelResult play(const std::vector<Input>& inputs, bool force = false, const std::string& behaviour = "") {
    const auto bundle = writeBundle(folder_, behaviour.empty() ? "Fake.bundle" : "Broken.bundle",
                                    {"FakePrincipal", behaviour});
    CommandLine line;
    line.inputs = inputs;
    line.force = force;
    line.lenient = lenient;
    return playPanel(openBundle(bundle, quiet), settings, nullptr, defaults, line,
                     [this](const std::string& message) { messages.push_back(message); });
  }
  void store(const std::string& keyword, const std::string& value) {
    settings.PMPrintSettingsSetValue(keyword, value, false);
  }
  std::optional<std::string> stored(const std::string& keyword) const {
    std::optional<std::string> value;
    settings.PMPrintSettingsGetValue(keyword, value);
    return value;
  }

  platform::linux::PrintSettings settings;
  std::vector<std::string> messages;
  Options defaults;  // The printer's.
  bool lenient = false;

 private:
  test::TemporaryFolder folder_;
};

TEST_F(APanelSession, WithoutInputsSavesTheDefaults) {
  play({});
  EXPECT_EQ(stored("FakeOn"), "On");
  EXPECT_EQ(stored("FakePosition"), "Left");
  EXPECT_EQ(stored("FakeTop"), "5");
  EXPECT_THAT(messages, IsEmpty());
}

TEST_F(APanelSession, SavesWhatTheUserSet) {
  play({{"Top", "12"}, {"Position", "Right"}});
  EXPECT_EQ(stored("FakeTop"), "12");
  EXPECT_EQ(stored("FakePosition"), "Right");
}

TEST_F(APanelSession, ObeysTheInputsInTheirOrder) {
  play({{"Top", "12"}, {"RestoreDefault", std::nullopt}, {"Position", "Right"}});
  EXPECT_EQ(stored("FakeTop"), "5");
  EXPECT_EQ(stored("FakePosition"), "Right");
}

TEST_F(APanelSession, ClicksTheSwitchOnlyWhenItsStateDiffers) {
  play({{"Valid", "On"}});
  EXPECT_EQ(stored("FakeOn"), "On");
  play({{"Valid", "Off"}});
  EXPECT_EQ(stored("FakeOn"), "Off");
}

TEST_F(APanelSession, ReportsWhatThePanelCorrected) {
  play({{"Top", "99"}});
  EXPECT_EQ(stored("FakeTop"), "20");
  EXPECT_THAT(messages, ElementsAre("Top: \"99\" was typed, the panel made it 20 (allowed: 0 to 20)"));
}

TEST_F(APanelSession, LetsThePanelReadAnyTextAsANumberWhenItIsLenient) {
  lenient = true;
  play({{"Top", "12.7"}});
  EXPECT_THAT(messages, ElementsAre(HasSubstr("\"12.7\" was typed")));
}

TEST_F(APanelSession, ReturnsTheSettingsAsTheyAreSaved) {
  const auto result = play({{"Top", "12"}});
  ASSERT_EQ(result.settings.size(), 3U);
  EXPECT_EQ(result.settings[0].keyword, "FakeOn");
  EXPECT_EQ(result.settings[1].choices[1].value, "Right");
  EXPECT_EQ(result.settings[2].name, "Top");
  EXPECT_EQ(result.settings[2].maximum, 20);
  EXPECT_EQ(result.settings[2].value, "12");
}

TEST_F(APanelSession, ReturnsTheSummaryInDisplayOrder) {
  const auto rows = play({{"Top", "8"}}).summary;
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].title, "Upper");
  EXPECT_EQ(rows[0].value, "8");
  EXPECT_EQ(rows[1].title, "Place");
}

TEST_F(APanelSession, ReturnsEveryRowOfASummaryWithoutAnOrder) {
  EXPECT_EQ(play({{"Valid", "Off"}}).summary.size(), 2U);
}

struct WrongInput {
  Input input;
  std::string named;
};

class AWrongInput : public APanelSession, public testing::WithParamInterface<WrongInput> {};

TEST_P(AWrongInput, IsRefusedWithWhatIsAllowed) {
  const auto failure = failureOf([&] { play({GetParam().input}); });
  EXPECT_EQ(failure.exitStatus(), kWrongCommandLine);
  EXPECT_THAT(failure.what(), HasSubstr(GetParam().named));
}

INSTANTIATE_TEST_SUITE_P(
    Inputs, AWrongInput,
    testing::Values(WrongInput{{"Middle", "1"}, "Valid, Position, Top"},
                    WrongInput{{"top", "1"}, "Valid, Position, Top"},
                    WrongInput{{"RestoreDefault", "1"}, "Valid, Position, Top"},
                    WrongInput{{"Position", "Links"}, "Left, Right"},
                    WrongInput{{"Position", ""}, "Left, Right"}, WrongInput{{"Valid", "on"}, "On, Off"},
                    WrongInput{{"Top", "12.7"}, "--set Top=12.7"}, WrongInput{{"Top", "12,7"}, "0 to 20"},
                    WrongInput{{"Top", "-5"}, "--lenient"}, WrongInput{{"Top", "1a2"}, "digits"},
                    WrongInput{{"Top", "\u0661\u0662"}, "digits"}, WrongInput{{"Top", " 3"}, "digits"},
                    WrongInput{{"Top", ""}, "\"\""}, WrongInput{{"Press", std::nullopt}, "no such button"}));

class AGreyedControl : public APanelSession, public testing::WithParamInterface<Input> {};

TEST_P(AGreyedControl, RefusesInputAndSaysHowToTurnThePanelOn) {
  store("FakeOn", "Off");
  const auto failure = failureOf([&] { play({GetParam()}); });
  EXPECT_EQ(failure.exitStatus(), kFailed);
  const auto& [name, text] = GetParam();
  EXPECT_EQ(failure.what(),
            (text ? "--set " + name + "=" + *text : "--restore-defaults") +
                ": Valid is off, so this control is disabled; nothing was sent. Turn it on first "
                "with --set Valid=On");
}

INSTANTIATE_TEST_SUITE_P(Inputs, AGreyedControl,
                         testing::Values(Input{"Top", "1"}, Input{"Position", "Right"},
                                         Input{"RestoreDefault", std::nullopt}));

TEST_F(APanelSession, NamesAGreyedControlIfThePanelHasNoSwitch) {
  store("FakeOn", "Off");
  const auto failure = failureOf([&] { play({{"Top", "1"}}, false, "settings margin-alone"); });
  EXPECT_THAT(failure.what(), testing::StrEq("--set Top=1: this control is disabled now; nothing was sent"));
}

TEST_F(APanelSession, NamesASwitchThatIsGreyedItself) {
  store("FakeOn", "Off");
  EXPECT_THAT(failureOf([&] {
                play({{"Valid", "On"}}, false, "click greyed");
              }).what(),
              testing::StrEq("--set Valid=On: this control is disabled now; nothing was sent"));
  EXPECT_EQ(stored("FakeOn"), "Off");
}

TEST_F(APanelSession, BlamesNoSwitchThatIsOnForAGreyedControl) {
  store("FakeOn", "On");
  EXPECT_THAT(failureOf([&] {
                play({{"RestoreDefault", std::nullopt}}, false, "click greyed");
              }).what(),
              testing::StrEq("--restore-defaults: this control is disabled now; nothing was sent"));
}

TEST_F(APanelSession, NamesTheChoicesBesideOneThatThePanelLacks) {
  EXPECT_STREQ(failureOf([&] {
                 play({{"Position", "Links"}});
               }).what(),
               "--set Position=Links: choose one of Left, Right");
  EXPECT_STREQ(failureOf([&] { play({{"Valid", "on"}}); }).what(), "--set Valid=on: choose one of On, Off");
}

TEST_F(APanelSession, AsksThePanelWhetherToHideToHelpAndToPrint) {
  const test::TemporaryFolder folder;
  const auto open = [&](const std::string& behaviour) {
    const auto bundle = writeBundle(folder, behaviour.empty() ? "Fake.bundle" : behaviour + ".bundle",
                                    {"FakePrincipal", behaviour});
    return PanelSession(openBundle(bundle, quiet), kMemoryModule, settings, nullptr);
  };
  EXPECT_TRUE(open("").shouldHide());
  EXPECT_FALSE(open("shouldHide false").shouldHide());
  EXPECT_TRUE(open("").shouldShowHelp());
  EXPECT_TRUE(open("").shouldPrint());
  EXPECT_FALSE(open("shouldPrint false").shouldPrint());
  EXPECT_THAT(failureOf([&] { static_cast<void>(open("shouldPrint raises").shouldPrint()); }).what(),
              HasSubstr("failed in shouldPrint: broken on purpose"));
  EXPECT_THAT(failureOf([&] { static_cast<void>(open("shouldHide raises").shouldHide()); }).what(),
              HasSubstr("failed in shouldHide: broken on purpose"));
}

TEST_F(APanelSession, TakesANegativeNumberIfThePanelAllowsIt) {
  play({{"Top", "-5"}}, false, "settings margin-alone");
  EXPECT_EQ(stored("FakeTop"), "-5");
}

TEST_F(APanelSession, ReportsWhyThePanelCannotShowTheSettings) {
  EXPECT_THAT(failureOf([&] { play({}, false, "restoreValuesAndReturnError false"); }).what(),
              HasSubstr("could not show the settings: the fake has forgotten them"));
}

TEST_F(APanelSession, SavesEvenWithoutAView) {
  const test::TemporaryFolder folder;
  PanelSession session(openBundle(writeBundle(folder, "Fake.bundle"), quiet), kMemoryModule, settings,
                       nullptr);
  EXPECT_EQ(session.title(), "Fake");
  session.save();
  EXPECT_EQ(stored("FakeTop"), "5");
}

TEST(ASummary, HasTheRowsWhoseTitleAndValueAreTexts) {
  const auto text = [](const std::string& words) {
    return std::make_shared<const platform::Object>(platform::Object::Value(words));
  };
  const auto number = std::make_shared<const platform::Object>(platform::Object::Value(5.0));
  const platform::Array order{text("B"), number, nullptr, text("A"), text("missing"), text("number")};
  platform::Dictionary summary{{"A", text("1")}, {"B", text("2")}, {"number", number}, {"none", nullptr}};
  EXPECT_EQ(orderedSummary(summary).size(), 2U);
  summary.emplace(platform::kSummaryDisplayOrderKey,
                  std::make_shared<const platform::Object>(platform::Object::Value(order)));
  const auto rows = orderedSummary(summary);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].title + rows[0].value + rows[1].title + rows[1].value, "B2A1");
}

TEST_F(APanelSession, TakesInputAfterTheSwitchWasTurnedOn) {
  store("FakeOn", "Off");
  play({{"Valid", "On"}, {"Top", "3"}});
  EXPECT_EQ(stored("FakeTop"), "3");
}

struct Illegal {
  std::string keyword;
  std::string value;
  std::string allowed;
  std::string remedy;
};

class AnIllegalStoredValue : public APanelSession, public testing::WithParamInterface<Illegal> {};

TEST_P(AnIllegalStoredValue, IsRefusedWithValueLimitAndRemedy) {
  const auto& [keyword, value, allowed, remedy] = GetParam();
  store(keyword, value);
  const auto failure = failureOf([&] { play({}); });
  EXPECT_EQ(failure.exitStatus(), kFailed);
  EXPECT_EQ(failure.what(), keyword + "=" + value + " is not allowed here (allowed: " + allowed +
                                "); nothing was sent. Change it with " + remedy +
                                ", or send it unchanged with --force");
}

TEST_P(AnIllegalStoredValue, IsSentUnchangedWhenForced) {
  store(GetParam().keyword, GetParam().value);
  play({}, true);
  EXPECT_EQ(stored(GetParam().keyword), GetParam().value);
  EXPECT_THAT(messages, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Values, AnIllegalStoredValue,
                         testing::Values(Illegal{"FakeTop", "25", "0 to 20", "-o FakeTop=20 or --set Top=20"},
                                         Illegal{"FakeTop", "abc", "0 to 20", "-o FakeTop=0 or --set Top=0"},
                                         Illegal{"FakePosition", "Middle", "Left, Right",
                                                 "-o FakePosition=Left or --set Position=Left"},
                                         Illegal{"FakeOn", "on", "On, Off",
                                                 "-o FakeOn=On or --set Valid=On"}));

TEST_F(APanelSession, RefusesAnyIllegalStoredValueAndShowsItsBeginningOnOneLine) {
  const std::pair<std::string, std::string> values[] = {
      {"gtk-ignore-value", "FakeTop=gtk-ignore-value is"},
      {"$(reboot) `id`", "FakeTop=$(reboot) `id` is"},
      {"\x1B]0;title\a\n12", "FakeTop=\uFFFD]0;title\uFFFD\uFFFD12 is"},
      {std::string(1 << 20, '5'), "FakeTop=" + std::string(200, '5') + "... is"}};
  for (const auto& [value, words] : values) {
    store("FakeTop", value);
    EXPECT_THAT(failureOf([&] { play({}); }).what(), HasSubstr(words));
  }
}

TEST_F(APanelSession, SuggestsNoControlThatIsGreyed) {
  store("FakeOn", "Off");
  store("FakeTop", "25");
  EXPECT_STREQ(
      failureOf([&] { play({}); }).what(),
      "FakeTop=25 is not allowed here (allowed: 0 to 20); nothing was sent. Change it with -o FakeTop=20, "
      "or send it unchanged with --force");
}

TEST_F(APanelSession, JudgesASettingThatTheUserSetByItsNewValue) {
  store("FakeTop", "25");
  store("FakePosition", "Middle");
  play({{"Top", "7"}, {"Position", "Right"}});
  EXPECT_EQ(stored("FakeTop"), "7");
  EXPECT_EQ(stored("FakePosition"), "Right");
}

TEST_F(APanelSession, JudgesRestoredSettingsByTheirDefaults) {
  store("FakeTop", "25");
  store("FakePosition", "Middle");
  play({{"RestoreDefault", std::nullopt}});
  EXPECT_EQ(stored("FakeTop"), "5");
}

TEST_F(APanelSession, ForcesOnlyValuesThatTheUserDidNotSet) {
  store("FakeTop", "25");
  store("FakePosition", "Middle");
  play({{"Top", "7"}}, true);
  EXPECT_EQ(stored("FakeTop"), "7");
  EXPECT_EQ(stored("FakePosition"), "Middle");
}

TEST_F(APanelSession, RefusesANewValueThatThePanelLetThrough) {
  EXPECT_THAT(failureOf([&] { play({{"Top", "21"}}); }).what(), HasSubstr("FakeTop=21"));
}

TEST_F(APanelSession, NamesASettingThatThePanelSavedWithoutAValue) {
  play({{"Top", "7"}}, false, "saveValuesAndReturnError absent");
  EXPECT_EQ(stored("FakeTop"), std::nullopt);
  EXPECT_THAT(messages, ElementsAre("the panel saved no value for FakeTop; the job is sent without it"));
}

TEST_F(APanelSession, KeepsAnUneditedValueEvenIfThePanelSavesNoValue) {
  play({{"Position", "Right"}}, false, "saveValuesAndReturnError absent");
  EXPECT_EQ(stored("FakeTop"), "5");
  EXPECT_EQ(stored("FakePosition"), "Right");
}

TEST_F(APanelSession, NamesTheStoredValuesThatAreNotAllowedAndLeavesThemAlone) {
  store("FakeTop", "35");
  store("FakePosition", "Right");
  const test::TemporaryFolder folder;
  const PanelSession session(openBundle(writeBundle(folder, "Fake.bundle"), quiet), kMemoryModule, settings,
                             nullptr);
  const auto illegal = illegalValues(session.settings());
  ASSERT_EQ(illegal.size(), 1U);
  EXPECT_EQ(illegal[0].setting.title, "Upper");
  EXPECT_EQ(illegal[0].setting.keyword, "FakeTop");
  EXPECT_EQ(illegal[0].setting.value, "35");
  EXPECT_EQ(illegal[0].setting.maximum, 20);
  EXPECT_EQ(illegal[0].suggested, "20");
  EXPECT_EQ(stored("FakeTop"), "35");
}

TEST_F(APanelSession, CorrectsTheValuesThatAreNotAllowedAndKeepsTheOthers) {
  store("FakeOn", "On");
  store("FakeTop", "35");
  store("FakePosition", "Right");
  const test::TemporaryFolder folder;
  PanelSession session(openBundle(writeBundle(folder, "Fake.bundle"), quiet), kMemoryModule, settings,
                       nullptr);
  session.view();
  session.willShow();
  session.correct();
  EXPECT_EQ(stored("FakeTop"), "20");
  EXPECT_EQ(stored("FakePosition"), "Right");
  store("FakePosition", "Middle");
  session.willShow();
  session.correct();
  EXPECT_EQ(stored("FakePosition"), "Left");
  session.save();
  EXPECT_EQ(stored("FakeTop"), "20");
  EXPECT_EQ(stored("FakePosition"), "Left");
}

TEST_F(APanelSession, KeepsWhatTheUserHasSetBesideTheValuesThatItCorrects) {
  store("FakeTop", "35");
  const test::TemporaryFolder folder;
  PanelSession session(openBundle(writeBundle(folder, "Fake.bundle"), quiet), kMemoryModule, settings,
                       nullptr);
  auto& view = dynamic_cast<platform::memory::PanelView&>(session.view());
  session.willShow();
  view.choose("Position", 1);
  session.correct();
  EXPECT_EQ(stored("FakeTop"), "20");
  EXPECT_EQ(stored("FakePosition"), "Right");
}

TEST_F(APanelSession, KeepsWhatTheUserHasSetWhenItsDefaultsAreRemoved) {
  const test::TemporaryFolder folder;
  PanelSession session(openBundle(writeBundle(folder, "Fake.bundle"), quiet), kMemoryModule, settings,
                       nullptr, {{"FakeTop", "9"}, {"FakePosition", "Right"}});
  store("FakeTop", "12");
  session.removeDefaults();
  EXPECT_EQ(stored("FakeTop"), "12");
  EXPECT_EQ(stored("FakePosition"), std::nullopt);
}

TEST_F(APanelSession, PrefersThePrintersDefaultsToThePanelsOwn) {
  defaults = {{"FakeTop", "9"}, {"FakePosition", "Right"}};
  store("FakePosition", "Left");
  play({});
  EXPECT_EQ(stored("FakeTop"), "9");
  EXPECT_EQ(stored("FakePosition"), "Left");
  EXPECT_EQ(stored("FakeOn"), "On");
}

class AnIllegalDefault : public APanelSession, public testing::WithParamInterface<Illegal> {};

TEST_P(AnIllegalDefault, IsCorrectedWithANoteWhileThePanelIsOn) {
  const auto& [keyword, value, allowed, corrected] = GetParam();
  defaults = {{keyword, value}};
  const auto result = play({});
  EXPECT_EQ(stored(keyword), corrected);
  EXPECT_THAT(messages, ElementsAre(keyword + ": the default " + value +
                                    " is not allowed on this printer (allowed: " + allowed + "); " +
                                    corrected + " is used instead"));
  EXPECT_THAT(result.illegalDefaults, IsEmpty());
  EXPECT_EQ(result.summary.front().value, stored("FakeTop"));
}

TEST_P(AnIllegalDefault, IsKeptUnchangedWhileThePanelIsOff) {
  defaults = {{GetParam().keyword, GetParam().value}};
  store("FakeOn", "Off");
  const auto result = play({});
  EXPECT_EQ(stored(GetParam().keyword), GetParam().value);
  EXPECT_THAT(messages, IsEmpty());
  EXPECT_THAT(result.illegalDefaults, ElementsAre(GetParam().keyword));
}

TEST_P(AnIllegalDefault, IsKeptUnchangedWhenForced) {
  defaults = {{GetParam().keyword, GetParam().value}};
  const auto result = play({}, true);
  EXPECT_EQ(stored(GetParam().keyword), GetParam().value);
  EXPECT_THAT(messages, IsEmpty());
  EXPECT_THAT(result.illegalDefaults, ElementsAre(GetParam().keyword));
}

TEST_P(AnIllegalDefault, IsRefusedIfTheUserChoseIt) {
  defaults = {{GetParam().keyword, GetParam().value}};
  store(GetParam().keyword, GetParam().value);
  EXPECT_THAT(failureOf([&] { play({}); }).what(), HasSubstr(GetParam().allowed));
}

TEST_P(AnIllegalDefault, IsRemovedWithThePrintersDefaults) {
  defaults = {{GetParam().keyword, GetParam().value}};
  store("Foreign", "1");
  const test::TemporaryFolder folder;
  PanelSession session(openBundle(writeBundle(folder, "Fake.bundle"), quiet), kMemoryModule, settings,
                       nullptr, defaults);
  session.view();
  session.willShow();
  session.correctDefaults();
  store("FakeOn", "Off");
  session.removeDefaults();
  EXPECT_EQ(stored(GetParam().keyword), std::nullopt);
  EXPECT_EQ(stored("FakeOn"), "Off");
  EXPECT_EQ(stored("Foreign"), "1");
}

INSTANTIATE_TEST_SUITE_P(Values, AnIllegalDefault,
                         testing::Values(Illegal{"FakeTop", "25", "0 to 20", "20"},
                                         Illegal{"FakeTop", "five", "0 to 20", "0"}));

TEST_F(APanelSession, ReplacesAnUnknownDefaultByItsOwn) {
  defaults = {{"FakePosition", "Middle"}, {"FakeOn", "True"}, {"FakeTop", "7"}};
  play({});
  EXPECT_EQ(stored("FakePosition"), "Left");
  EXPECT_EQ(stored("FakeOn"), "On");
  EXPECT_EQ(stored("FakeTop"), "7");
  EXPECT_THAT(messages, IsEmpty());
}

TEST_F(APanelSession, CorrectsAnIllegalDefaultThatTheUserRestored) {
  store("FakeTop", "5");
  play({{"Top", "31"}, {"RestoreDefault", std::nullopt}}, false, "click beyond");
  EXPECT_EQ(stored("FakeTop"), "20");
  EXPECT_THAT(messages, ElementsAre(HasSubstr("FakeTop: the default 25")));
}

TEST_F(APanelSession, RefusesAnIllegalValueThatTheUserSetAfterRestoringDefaults) {
  const auto failure = failureOf([&] { play({{"RestoreDefault", std::nullopt}, {"Top", "21"}}); });
  EXPECT_THAT(failure.what(), HasSubstr("FakeTop=21"));
}

}  // namespace
}  // namespace tandemtrim::host
