#include "host/panel/job_settings.hpp"

#include <gmock/gmock.h>

#include "host/cups/ppd.hpp"
#include "tests/host/failure_matcher.hpp"
#include "tests/host/panel/fake_bundle.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class SettledSettings : public testing::Test {
 protected:
  PpdHandle ppd(const std::string& extension) const {
    const std::string attribute = extension.empty() ? "" : "*APDialogExtension: \"" + extension + "\"\n";
    return openPpd(folder.write("test.ppd", "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n" + attribute),
                   "test.ppd");
  }
  JobSettings settle(ppd_file_t* openPpd, const Options& starting, const Options& ofQueue = {}) {
    return settleSettings(line, "Morva", openPpd, ofQueue, starting,
                          [this](const std::string& message) { messages.push_back(message); });
  }

  test::TemporaryFolder folder;
  CommandLine line;
  std::vector<std::string> messages;
};

TEST_F(SettledSettings, ContainThePanelsOptionsAndAllOthers) {
  line.plugin = writeBundle(folder, "Fake.bundle");
  line.inputs = {{"Top", "9"}};
  const auto file = ppd("/Library/Printers/Morva/Fake.bundle");
  const auto settings = settle(file.get(), {{"media", "A4"}, {"FakePosition", "Right"}});
  EXPECT_EQ(settings.options,
            (Options{{"media", "A4"}, {"FakePosition", "Right"}, {"FakeOn", "On"}, {"FakeTop", "9"}}));
  EXPECT_TRUE(settings.panel);
}

TEST_F(SettledSettings, ComeFromTheBundleThatThePpdNames) {
  writeBundle(folder, "Other.bundle", {"MakesNothing", ""});
  writeBundle(folder, "Fake.bundle");
  line.plugin = folder.path().string();
  EXPECT_TRUE(settle(ppd("Fake.bundle/").get(), {}).panel);
}

TEST_F(SettledSettings, ComeWithAWarningIfThePrinterHasNoPpd) {
  line.plugin = writeBundle(folder, "Fake.bundle");
  EXPECT_TRUE(settle(nullptr, {}).panel);
  EXPECT_THAT(messages,
              ElementsAre("Morva has no PPD: the limits are the panel's own, and this queue's filters "
                          "may not know the panel's options"));
}

TEST_F(SettledSettings, LoseThePanelsOptionsIfThePrinterHasNoPanel) {
  line.files = {"document.pdf"};
  writeBundle(folder, "Fake.bundle");
  line.plugin = folder.path().string();
  const auto settings = settle(ppd("").get(), {{"FakeTop", "9"}, {"media", "A4"}, {"fakeON", "On"}});
  EXPECT_EQ(settings.options, (Options{{"media", "A4"}}));
  EXPECT_FALSE(settings.panel);
  EXPECT_THAT(messages, ElementsAre("Morva has no panel; FakeTop=9 is left out",
                                    "Morva has no panel; fakeON=On is left out"));
}

TEST_F(SettledSettings, AreUnchangedIfNoPanelIsInstalled) {
  line.files = {"document.pdf"};
  line.plugin = folder.path().string();
  for (const auto& opened : {ppd(""), PpdHandle()}) {
    EXPECT_EQ(settle(opened.get(), {{"FakeTop", "9"}}).options, (Options{{"FakeTop", "9"}}));
    EXPECT_THAT(messages, IsEmpty());
  }
}

TEST_F(SettledSettings, ComeFromTheOnlyPanelIfThePrinterHasNoPpd) {
  writeBundle(folder, "Fake.bundle");
  line.plugin = folder.path().string();
  EXPECT_TRUE(settle(nullptr, {}).panel);
  writeBundle(folder, "Other.bundle");
  EXPECT_FALSE(settle(nullptr, {}).panel);
  EXPECT_EQ(
      messages.back(),
      "Morva has no panel, since it has no PPD that names one, and no panel or more than one is installed "
      "(choose one with --plugin)");
}

TEST_F(SettledSettings, NeedNoPluginIfThePrinterHasNoPanel) {
  line.plugin = folder.path().string();
  line.files = {"document.pdf"};
  EXPECT_EQ(settle(ppd("").get(), {{"media", "A4"}}).options, (Options{{"media", "A4"}}));
  EXPECT_THAT(messages, IsEmpty());
}

TEST_F(SettledSettings, ComeWithANoteIfThePrinterHasNoPanelAndNothingIsPrinted) {
  settle(ppd("").get(), {});
  EXPECT_THAT(messages, ElementsAre("Morva has no panel, since its PPD names none"));
}

TEST_F(SettledSettings, AcceptThePanelsKeywordsInAnyLetterCase) {
  line.plugin = writeBundle(folder, "Fake.bundle");
  const auto settings = settle(
      nullptr, {{"faketop", "3"}, {"FAKEposition", "Left"}, {"FakePosition", "Right"}, {"mEdia", "A4"}});
  EXPECT_THAT(settings.options,
              testing::IsSupersetOf(Options{{"FakeTop", "3"}, {"FakePosition", "Right"}, {"mEdia", "A4"}}));
  EXPECT_EQ(settings.options.size(), 4U);
}

TEST_F(SettledSettings, AreRefusedForAnyInputIfThePrinterHasNoPanel) {
  line.inputs = {{"Top", "9"}};
  const auto failure = failureOf([&] { settle(ppd("").get(), {}); });
  EXPECT_EQ(failure.exitStatus(), kFailed);
  EXPECT_THAT(failure.what(), AllOf(HasSubstr("Morva has no panel"), HasSubstr("--set")));
}

TEST_F(SettledSettings, AreRefusedIfThePrintersPluginIsMissing) {
  line.plugin = folder.path().string();
  const auto failure = failureOf([&] { settle(ppd("Fake.bundle").get(), {}); });
  EXPECT_EQ(failure.exitStatus(), kFailed);
  EXPECT_THAT(failure.what(),
              AllOf(HasSubstr("Fake.bundle"), HasSubstr("--without-panel"), HasSubstr("nothing was sent")));
}

TEST_F(SettledSettings, AreUnchangedIfAnOptionalPanelBreaksMidway) {
  line.plugin = writeBundle(folder, "Fake.bundle", {"FakePrincipal", "summaryInfo raises"});
  line.withoutPanel = true;
  const Options starting{{"media", "A4"}};
  const auto settings = settle(ppd("Fake.bundle").get(), starting);
  EXPECT_EQ(settings.options, starting);
  EXPECT_FALSE(settings.panel);
  EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr("not available"), HasSubstr("broken on purpose"))));
}

TEST_F(SettledSettings, ComeFromAnOptionalPanelIfItWorks) {
  line.plugin = writeBundle(folder, "Fake.bundle");
  line.withoutPanel = true;
  EXPECT_TRUE(settle(ppd("Fake.bundle").get(), {}).panel);
}

TEST_F(SettledSettings, AreRefusedForAnyInputIfAnOptionalPanelIsMissing) {
  line.plugin = folder.path().string();
  line.withoutPanel = true;
  line.inputs = {{"Top", "9"}};
  EXPECT_THAT(failureOf([&] { settle(ppd("Fake.bundle").get(), {}); }).what(), HasSubstr("need the panel"));
}

TEST_F(SettledSettings, AreRefusedForAWrongInputEvenIfThePanelIsOptional) {
  line.plugin = writeBundle(folder, "Fake.bundle");
  line.withoutPanel = true;
  line.inputs = {{"Middle", "9"}};
  EXPECT_EQ(failureOf([&] { settle(ppd("Fake.bundle").get(), {}); }).exitStatus(), kWrongCommandLine);
}

// The lines of a PPD for an option with two choices, of which `marked` is the default.
std::string ppdOption(const std::string& keyword, const std::string& marked, const std::string& other) {
  const auto star = "*" + keyword;
  return "*OpenUI " + star + "/" + keyword + ": PickOne\n*Default" + keyword + ": " + marked + "\n" + star +
         " " + marked + ": \"\"\n" + star + " " + other + ": \"\"\n*CloseUI: " + star + "\n";
}

TEST_F(SettledSettings, StartFromThePpdThenTheQueueThenTheUser) {
  line.plugin = writeBundle(folder, "Fake.bundle");
  const auto file =
      openPpd(folder.write("test.ppd",
                           "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n"
                           "*APDialogExtension: \"Fake.bundle\"\n" +
                               ppdOption("FakeTop", "7", "5") + ppdOption("FakePosition", "Right", "Left") +
                               ppdOption("Glue", "Hot", "Cold")),
              "test.ppd");
  const auto of = [&](const Options& starting, const Options& ofQueue) {
    return settle(file.get(), starting, ofQueue).options;
  };
  EXPECT_THAT(of({}, {}), UnorderedElementsAre(Option{"FakeTop", "7"}, Option{"FakePosition", "Right"},
                                               Option{"FakeOn", "On"}));
  EXPECT_THAT(
      of({}, {{"faketop", "8"}, {"x-note", "1"}}),
      UnorderedElementsAre(Option{"FakeTop", "8"}, Option{"FakePosition", "Right"}, Option{"FakeOn", "On"}));
  EXPECT_THAT(
      of({{"FakeTop", "9"}}, {{"FakeTop", "8"}}),
      UnorderedElementsAre(Option{"FakeTop", "9"}, Option{"FakePosition", "Right"}, Option{"FakeOn", "On"}));
}

}  // namespace
}  // namespace tandemtrim::host
