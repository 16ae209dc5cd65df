#include "adapters/linux/bundle.hpp"

#include <cerrno>

#include <dirent.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "adapters/linux/bundle_info.hpp"
#include "tests/support/temporary_folder.hpp"

namespace {

// Whether reading the entries of any folder fails.
bool diskFails = false;

}  // namespace

// Replaces the C library's.
extern "C" dirent* readdir(DIR* folder) {
  static const auto original = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, "readdir"));
  if (!diskFails) return original(folder);
  errno = EIO;
  return nullptr;
}

namespace tandemtrim::platform::linux {
namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::Optional;

class BundleTest : public testing::Test {
 protected:
  BundleTest() {
    info(
        "<key>NSPrincipalClass</key><string>Principal</string>"
        "<key>CFBundleExecutable</key><string>Module</string>"
        "<key>CFBundleDevelopmentRegion</key><string>en</string>");
    table("en",
          "\"Top\" = \"Top edge\"; \"Left\" = \"Left edge\"; \"Off\" = \"\"; \"100\" = \"100% %s %n\";");
    table("fr", "\"Top\" = \"Haut\";");
    table("pt-BR", "\"Top\" = \"Superior\";");
  }

  void info(const std::string& entries) const {
    folder_.write("Sample.bundle/Contents/Info.plist",
                  "<plist version=\"1.0\"><dict>" + entries + "</dict></plist>");
  }
  void table(const std::string& language, const std::string& text,
             const std::string& name = "Localizable") const {
    resource(language + ".lproj/" + name + ".strings", text);
  }
  void resource(const std::string& name, const std::string& text = "") const {
    folder_.write("Sample.bundle/Contents/Resources/" + name, text);
  }

  [[nodiscard]] std::string path() const { return (folder_.path() / "Sample.bundle").string(); }
  [[nodiscard]] std::string at(const std::string& name) const { return path() + "/Contents/" + name; }

  [[nodiscard]] std::shared_ptr<Bundle> open(const std::vector<std::string>& languages = {}) const {
    std::string reason;
    auto bundle = Bundle::open(path(), reason, languages);
    EXPECT_TRUE(bundle) << reason;
    EXPECT_EQ(reason, "");
    return bundle;
  }
  [[nodiscard]] BundleInfo readInfo() const {
    std::string reason;
    auto read = BundleInfo::read(path(), reason);
    if (!read) throw std::runtime_error(reason);
    EXPECT_EQ(reason, "");
    return *read;
  }
  static std::string refusal(const std::string& path) {
    std::string reason;
    EXPECT_THAT(Bundle::open(path, reason), IsNull());
    return reason;
  }
  static std::string text(const std::shared_ptr<Bundle>& bundle, std::string_view key) {
    return bundle->localizedStringForKey(key, "", std::nullopt);
  }

  TemporaryFolder folder_;
};

TEST_F(BundleTest, ReadsItsInfoPropertyList) {
  EXPECT_EQ(readInfo().principalClass(), "Principal");
  EXPECT_EQ(readInfo().executableName(), "Module");
  EXPECT_EQ(readInfo().modulePath("-memory"), at("Linux/Module-memory"));
  EXPECT_TRUE(readInfo().dictionary().contains("CFBundleDevelopmentRegion"));
}

TEST_F(BundleTest, NamesItsModulesAfterItselfWithoutAValidExecutableName) {
  for (const char* name :
       {"", "<key>CFBundleExecutable</key><string>../../evil</string>",
        "<key>CFBundleExecutable</key><string>..</string>", "<key>CFBundleExecutable</key><string/>",
        "<key>CFBundleExecutable</key><integer>1</integer>"}) {
    info(name);
    EXPECT_EQ(readInfo().modulePath("-memory"), at("Linux/Sample-memory")) << name;
  }
}

TEST_F(BundleTest, HasNoPrincipalClassUnlessItIsGivenAsAText) {
  info("");
  EXPECT_EQ(readInfo().principalClass(), std::nullopt);
  info("<key>NSPrincipalClass</key><array/>");
  EXPECT_EQ(readInfo().principalClass(), std::nullopt);
}

TEST_F(BundleTest, ListsTheOptionKeywordsOfItsPanelsThatAreTexts) {
  info(
      "<key>PrintOptionKeywords</key><array><string>First</string><integer>7</integer><string>Second</"
      "string></array>");
  EXPECT_THAT(readInfo().optionKeywords(), ElementsAre("First", "Second"));
  info("<key>PrintOptionKeywords</key><string>First</string>");
  EXPECT_THAT(readInfo().optionKeywords(), IsEmpty());
  info("");
  EXPECT_THAT(readInfo().optionKeywords(), IsEmpty());
}

TEST_F(BundleTest, HasAnAbsolutePathHoweverItIsOpened) {
  const auto before = fs::current_path();
  fs::current_path(folder_.path());
  std::string reason;
  for (const char* name : {"Sample.bundle", "Sample.bundle/", "./Sample.bundle/../Sample.bundle//"}) {
    const auto bundle = Bundle::open(name, reason);
    ASSERT_TRUE(bundle) << reason;
    EXPECT_EQ(bundle->path(), path()) << name;
  }
  fs::current_path(before);
}

TEST_F(BundleTest, CannotBeOpenedWithoutAFolder) {
  const auto missing = path() + ".missing";
  for (const auto& where : {missing, at("Info.plist"), std::string()})
    EXPECT_EQ(refusal(where), "there is no folder " + where);
}

TEST_F(BundleTest, CannotBeOpenedWithoutAnInfoPropertyList) {
  fs::remove(at("Info.plist"));
  EXPECT_EQ(refusal(path()), "there is no file " + at("Info.plist"));
}

TEST_F(BundleTest, NamesABrokenInfoPropertyListAndUsesTheAlphabeticallyFirstLanguage) {
  table("ar", "");
  folder_.write("Sample.bundle/Contents/Info.plist", "<plist><array/></plist>");
  std::string reason;
  EXPECT_FALSE(BundleInfo::read(path(), reason));
  EXPECT_EQ(reason, at("Info.plist") + ": its root is not a dictionary");
  EXPECT_EQ(open({"ja"})->localization(), "ar");
}

TEST_F(BundleTest, FindsResourcesFirstOutsideAndThenInsideTheChosenLocalization) {
  resource("both.txt");
  resource("fr.lproj/both.txt");
  resource("fr.lproj/localized.txt");
  resource("en.lproj/english.txt");
  resource("bare");
  const auto bundle = open({"fr"});
  EXPECT_EQ(bundle->pathForResource("both", "txt"), at("Resources/both.txt"));
  EXPECT_EQ(bundle->pathForResource("localized", "txt"), at("Resources/fr.lproj/localized.txt"));
  EXPECT_EQ(bundle->pathForResource("english", "txt"), std::nullopt);
  EXPECT_EQ(bundle->pathForResource("bare", ""), at("Resources/bare"));
  EXPECT_EQ(bundle->pathForResource("bare", "txt"), std::nullopt);
}

TEST_F(BundleTest, FindsNoResourceOutsideItsFolder) {
  resource("inner/file.txt");
  resource(".txt");
  folder_.write("Sample.bundle/Contents/outside.txt", "");
  const auto bundle = open();
  const std::pair<std::string_view, std::string_view> names[] = {{"../outside", "txt"},
                                                                 {"inner/file", "txt"},
                                                                 {"..", ""},
                                                                 {".", ""},
                                                                 {"", ""},
                                                                 {"", "txt"},
                                                                 {"inner", "/../../outside.txt"},
                                                                 {"/etc/passwd", ""},
                                                                 {std::string_view("inner\0x", 7), ""}};
  for (const auto& [name, type] : names)
    EXPECT_EQ(bundle->pathForResource(name, type), std::nullopt) << name << type;
}

TEST_F(BundleTest, FollowsALinkToAFileAndIgnoresOneThatLeadsNowhere) {
  const auto elsewhere = folder_.write("elsewhere/Localizable.strings", "Top = Linked;");
  fs::create_directories(at("Resources/de.lproj"));
  fs::create_directories(at("Resources/ja.lproj"));
  fs::create_symlink(elsewhere, at("Resources/de.lproj/Localizable.strings"));
  fs::create_symlink(path() + ".missing", at("Resources/ja.lproj/Localizable.strings"));
  fs::create_symlink(elsewhere, at("Resources/linked.txt"));
  fs::create_symlink(at("Resources/loop.txt"), at("Resources/loop.txt"));
  EXPECT_EQ(text(open({"de"}), "Top"), "Linked");
  const auto bundle = open({"ja"});
  EXPECT_EQ(text(bundle, "Top"), "Top");
  EXPECT_EQ(bundle->pathForResource("linked", "txt"), at("Resources/linked.txt"));
  EXPECT_EQ(bundle->pathForResource("loop", "txt"), std::nullopt);
}

TEST_F(BundleTest, NamesATableThatIsNotAFileAndShowsItsKeys) {
  const auto pipe = at("Resources/fr.lproj/Localizable.strings");
  fs::remove(pipe);
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const auto bundle = open({"fr"});
  EXPECT_EQ(text(bundle, "Top"), "Top");
  EXPECT_THAT(bundle->brokenTables(), ElementsAre(pipe + ": cannot be read"));
}

TEST_F(BundleTest, ShowsTheTextsOfTheUsersLanguage) {
  EXPECT_EQ(text(open({"fr-CA", "pt-BR"}), "Top"), "Haut");
  EXPECT_EQ(text(open({"ja", "pt-BR"}), "Top"), "Superior");
  EXPECT_EQ(open({"fr-CA"})->localization(), "fr");
}

TEST_F(BundleTest, ShowsTheDevelopmentRegionsTextsToAnyOtherUser) {
  table("ar", "");
  EXPECT_EQ(text(open({"ja"}), "Top"), "Top edge");
  EXPECT_EQ(open()->localization(), "en");
  info("<key>CFBundleDevelopmentRegion</key><string>fr</string>");
  EXPECT_EQ(open({"ja"})->localization(), "fr");
  info("");
  EXPECT_EQ(open({"ja"})->localization(), "en");
}

TEST_F(BundleTest, ShowsTheAlphabeticallyFirstLanguageWhenTheDevelopmentRegionHasNoTexts) {
  info("<key>CFBundleDevelopmentRegion</key><string>ko</string>");
  for (const char* language : {"ja", "nl", "it", "de", "ar", "es", ""}) table(language, "");
  EXPECT_EQ(open({"tr"})->localization(), "ar");
}

TEST_F(BundleTest, IgnoresFilesThatAreNeitherLocalizationsNorStringTables) {
  resource("ja");
  resource("ja.txt");
  resource("ja.nib/Localizable.strings", "Top = Nib;");
  resource("en.lproj/notes.txt", "not a valid string table");
  const auto bundle = open({"ja"});
  EXPECT_EQ(bundle->localization(), "en");
  EXPECT_THAT(bundle->brokenTables(), IsEmpty());
}

TEST_F(BundleTest, ReadsTablesOfUpToAMegabyte) {
  const std::string entry = "Top = Long;";
  table("fr", entry + std::string((1U << 20U) - entry.size(), '\n'));
  EXPECT_EQ(text(open({"fr"}), "Top"), "Long");
  table("fr", entry + std::string((1U << 20U) - entry.size() + 1, '\n'));
  EXPECT_EQ(text(open({"fr"}), "Top"), "Top");
}

TEST_F(BundleTest, ShowsTheKeyWhereTheChosenTableLacksIt) {
  const auto bundle = open({"fr"});
  EXPECT_EQ(text(bundle, "Left"), "Left");
  EXPECT_EQ(text(bundle, "top"), "top");
  EXPECT_EQ(bundle->localizedStringForKey("Left", "value", std::nullopt), "value");
  EXPECT_EQ(bundle->localizedStringForKey("Top", "value", std::nullopt), "Haut");
}

TEST_F(BundleTest, ReadsEachTableFromTheFirstPlaceThatHasIt) {
  info("<key>CFBundleDevelopmentRegion</key><string>en-GB</string>");
  for (const char* name : {"InAll", "InTwo", "Outside"})
    resource(std::string(name) + ".strings", "Top = outside;");
  for (const char* name : {"InAll", "InTwo"}) table("en", "Top = region;", name);
  table("fr", "Top = chosen;", "InAll");
  table("pt-BR", "Top = another;", "Another");
  const auto bundle = open({"fr"});
  const auto textIn = [&](const char* name) { return bundle->localizedStringForKey("Top", "none", name); };
  EXPECT_EQ(textIn("InAll"), "chosen");
  EXPECT_EQ(textIn("InTwo"), "region");
  EXPECT_EQ(textIn("Outside"), "outside");
  EXPECT_EQ(textIn("Another"), "none");
}

TEST_F(BundleTest, ShowsTheTextsOutsideAnyLocalizationWhereNoLocalizationHasThem) {
  resource("Localizable.strings", "Top = Bare; Left = Bare;");
  EXPECT_EQ(text(open({"fr"}), "Top"), "Haut");
  EXPECT_EQ(text(open({"fr"}), "Left"), "Left");
  for (const char* language : {"en", "fr", "pt-BR"})
    fs::remove(at(std::string("Resources/") + language + ".lproj/Localizable.strings"));
  EXPECT_EQ(text(open({"fr"}), "Top"), "Bare");
  for (const char* language : {"en", "fr", "pt-BR"})
    fs::remove_all(at(std::string("Resources/") + language + ".lproj"));
  EXPECT_EQ(text(open({"fr"}), "Top"), "Bare");
}

TEST_F(BundleTest, DoesNotReplaceABrokenTableByAnother) {
  resource("Localizable.strings", "Top = Bare;");
  table("fr", "broken");
  const auto bundle = open({"fr"});
  EXPECT_EQ(text(bundle, "Top"), "Top");
  EXPECT_THAT(bundle->brokenTables(),
              ElementsAre(at("Resources/fr.lproj/Localizable.strings:1: not a valid string table")));
}

TEST_F(BundleTest, NamesATableThatIsTooLong) {
  table("fr", std::string((1U << 20U) + 1, '\n'));
  EXPECT_THAT(open({"fr"})->brokenTables(),
              ElementsAre(at("Resources/fr.lproj/Localizable.strings: longer than 1048576 bytes")));
}

TEST_F(BundleTest, NamesAFolderThatCannotBeRead) {
  fs::remove_all(at("Resources"));
  fs::create_symlink("Resources", at("Resources"));
  const auto bundle = open({"fr"});
  EXPECT_THAT(bundle->brokenTables(), ElementsAre(at("Resources: cannot be read")));
  EXPECT_THAT(bundle->brokenPropertyLists(), ElementsAre(at("Resources: cannot be read")));
}

TEST_F(BundleTest, NamesAFolderWhoseDiskFails) {
  diskFails = true;
  const auto bundle = open({"fr"});
  diskFails = false;
  EXPECT_THAT(bundle->brokenTables(), testing::Contains(at("Resources: cannot be read")));
}

TEST_F(BundleTest, NamesABrokenInfoPropertyListAmongTheBrokenTables) {
  folder_.write("Sample.bundle/Contents/Info.plist", "broken");
  EXPECT_THAT(open({"fr"})->brokenTables(), ElementsAre(at("Info.plist:1: not a valid XML property list")));
}

TEST_F(BundleTest, NamesThePropertyListsThatCannotBeRead) {
  resource("Sound.plist", "<plist><dict/></plist>");
  EXPECT_THAT(open({"fr"})->brokenPropertyLists(), IsEmpty());
  resource("Binary.plist", "bplist00");
  resource("Broken.plist", "<plist>\n<dict>");
  resource("fr.lproj/Array.plist", "<plist><array/></plist>");
  resource("en.lproj/Other.plist", "");
  EXPECT_THAT(open({"fr"})->brokenPropertyLists(),
              ElementsAre(at("Resources/Binary.plist: a property list in binary form; only XML is read"),
                          at("Resources/Broken.plist:2: not a valid XML property list"),
                          at("Resources/fr.lproj/Array.plist: its root is not a dictionary")));
  fs::remove_all(at("Resources"));
  EXPECT_THAT(open({"fr"})->brokenPropertyLists(), IsEmpty());
}

TEST_F(BundleTest, KeepsAnEmptyTextAndNeverTakesATextForAFormat) {
  const auto bundle = open();
  EXPECT_EQ(bundle->localizedStringForKey("Off", "value", std::nullopt), "");
  EXPECT_EQ(text(bundle, "100"), "100% %s %n");
  EXPECT_EQ(text(bundle, "%s%n"), "%s%n");
}

TEST_F(BundleTest, ReadsATableByItsName) {
  table("en", "Top = Other;", "Other");
  const auto bundle = open();
  EXPECT_EQ(bundle->localizedStringForKey("Top", "", "Other"), "Other");
  EXPECT_EQ(bundle->localizedStringForKey("Top", "", "Localizable"), "Top edge");
  EXPECT_EQ(bundle->localizedStringForKey("Top", "", "Missing"), "Top");
}

TEST_F(BundleTest, ShowsKeysWhereATableIsBrokenAndNamesTheTable) {
  table("fr", "\"Top\" = \"Haut\";\n\"Left\" = ;\n");
  fs::create_directories(at("Resources/fr.lproj/Folder.strings"));
  const auto bundle = open({"fr"});
  EXPECT_EQ(text(bundle, "Top"), "Top");
  EXPECT_THAT(bundle->brokenTables(),
              ElementsAre(at("Resources/fr.lproj/Folder.strings: cannot be read"),
                          at("Resources/fr.lproj/Localizable.strings:2: not a valid string table")));
  EXPECT_THAT(open({"en"})->brokenTables(), IsEmpty());
}

TEST_F(BundleTest, WorksWithoutAnyLocalization) {
  fs::remove_all(at("Resources"));
  const auto bundle = open({"fr"});
  EXPECT_EQ(bundle->localization(), std::nullopt);
  EXPECT_EQ(text(bundle, "Top"), "Top");
  EXPECT_EQ(bundle->pathForResource("any", "txt"), std::nullopt);
}

TEST_F(BundleTest, TakesTheLanguagesFromTheEnvironmentByDefault) {
  setenv("LANG", "pt_BR.UTF-8", 1);
  setenv("LANGUAGE", "fr", 1);
  std::string reason;
  const auto bundle = Bundle::open(path(), reason);
  setenv("LANG", "C.UTF-8", 1);
  unsetenv("LANGUAGE");
  ASSERT_TRUE(bundle) << reason;
  EXPECT_EQ(bundle->localization(), "fr");
}

}  // namespace
}  // namespace tandemtrim::platform::linux
