#include "adapters/linux/print_settings.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::platform::linux {
namespace {

using testing::ElementsAre;

std::vector<std::string> listed(const PrintSettings& settings) {
  std::vector<std::string> entries;
  for (const auto& [key, value] : settings.entries()) entries.push_back(key + "=" + value);
  return entries;
}

std::optional<std::string> got(const PrintSettings& settings, std::string_view key) {
  std::optional<std::string> value = "left over";
  EXPECT_EQ(settings.PMPrintSettingsGetValue(key, value), kNoError);
  return value;
}

class PrintSettingsTest : public testing::Test {
 protected:
  PrintSettingsTest() {
    for (const char* key : {"first", "second", "third"}) settings_.PMPrintSettingsSetValue(key, "1", false);
  }
  PrintSettings settings_;
};

TEST_F(PrintSettingsTest, ReturnsWhatWasStored) {
  EXPECT_EQ(got(settings_, "second"), "1");
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("empty", "", false), kNoError);
  EXPECT_EQ(got(settings_, "empty"), "");
}

TEST_F(PrintSettingsTest, ReturnsNulloptForAMissingKey) { EXPECT_EQ(got(settings_, "fourth"), std::nullopt); }

TEST_F(PrintSettingsTest, DistinguishesKeysByLetterCase) {
  EXPECT_EQ(got(settings_, "First"), std::nullopt);
  settings_.PMPrintSettingsSetValue("First", "2", false);
  EXPECT_THAT(listed(settings_), ElementsAre("first=1", "second=1", "third=1", "First=2"));
}

TEST_F(PrintSettingsTest, KeepsThePlaceOfAValueThatIsReplaced) {
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("second", "2", false), kNoError);
  EXPECT_THAT(listed(settings_), ElementsAre("first=1", "second=2", "third=1"));
}

TEST_F(PrintSettingsTest, RemovesAKeyThatIsSetToNullopt) {
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("second", std::nullopt, false), kNoError);
  EXPECT_THAT(listed(settings_), ElementsAre("first=1", "third=1"));
  settings_.PMPrintSettingsSetValue("second", "2", false);
  EXPECT_THAT(listed(settings_), ElementsAre("first=1", "third=1", "second=2"));
}

TEST_F(PrintSettingsTest, RemovesAnAbsentKeyWithSuccess) {
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("fourth", std::nullopt, true), kNoError);
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("fourth", "1", false), kNoError);
  EXPECT_EQ(got(settings_, "fourth"), "1");
}

TEST_F(PrintSettingsTest, LeavesALockedValueAsItIs) {
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("second", "locked", true), kNoError);
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("second", "2", false), kValueLocked);
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("second", "2", true), kValueLocked);
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("second", std::nullopt, false), kValueLocked);
  EXPECT_THAT(listed(settings_), ElementsAre("first=1", "second=locked", "third=1"));
}

TEST_F(PrintSettingsTest, RefusesAnEmptyKey) {
  std::optional<std::string> value;
  EXPECT_EQ(settings_.PMPrintSettingsGetValue("", value), kInvalidParameter);
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("", "1", false), kInvalidParameter);
  EXPECT_EQ(settings_.PMPrintSettingsSetValue("", std::nullopt, false), kInvalidParameter);
  EXPECT_EQ(settings_.entries().size(), 3U);
}

TEST_F(PrintSettingsTest, HasTheSystemsNumbersForEveryRefusal) {
  EXPECT_EQ(kNoError, 0);
  EXPECT_EQ(kInvalidParameter, -50);
  EXPECT_EQ(kValueLocked, -30878);
}

TEST_F(PrintSettingsTest, CopiesIndependentlyOfTheOriginalAndWithItsLocks) {
  settings_.PMPrintSettingsSetValue("second", "locked", true);
  PrintSettings copy = settings_;
  EXPECT_EQ(copy.PMPrintSettingsSetValue("second", "2", false), kValueLocked);
  copy.PMPrintSettingsSetValue("first", "2", false);
  EXPECT_EQ(got(settings_, "first"), "1");
  EXPECT_EQ(got(copy, "first"), "2");
}

}  // namespace
}  // namespace tandemtrim::platform::linux
