#include "host/applications/key_file.hpp"

#include <gmock/gmock.h>

#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(ASettingsFile, HasItsEntriesInGroups) {
  const auto entries = readEntries("# a comment\n\n[one]\r\n a = b=c \n[two]\na=\n[one]\na=last", "file");
  EXPECT_THAT(entries, ElementsAre(SettingsEntry{"one", "a", "b=c"}, SettingsEntry{"two", "a", ""},
                                   SettingsEntry{"one", "a", "last"}));
  EXPECT_EQ(valueOf(entries, "one", "a"), "last");
  EXPECT_EQ(valueOf(entries, "two", "a"), "");
  EXPECT_EQ(valueOf(entries, "two", "b"), std::nullopt);
}

TEST(ASettingsFile, IsRefusedWithItsFirstMalformedLine) {
  for (const char* odd : {"a=b", "[one]\nword", "[one]\n=b", "[]\na=b", "[one"}) {
    const std::string text = std::string("#\n") + odd + "\n";
    EXPECT_THAT(failureOf([&] { readEntries(text, "/a/file"); }).what(),
                testing::AllOf(HasSubstr("/a/file, line "), HasSubstr("correct or remove it")))
        << odd;
  }
  EXPECT_THAT(failureOf([] { readEntries("[a]\nb=c\nwhat\a\n", "f"); }).what(),
              HasSubstr("f, line 3: \"what\xEF\xBF\xBD\""));
}

TEST(ASettingsFile, HasListsWithoutEmptyParts) {
  EXPECT_THAT(partsOf("gnome; gtk;;"), ElementsAre("gnome", "gtk"));
  EXPECT_THAT(partsOf("GNOME:Classic", ':'), ElementsAre("GNOME", "Classic"));
  EXPECT_THAT(partsOf(""), ElementsAre());
}

}  // namespace
}  // namespace tandemtrim::host
