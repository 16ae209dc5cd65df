#include "host/applications/portal_rules.hpp"

#include <map>

#include <gmock/gmock.h>

#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr PortalVersion kOld{1, 16};
constexpr PortalVersion kNew{1, 18};

TEST(ThePortalsVersion, IsReadFromItsProgramsOutput) {
  EXPECT_EQ(versionIn("xdg-desktop-portal 1.16.0\n"), kOld);
  EXPECT_GE(*versionIn("xdg-desktop-portal 1.17.0"), kFirstWithSettings);
  EXPECT_LT(*versionIn("1.9"), kFirstWithSettings);
  EXPECT_EQ(versionIn("unknown option --version"), std::nullopt);
  EXPECT_EQ(versionIn("99999999999999.1"), std::nullopt);
}

// A portal that finds the user's and the system's folders by variables.
class ThePortal : public testing::Test {
 protected:
  ThePortal() {
    for (const char* folder : {"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS", "XDG_DATA_HOME", "XDG_DATA_DIRS"})
      variables_[folder] = (folder_.path() / folder).string();
    variables_["XDG_CURRENT_DESKTOP"] = "Special:GNOME";
    backend("gtk", "gnome");
    backend("tandemtrim", "TandemTrimTest");
  }

  void backend(const std::string& name, const std::string& desktops,
               const std::string& parts = "org.freedesktop.impl.portal.Print") {
    folder_.write("portals/" + name + ".portal",
                  "[portal]\nDBusName=x\nInterfaces=" + parts + ";\nUseIn=" + desktops + ";\n");
  }

  std::string settings(const std::string& folder, const std::string& name, const std::string& text) {
    return folder_.write(folder + "/xdg-desktop-portal/" + name, text);
  }

  [[nodiscard]] PortalPlaces places() const {
    return portalPlaces([this](const std::string& name) -> std::optional<std::string> {
      const auto variable = variables_.find(name);
      return variable == variables_.end() ? std::nullopt : std::optional(variable->second);
    });
  }

  // With XDG_DESKTOP_PORTAL_DIR, the portal looks for settings and backends in one folder.
  [[nodiscard]] ChosenBackend chosen(PortalVersion version) {
    variables_["XDG_DESKTOP_PORTAL_DIR"] = (folder_.path() / "portals").string();
    return chosenBackend(places(), version);
  }

  test::TemporaryFolder folder_;
  std::map<std::string, std::string> variables_;
};

TEST_F(ThePortal, ReadsTheSettingsOfTheHighestPrecedence) {
  // In rising precedence.
  const std::vector<std::pair<std::string, std::string>> order{
      {"XDG_DATA_DIRS", "portals.conf"},         {"XDG_DATA_DIRS", "gnome-portals.conf"},
      {"XDG_DATA_DIRS", "special-portals.conf"}, {"XDG_DATA_HOME", "portals.conf"},
      {"XDG_CONFIG_DIRS", "portals.conf"},       {"XDG_CONFIG_DIRS", "gnome-portals.conf"},
  };
  for (const auto& [folder, name] : order) {
    const auto file = settings(folder, name, "");
    EXPECT_EQ(systemSettings(places()), file);
  }
  settings("XDG_CONFIG_DIRS", "kde-portals.conf", "");
  EXPECT_EQ(systemSettings(places())->filename(), "gnome-portals.conf");
}

TEST_F(ThePortal, ReadsTheUsersSettingsForTheDesktopFirst) {
  EXPECT_EQ(userSettings(places()), folder_.path() / "XDG_CONFIG_HOME/xdg-desktop-portal/portals.conf");
  settings("XDG_CONFIG_HOME", "portals.conf", "");
  const auto ofDesktop = settings("XDG_CONFIG_HOME", "gnome-portals.conf", "");
  EXPECT_EQ(userSettings(places()), ofDesktop);
}

TEST_F(ThePortal, TakesTheBackendThatItsSettingsName) {
  const struct {
    const char* text;
    std::optional<std::string> name;
  } cases[]{
      {"[preferred]\norg.freedesktop.impl.portal.Print=tandemtrim\n", "tandemtrim"},
      {"[preferred]\norg.freedesktop.impl.portal.Print=missing;tandemtrim;gtk\ndefault=gtk", "tandemtrim"},
      {"[preferred]\norg.freedesktop.impl.portal.Print=gtk\n[preferred]\norg.freedesktop.impl.portal.Print="
       "tandemtrim",
       "tandemtrim"},
      {"[preferred]\ndefault=tandemtrim", "tandemtrim"},
      {"[preferred]\ndefault=*", "gtk"},
      {"[preferred]\ndefault=tandemtrim\norg.freedesktop.impl.portal.Print=none;tandemtrim", std::nullopt},
      {"[preferred]\ndefault=missing", std::nullopt},
      {"[other]\ndefault=gtk", std::nullopt},
      {"damaged", std::nullopt},
  };
  for (const auto& each : cases) {
    const auto file = folder_.write("portals/portals.conf", each.text);
    const auto backend = chosen(kNew);
    EXPECT_EQ(backend.name, each.name) << each.text;
    EXPECT_EQ(backend.settings, file);
    EXPECT_THAT(backend.reason, HasSubstr(file));
  }
}

TEST_F(ThePortal, TakesTheDesktopsBackendIfThereAreNoSettings) {
  for (const auto version : {kOld, kNew}) {
    EXPECT_EQ(chosen(version).name, "gtk");
    variables_["XDG_CURRENT_DESKTOP"] = "tandemtrimtest:GNOME";
    EXPECT_EQ(chosen(version).name, "tandemtrim");
    EXPECT_THAT(chosen(version).reason, HasSubstr("tandemtrimtest"));
    variables_["XDG_CURRENT_DESKTOP"] = "Special:GNOME";
  }
}

TEST_F(ThePortal, ReadsTheSettingsOfADesktopByItsLowerCaseName) {
  variables_["XDG_CURRENT_DESKTOP"] = "X-Desk2";
  const auto ofDesktop = settings("XDG_CONFIG_HOME", "x-desk2-portals.conf", "");
  EXPECT_EQ(userSettings(places()), ofDesktop);
}

TEST_F(ThePortal, TreatsAnEmptyVariableAsUnset) {
  variables_["XDG_DATA_DIRS"] = "";
  EXPECT_THAT(places().dataFolders, ElementsAre("/usr/local/share", "/usr/share"));
}

TEST_F(ThePortal, ReadsSettingsOnlyInVersionsThatHaveThem) {
  folder_.write("portals/portals.conf", "[preferred]\ndefault=tandemtrim\n");
  EXPECT_EQ(chosen(kOld).name, "gtk");
  EXPECT_EQ(chosen(kFirstWithSettings).name, "tandemtrim");
}

TEST_F(ThePortal, FallsBackToGtksBackendAndInOldVersionsToAnyOther) {
  variables_["XDG_CURRENT_DESKTOP"] = "";
  backend("another", "", "org.freedesktop.impl.portal.FileChooser");
  EXPECT_EQ(chosen(kOld).name, "gtk");
  EXPECT_EQ(chosen(kNew).name, "gtk");
  std::filesystem::remove(folder_.path() / "portals/gtk.portal");
  EXPECT_EQ(chosen(kOld).name, "tandemtrim");
  EXPECT_EQ(chosen(kNew).name, std::nullopt);
}

TEST_F(ThePortal, FindsTheUsersBackendsOnlyInVersionsThatSearchManyFolders) {
  folder_.write("XDG_DATA_HOME/xdg-desktop-portal/portals/own.portal", "[portal]\nUseIn=one;two\n");
  EXPECT_EQ(backendFile(places(), kNew, "own"), std::nullopt);
  const auto file = backendFile(places(), kFirstWithManyFolders, "own");
  ASSERT_TRUE(file);
  EXPECT_THAT(desktopsOf(*file), ElementsAre("one", "two"));
  EXPECT_THAT(backendFolders(places(), kNew), ElementsAre("/usr/share/xdg-desktop-portal/portals"));
}

}  // namespace
}  // namespace tandemtrim::host
