#include "host/panel/plugin_loader.hpp"

#include <gmock/gmock.h>

#include "adapters/linux/print_settings.hpp"
#include "host/panel/panel_session.hpp"
#include "tests/host/failure_matcher.hpp"
#include "tests/host/panel/fake_bundle.hpp"

namespace tandemtrim::host {
namespace {

using test::FakeBundle;
using testing::HasSubstr;

const Report quiet = [](const std::string&) {};

// Loads the bundle's plug-in and runs its panel with two inputs.
void play(const std::string& bundle) {
  platform::linux::PrintSettings settings;
  CommandLine line;
  line.inputs = {{"Valid", "On"}, {"Top", "7"}};
  playPanel(openBundle(bundle, quiet), settings, nullptr, {}, line, quiet);
}

PluginFailure pluginFailureOf(const std::string& bundle) {
  try {
    play(bundle);
  } catch (const PluginFailure& failure) {
    return failure;
  }
  ADD_FAILURE() << "the plug-in did not fail";
  return PluginFailure(Fact(""));
}

TEST(APlugin, ThatWorksIsNotRefused) {
  const test::TemporaryFolder folder;
  EXPECT_NO_THROW(play(writeBundle(folder, "Fake.bundle")));
}

struct Broken {
  std::string name;
  FakeBundle bundle;
  std::string reason;
};

class ABrokenPlugin : public testing::TestWithParam<Broken> {};

TEST_P(ABrokenPlugin, IsReportedWithItsReason) {
  const test::TemporaryFolder folder;
  const auto path = writeBundle(folder, "Fake.bundle", GetParam().bundle);
  const auto failure = pluginFailureOf(path);
  EXPECT_THAT(failure.what(), HasSubstr(path));
  EXPECT_THAT(failure.what(), HasSubstr(GetParam().reason));
}

INSTANTIATE_TEST_SUITE_P(
    Plugins, ABrokenPlugin,
    testing::Values(Broken{"NoModule", {"FakePrincipal", "", false}, "TandemTrim-memory"},
                    Broken{"NoPrincipalClass", {"", ""}, "NSPrincipalClass"},
                    Broken{"NoSymbol", {"NotExported", ""}, "does not export NotExported"},
                    Broken{"NothingMade", {"MakesNothing", ""}, "MakesNothing did not make a plug-in"},
                    Broken{
                        "BundleRefused", {"FakePrincipal", "initWithBundle false"}, "refuses its own bundle"},
                    Broken{"NoList", {"FakePrincipal", "PDEPanelsForType none"}, "no panel"},
                    Broken{"EmptyList", {"FakePrincipal", "PDEPanelsForType empty"}, "no panel"},
                    Broken{"NullPanel", {"FakePrincipal", "PDEPanelsForType null-panel"}, "no panel"},
                    Broken{"NoView", {"FakePrincipal", "panelView none"}, "view could not be loaded"},
                    Broken{"AnotherView", {"FakePrincipal", "panelView other"}, "needs a screen"},
                    Broken{"SaveFails",
                           {"FakePrincipal", "saveValuesAndReturnError false"},
                           "the disk of the fake is full"}),
    [](const auto& tested) { return tested.param.name; });

struct Raising {
  // The call that raises an exception, and what messages call it.
  std::string call;
  std::string operation = call;
};

class ARaisingPlugin : public testing::TestWithParam<Raising> {};

TEST_P(ARaisingPlugin, IsReportedWithWhatItRaised) {
  const test::TemporaryFolder folder;
  const auto& [call, operation] = GetParam();
  const auto standard = writeBundle(folder, "Standard.bundle", {"FakePrincipal", call + " raises"});
  EXPECT_EQ(pluginFailureOf(standard).what(),
            "the plug-in " + standard + " failed in " + operation + ": broken on purpose");
  const auto other = writeBundle(folder, "Other.bundle", {"FakePrincipal", call + " raises-int"});
  EXPECT_EQ(pluginFailureOf(other).what(),
            "the plug-in " + other + " failed in " + operation + " without giving a reason");
}

INSTANTIATE_TEST_SUITE_P(Plugins, ARaisingPlugin,
                         testing::Values(Raising{"initWithBundle"}, Raising{"PDEPanelsForType"},
                                         Raising{"panelName"}, Raising{"supportedPPDOptionKeys"},
                                         Raising{"panelView"}, Raising{"settings"}, Raising{"willShow"},
                                         Raising{"restoreValuesAndReturnError"}, Raising{"type", "the input"},
                                         Raising{"saveValuesAndReturnError"}, Raising{"summaryInfo"}),
                         [](const auto& tested) { return tested.param.call; });

TEST(APluginWithoutAPanel, IsReportedWithThePropertyListsThatCannotBeRead) {
  const test::TemporaryFolder folder;
  const auto path = writeBundle(folder, "Fake.bundle", {"FakePrincipal", "PDEPanelsForType none"});
  EXPECT_THAT(pluginFailureOf(path).what(), HasSubstr("its setting information may be missing"));
  const auto binary = folder.write("Fake.bundle/Contents/Resources/A.plist", "bplist00");
  const auto broken = folder.write("Fake.bundle/Contents/Resources/B.plist", "<plist>\n");
  EXPECT_THAT(pluginFailureOf(path).what(),
              testing::EndsWith("no panel for the print dialog; " + binary +
                                ": a property list in binary form; only XML is read; " + broken +
                                ":2: not a valid XML property list"));
}

TEST(APluginWithABrokenTableOfTexts, IsUsedAndTheTableIsReported) {
  const test::TemporaryFolder folder;
  const auto path = writeBundle(folder, "Fake.bundle");
  const auto table = folder.write("Fake.bundle/Contents/Resources/en.lproj/Localizable.strings", "Top = ");
  std::vector<std::string> messages;
  openBundle(path, [&](const std::string& message) { messages.push_back(message); });
  EXPECT_THAT(messages, testing::ElementsAre("the panel's texts stay untranslated: " + table +
                                             ":1: not a valid string table"));
}

TEST(AMissingBundle, IsReported) {
  EXPECT_THAT(pluginFailureOf("/nowhere/Fake.bundle").what(), HasSubstr("/nowhere/Fake.bundle"));
}

}  // namespace
}  // namespace tandemtrim::host
