#include "host/presets/preset_folders.hpp"

#include <fstream>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "host/whole_file.hpp"
#include "tests/host/failure_matcher.hpp"
#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

// What another program does right before a file is renamed without replacing another one.
std::function<void()> beforeRenaming = [] {};
bool isOnNetwork = false;
// The error of renaming without replacing; 0 if it succeeds.
int renamingError = 0;

}  // namespace
}  // namespace tandemtrim::host

// Replaces the C library's. A network file system cannot rename without replacing.
extern "C" int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                         unsigned flags) noexcept {
  using namespace tandemtrim::host;
  if (flags == RENAME_NOREPLACE) beforeRenaming();
  if (const int error = isOnNetwork ? EINVAL : renamingError; error != 0 && flags != 0) {
    errno = error;
    return -1;
  }
  return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string contentsOf(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

std::vector<std::string> filesBeside(const std::filesystem::path& file) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(file.parent_path()))
    names.push_back(entry.path().filename());
  return names;
}

const Preset kBooklet{
    "Booklet, 5 mm", {{"MVTandemTrim", "On"}, {"MVTopMargin", "5"}}, {{"sides", "two-sided-short-edge"}}};

class Presets : public testing::Test {
 protected:
  Presets() {
    setenv("XDG_CONFIG_HOME", own().c_str(), 1);
    setenv("XDG_CONFIG_DIRS", ("/nonexistent:" + administrators().string()).c_str(), 1);
  }
  ~Presets() override {
    unsetenv("XDG_CONFIG_HOME");
    unsetenv("XDG_CONFIG_DIRS");
    beforeRenaming = [] {};
    isOnNetwork = false;
    renamingError = 0;
  }

  [[nodiscard]] std::filesystem::path own() const { return folder_.path() / "own"; }
  [[nodiscard]] std::filesystem::path administrators() const { return folder_.path() / "etc"; }
  std::string write(const std::filesystem::path& base, const std::string& file, const std::string& text) {
    return folder_.write(base / "tandem-trim/presets/Family" / file, text);
  }
  // The names of all presets. Sets damaged files aside and records what is wrong with them.
  std::vector<std::string> names() {
    const auto [presets, faults] = presetsOf("Family");
    for (const auto& fault : faults) {
      if (const auto fact = setAside(fault)) reported.push_back(fact->english());
    }
    std::vector<std::string> names;
    for (const auto& kept : presets) names.push_back(kept.preset.name);
    return names;
  }

  std::vector<std::string> reported;
  Report report = [this](const std::string& message) { reported.push_back(message); };

 private:
  test::TemporaryFolder folder_;
};

TEST_F(Presets, AreKeptUntilTheyAreDeleted) {
  EXPECT_THAT(names(), IsEmpty());
  savePreset("Family", kBooklet);
  EXPECT_EQ(findPreset("Family", kBooklet.name, report), kBooklet);
  EXPECT_THAT(presetsOf("Another").presets, IsEmpty());
  auto changed = kBooklet;
  changed.panel.front().value = "Off";
  savePreset("Family", changed);
  EXPECT_EQ(findPreset("Family", kBooklet.name, report), changed);
  deletePreset("Family", kBooklet.name, report);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(reported, IsEmpty());
}

TEST_F(Presets, AreReadableFilesThatAUserMayWrite) {
  savePreset("Family", kBooklet);
  EXPECT_EQ(contentsOf(own() / "tandem-trim/presets/Family/Booklet, 5 mm.json"), R"({
  "panel": {
    "MVTandemTrim": "On",
    "MVTopMargin": "5"
  },
  "options": {
    "sides": "two-sided-short-edge"
  }
}
)");
  savePreset("Family", {"Größe", {{"note", "日本"}, {"byte", "\xE9"}}, {}});
  EXPECT_THAT(contentsOf(own() / "tandem-trim/presets/Family/Größe.json"),
              testing::AllOf(HasSubstr("\"note\": \"日本\""), HasSubstr("\"byte\": \"\uFFFD\"")));
  write(own(), "By hand.json", R"({"panel": {"MVTopMargin": "9"}})");
  EXPECT_EQ(findPreset("Family", "By hand", report), (Preset{"By hand", {{"MVTopMargin", "9"}}, {}}));
}

TEST_F(Presets, OfTheAdministratorCanBeHiddenButNotDeletedOrRenamed) {
  write(administrators(), "House.json", R"({"panel": {"MVTopMargin": "1"}})");
  write(administrators(), "Plain.json", "{}");
  savePreset("Family", {"House", {{"MVTopMargin", "2"}}, {}});
  EXPECT_THAT(presetsOf("Family").presets,
              ElementsAre(KeptPreset{{"House", {{"MVTopMargin", "2"}}, {}}, true},
                          KeptPreset{{"Plain", {}, {}}, false}));
  deletePreset("Family", "House", report);
  EXPECT_EQ(findPreset("Family", "House", report).panel.front().value, "1");
  EXPECT_THAT(failureOf([&] { deletePreset("Family", "House", report); }).what(),
              HasSubstr("is the administrator's"));
  EXPECT_THAT(failureOf([&] { renamePreset("Family", "Plain", "Mine", Taken::refuses, report); }).what(),
              HasSubstr("is the administrator's"));
  EXPECT_THAT(names(), ElementsAre("House", "Plain"));
}

TEST_F(Presets, OfTheAdministratorComeFromTheFirstFolderThatHasThem) {
  const auto later = administrators() / "later";
  setenv("XDG_CONFIG_DIRS", (administrators().string() + ":" + later.string()).c_str(), 1);
  write(administrators(), "House.json", R"({"panel": {"MVTopMargin": "1"}})");
  write(later, "House.json", R"({"panel": {"MVTopMargin": "2"}})");
  write(later, "Plain.json", "{}");
  EXPECT_THAT(presetsOf("Family").presets,
              ElementsAre(KeptPreset{{"House", {{"MVTopMargin", "1"}}, {}}, false},
                          KeptPreset{{"Plain", {}, {}}, false}));
}

TEST_F(Presets, AreRenamedWithoutReplacingOthersEvenOnANetworkFileSystem) {
  for (const bool network : {false, true}) {
    isOnNetwork = network;
    savePreset("Family", kBooklet);
    savePreset("Family", {"Other", {}, {}});
    EXPECT_THAT(
        failureOf([&] { renamePreset("Family", kBooklet.name, "Other", Taken::refuses, report); }).what(),
        HasSubstr("there is a preset Other already"));
    renamePreset("Family", kBooklet.name, "Brochure", Taken::refuses, report);
    EXPECT_THAT(names(), ElementsAre("Brochure", "Other"));
    EXPECT_EQ(findPreset("Family", "Brochure", report).panel, kBooklet.panel);
    deletePreset("Family", "Brochure", report);
  }
}

TEST_F(Presets, MayHaveAMegabyteAndNoMore) {
  const std::string begin = R"({"panel": {"note": ")";
  const std::string end = R"("}})";
  const std::size_t most = 1 << 20;
  const std::string note(most - begin.size() - end.size(), 'x');
  const auto file = write(own(), "Mine.json", begin + note + end);
  EXPECT_EQ(findPreset("Family", "Mine", report).panel, (Options{{"note", note}}));
  write(own(), "Mine.json", begin + note + end + "\n");
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(reported, ElementsAre(file + " cannot be read: it has more than 1048576 bytes"));
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(Presets, MayHaveANameOfTwoHundredBytesAndNoLongerOne) {
  const std::string longest(200, 'x');
  savePreset("Family", {longest, {}, {}});
  EXPECT_THAT(names(), ElementsAre(longest));
  EXPECT_STREQ(failureOf([&] {
                 savePreset("Family", {longest + 'x', {}, {}});
               }).what(),
               ("the name of a preset is too long: " + longest + "...").c_str());
}

TEST_F(Presets, AreFilesOfTheirNamesWhereAFileMayHaveThem) {
  EXPECT_EQ(presetFile("Family", "a^b (1) & #2~.$'!").filename(), "a^b (1) & #2~.$'!.json");
  EXPECT_EQ(presetFile("Family", "%/\\:*?\"<>|").filename(), "%25%2F%5C%3A%2A%3F%22%3C%3E%7C.json");
  EXPECT_EQ(presetFile("Family", ".a.b").filename(), "%2Ea.b.json");
}

TEST_F(Presets, NeverContainOptionsOfOneJob) {
  write(own(), "Mine.json",
        R"({"options": {"copies": "3", "sides": "one-sided", "job-hold-until": "indefinite"}})");
  EXPECT_THAT(findPreset("Family", "Mine", report).options, ElementsAre(Option{"sides", "one-sided"}));
}

TEST_F(Presets, ReplaceOthersIfTheUserAgrees) {
  savePreset("Family", kBooklet);
  savePreset("Family", {"Other", {}, {}});
  setPresetOfPrinter("Family", "Morva", kBooklet.name);
  renamePreset("Family", kBooklet.name, "Other", Taken::isReplaced, report);
  EXPECT_THAT(names(), ElementsAre("Other"));
  EXPECT_EQ(findPreset("Family", "Other", report).panel, kBooklet.panel);
  EXPECT_EQ(presetOfPrinter("Family", "Morva"), "Other");
}

TEST_F(Presets, ThatAreUnknownAreReportedWithTheKnownOnes) {
  EXPECT_THAT(failureOf([&] { findPreset("Family", "None", report); }).what(),
              HasSubstr("there is no preset None; there are no presets for these printers"));
  savePreset("Family", kBooklet);
  savePreset("Family", {"Other", {}, {}});
  EXPECT_THAT(failureOf([&] { findPreset("Family", "None", report); }).what(),
              HasSubstr("there are: Booklet, 5 mm, Other"));
}

TEST_F(Presets, ThatAreDamagedAreSetAsideAndReported) {
  for (const std::string text :
       {"", "{", "[]", R"({"panel": []})", R"({"panel": {"": "x"}})", R"({"options": {"a": 1}})"}) {
    const auto file = write(own(), "Damaged.json", text);
    EXPECT_THAT(names(), IsEmpty()) << text;
    EXPECT_THAT(reported, ElementsAre(testing::AllOf(HasSubstr(file), HasSubstr("cannot be understood"),
                                                     HasSubstr(".damaged"))));
    EXPECT_TRUE(std::filesystem::exists(file + ".damaged"));
    EXPECT_FALSE(std::filesystem::exists(file));
    reported.clear();
    std::filesystem::remove(file + ".damaged");
  }
  const auto file = write(administrators(), "Damaged.json", "{");
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(reported, ElementsAre(HasSubstr(file)));
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(Presets, ThatAreDamagedAreSetAsideBesideEarlierOnes) {
  for (const bool network : {false, true}) {
    isOnNetwork = network;
    const std::string name = network ? "There" : "Here";
    const auto file = presetFile("Family", name).string();
    const std::vector<std::string> texts{"{first", "{second", "{third"};
    for (const auto& text : texts) {
      write(own(), name + ".json", text);
      EXPECT_THAT(names(), IsEmpty());
    }
    EXPECT_EQ(contentsOf(file + ".damaged"), texts[0]);
    EXPECT_EQ(contentsOf(file + ".damaged-2"), texts[1]);
    EXPECT_EQ(contentsOf(file + ".damaged-3"), texts[2]);
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_THAT(reported, ElementsAre(HasSubstr("now " + file + ".damaged"), HasSubstr(".damaged-2"),
                                      HasSubstr(".damaged-3")));
    reported.clear();
  }
}

TEST_F(Presets, ThatAnotherProgramSavesWhileADamagedFileIsSetAsideStay) {
  const auto file = write(own(), "Booklet, 5 mm.json", "{");
  const auto save = [](const std::string& margin) {
    savePreset("Family", {kBooklet.name, {{"MVTopMargin", margin}}, {}});
  };
  // The second rename puts the file back.
  for (const int newer : {1, 2}) {
    write(own(), "Booklet, 5 mm.json", "{");
    int time = 0;
    beforeRenaming = [&] {
      if (++time <= newer) save(std::to_string(time));
    };
    EXPECT_THAT(names(), IsEmpty());
    EXPECT_EQ(findPreset("Family", kBooklet.name, report).panel.front().value, std::to_string(newer));
    EXPECT_THAT(filesBeside(file), ElementsAre("Booklet, 5 mm.json"));
    EXPECT_THAT(reported, IsEmpty());
  }
}

TEST_F(Presets, ThatAnotherProgramSetsAsideAtTheSameTimeAreReportedOnce) {
  const auto file = write(own(), "Damaged.json", "{");
  bool isFirst = true;
  beforeRenaming = [&] {
    if (!std::exchange(isFirst, false)) return;
    EXPECT_THAT(names(), IsEmpty());
  };
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(reported, ElementsAre(HasSubstr(file)));
}

TEST_F(Presets, OfTheAdministratorThatAreDamagedAreReportedUnlessTheUsersOwnHideThem) {
  const auto file = write(administrators(), "House.json", "{");
  savePreset("Family", kBooklet);
  EXPECT_EQ(findPreset("Family", kBooklet.name, report), kBooklet);
  EXPECT_THAT(reported, IsEmpty());
  EXPECT_THAT(failureOf([&] { findPreset("Family", "House", report); }).what(),
              HasSubstr("there is no preset House"));
  EXPECT_THAT(reported, ElementsAre(HasSubstr(file + " cannot be understood")));
  savePreset("Family", {"House", {}, {}});
  EXPECT_THAT(presetsOf("Family").faults, IsEmpty());
}

// A file that cannot be read now may be intact.
TEST_F(Presets, ThatCannotBeReadStayWhereTheyAreAndAreReported) {
  const auto file = presetFile("Family", "Unreadable");
  std::filesystem::create_directories(file);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(reported, ElementsAre(HasSubstr(file.string() + " cannot be read")));
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(Presets, ThatCannotBeSetAsideAreReportedAndStay) {
  const auto file = write(own(), "Damaged.json", "{");
  renamingError = EIO;
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(reported, ElementsAre(testing::AllOf(HasSubstr(file + " cannot be understood"),
                                                   testing::Not(HasSubstr("the file is now")))));
  EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(Presets, ThatAnotherProgramSetsAsideFirstAreNotReportedAgain) {
  const auto file = write(own(), "Damaged.json", "{");
  savePreset("Family", kBooklet);
  beforeRenaming = [&] { std::filesystem::remove(file); };
  EXPECT_EQ(findPreset("Family", kBooklet.name, report), kBooklet);
  EXPECT_THAT(reported, IsEmpty());
}

TEST_F(Presets, ThatDisappearWhileTheyAreRenamedAreReported) {
  savePreset("Family", kBooklet);
  beforeRenaming = [&] { std::filesystem::remove(presetFile("Family", kBooklet.name)); };
  EXPECT_THAT(
      failureOf([&] { renamePreset("Family", kBooklet.name, "Other", Taken::refuses, report); }).what(),
      HasSubstr(presetFile("Family", "Other").string() + " cannot be written"));
}

TEST_F(Presets, AreNotReadFromFilesThatSavingWouldNameDifferently) {
  for (const char* file : {"%zz.json", "a%2.json", "a%61.json", "%.json"}) write(own(), file, "{}");
  write(own(), "a%25.json", "{}");
  EXPECT_THAT(names(), ElementsAre("a%"));
  EXPECT_THAT(reported, IsEmpty());
}

TEST_F(Presets, AreNotReadFromRelativeFolders) {
  const auto before = std::filesystem::current_path();
  write("etc", "House.json", "{}");
  std::filesystem::current_path(own().parent_path());
  for (const char* name : {"XDG_CONFIG_DIRS", "XDG_CONFIG_HOME"}) {
    setenv(name, "etc", 1);
    EXPECT_THAT(names(), testing::Not(testing::Contains("House"))) << name;
  }
  std::filesystem::current_path(before);
  setenv("XDG_CONFIG_DIRS", administrators().c_str(), 1);
  EXPECT_THAT(names(), testing::Contains("House"));
}

TEST_F(Presets, AreFoundWithoutVariablesForTheFolders) {
  const std::string home = std::getenv("HOME");
  setenv("HOME", own().parent_path().c_str(), 1);
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"}) unsetenv(name);
  write(".config", "Booklet.json", "{}");
  EXPECT_THAT(names(), testing::Contains("Booklet"));
  EXPECT_THAT(administratorsFolders("Family"), ElementsAre("/etc/xdg/tandem-trim/presets/Family"));
  setenv("HOME", home.c_str(), 1);
}

TEST_F(Presets, MayHaveAFileInThePlaceOfTheirFolder) {
  const auto folder = presetFile("Family", "x").parent_path();
  std::filesystem::create_directories(folder.parent_path());
  std::ofstream(folder) << "no folder";
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(reported, IsEmpty());
}

TEST_F(Presets, InAFolderThatCannotBeReadAreReported) {
  const auto folder = presetFile("Family", "Unreadable").parent_path();
  std::filesystem::create_directories(folder.parent_path());
  std::filesystem::create_symlink(folder, folder);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_THAT(reported, ElementsAre(HasSubstr(folder.string() + " cannot be read")));
}

TEST_F(Presets, MayHaveAnyNameAndNeverLeaveTheirFolder) {
  for (const std::string name : {"../../evil", "..", ".", ".hidden", "a/b", "100 %", "%2F", "c:\\d",
                                 "Größe «A»", "小册子", "a'b\"c$d", "x.json"}) {
    savePreset("Family", {name, {}, {}});
    EXPECT_EQ(presetFile("Family", name).parent_path(), own() / "tandem-trim/presets/Family") << name;
    EXPECT_FALSE(presetFile("Family", name).filename().string().starts_with('.')) << name;
    EXPECT_THAT(names(), ElementsAre(name));
    deletePreset("Family", name, report);
  }
  savePreset("../..", kBooklet);
  EXPECT_EQ(presetFile("../..", "x").parent_path().parent_path(), own() / "tandem-trim/presets");
  for (const auto& name : {std::string(), std::string("  "), std::string("a\nb"), std::string("a\0b", 3),
                           std::string("\xFF"), std::string(300, 'x')})
    EXPECT_EQ(failureOf([&] { savePreset("Family", {name, {}, {}}); }).exitStatus(), kWrongCommandLine);
}

TEST_F(Presets, OfTwoProgramsThatSaveAtOnceAreAllKept) {
  const auto saveMany = [](const std::string& prefix) {
    for (int count = 0; count < 50; ++count) {
      savePreset("Family", {prefix + std::to_string(count), {}, {}});
      savePreset("Family", {"Shared", {{"MVTopMargin", prefix}}, {}});
    }
  };
  std::thread other(saveMany, "a");
  saveMany("b");
  other.join();
  EXPECT_EQ(names().size(), 101U);
  EXPECT_THAT(reported, IsEmpty());
}

Preset countOf(int count) { return {"Count", {{"MVTopMargin", std::to_string(count)}}, {}}; }

TEST_F(Presets, ThatAnotherProgramHasChangedAreNotReplaced) {
  EXPECT_TRUE(savePresetOver("Family", std::nullopt, countOf(1)));
  EXPECT_FALSE(savePresetOver("Family", std::nullopt, countOf(2)));
  EXPECT_FALSE(savePresetOver("Family", countOf(2), countOf(3)));
  EXPECT_EQ(findPreset("Family", "Count", report), countOf(1));
  EXPECT_TRUE(savePresetOver("Family", countOf(1), countOf(4)));
  EXPECT_EQ(findPreset("Family", "Count", report), countOf(4));
  deletePreset("Family", "Count", report);
  EXPECT_TRUE(savePresetOver("Family", countOf(4), countOf(5)));
  EXPECT_EQ(findPreset("Family", "Count", report), countOf(5));
}

TEST_F(Presets, AreComparedByTheirContent) {
  const auto file = write(own(), "Count.json", R"({"panel":{"MVTopMargin":"1"},"options":{"copies":"3"}})");
  EXPECT_TRUE(savePresetOver("Family", countOf(1), countOf(2)));
  write(own(), "Count.json", "{");
  EXPECT_FALSE(savePresetOver("Family", countOf(2), countOf(3)));
  EXPECT_EQ(contentsOf(file), "{");
}

TEST_F(Presets, ThatTwoProgramsChangeAtOnceLoseNoChange) {
  constexpr int kTimes = 50;
  savePreset("Family", countOf(0));
  const auto countUp = [] {
    for (int time = 0; time < kTimes;) {
      const auto known = presetsOf("Family").presets.front().preset;
      if (savePresetOver("Family", known, countOf(std::stoi(known.panel.front().value) + 1))) ++time;
    }
  };
  std::thread other(countUp);
  countUp();
  other.join();
  EXPECT_EQ(findPreset("Family", "Count", report), countOf(2 * kTimes));
}

TEST_F(Presets, MayBeTheOneThatAPrinterStartsWith) {
  EXPECT_EQ(presetOfPrinter("Family", "Morva@host:1"), std::nullopt);
  savePreset("Family", kBooklet);
  savePreset("Family", {"Other", {}, {}});
  setPresetOfPrinter("Family", "Morva@host:1", kBooklet.name);
  setPresetOfPrinter("Family", "../x", "Other");
  EXPECT_EQ(presetOfPrinter("Family", "Morva@host:1"), kBooklet.name);
  EXPECT_EQ(presetOfPrinter("Family", "Morva"), std::nullopt);
  renamePreset("Family", kBooklet.name, "Brochure", Taken::refuses, report);
  EXPECT_EQ(presetOfPrinter("Family", "Morva@host:1"), "Brochure");
  EXPECT_EQ(presetOfPrinter("Family", "../x"), "Other");
  deletePreset("Family", "Brochure", report);
  EXPECT_EQ(presetOfPrinter("Family", "Morva@host:1"), std::nullopt);
  setPresetOfPrinter("Family", "../x", std::nullopt);
  setPresetOfPrinter("Family", "../x", std::nullopt);
  EXPECT_EQ(presetOfPrinter("Family", "../x"), std::nullopt);
  EXPECT_THAT(names(), ElementsAre("Other"));
}

TEST_F(Presets, AreNotChosenIfThePrintersFileIsMalformed) {
  setPresetOfPrinter("Family", "Morva", kBooklet.name);
  const auto file = presetFile("Family", "x").parent_path() / "printers/Morva.json";
  ASSERT_EQ(presetOfPrinter("Family", "Morva"), kBooklet.name);
  for (const char* text : {"", "[]", "{}", R"({"preset": 5})", R"({"other": "x"})"}) {
    std::ofstream(file) << text;
    EXPECT_EQ(presetOfPrinter("Family", "Morva"), std::nullopt) << text;
  }
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_EQ(presetOfPrinter("Family", "Morva"), std::nullopt);
  EXPECT_THAT(failureOf([&] { setPresetOfPrinter("Family", "Morva", std::nullopt); }).what(),
              HasSubstr(file.string() + " cannot be written"));
}

TEST_F(Presets, AreLockedForOthersWhileOneIsRenamed) {
  savePreset("Family", kBooklet);
  const auto folder = presetFile("Family", "x").parent_path();
  beforeRenaming = [&] {
    EXPECT_THAT(failureOf([&] { lockFile(folder, std::chrono::milliseconds(0)); }).what(),
                HasSubstr("is locked by another program"));
  };
  renamePreset("Family", kBooklet.name, "Brochure", Taken::refuses, report);
  EXPECT_NO_THROW(lockFile(folder, std::chrono::milliseconds(0)));
}

TEST_F(Presets, ThatCannotBeWrittenAreReportedWithTheirFolderAndTheReason) {
  std::ofstream(own()) << "no folder";
  EXPECT_THAT(
      failureOf([&] { savePreset("Family", kBooklet); }).what(),
      HasSubstr(presetFile("Family", "x").parent_path().string() + " cannot be written: Not a directory"));
}

}  // namespace
}  // namespace tandemtrim::host
