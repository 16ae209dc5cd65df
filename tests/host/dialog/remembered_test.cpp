#include "host/dialog/settings/remembered.hpp"

#include <cerrno>
#include <cstring>
#include <fstream>

#include <cups/cups.h>
#include <gmock/gmock.h>
#include <gtk/gtk.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RememberedSettings : public testing::Test {
 protected:
  void SetUp() override { fs::remove_all(rememberedFile({"server", "any"}).parent_path()); }

  static Remembered reversedOnA3() {
    Remembered settings{{Gtk::PrintSettings::create(), Gtk::PageSetup::create()}, {{"Margin", "12"}}};
    settings.tabs.settings->set_reverse();
    settings.tabs.setup->set_paper_size(Gtk::PaperSize("iso_a3"));
    settings.tabs.setup->set_orientation(Gtk::PageOrientation::LANDSCAPE);
    return settings;
  }
  static void write(const fs::path& file, const std::string& text) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << text;
  }

  const PrinterPlace place{"server:631", "Morva"};
  std::vector<std::string> messages;
  const Report report = [this](const std::string& message) { messages.push_back(message); };
};

void expectNothing(const Remembered& settings) {
  EXPECT_FALSE(settings.tabs.settings);
  EXPECT_FALSE(settings.tabs.setup);
  EXPECT_THAT(settings.panel, IsEmpty());
}

TEST_F(RememberedSettings, AreRestoredForTheirPrinter) {
  EXPECT_FALSE(remember(place, reversedOnA3(), report));
  const auto settings = recall(place, report);
  ASSERT_TRUE(settings.tabs.settings && settings.tabs.setup);
  EXPECT_TRUE(settings.tabs.settings->get_reverse());
  EXPECT_NEAR(settings.tabs.setup->get_paper_size().get_width(Gtk::Unit::MM), 297, 1);
  EXPECT_EQ(settings.tabs.setup->get_orientation(), Gtk::PageOrientation::LANDSCAPE);
  EXPECT_THAT(settings.panel, ElementsAre(Option{"Margin", "12"}));
  EXPECT_THAT(messages, IsEmpty());
}

TEST_F(RememberedSettings, AreNotUsedForAnotherPrinterOrServer) {
  remember(place, reversedOnA3(), report);
  for (const PrinterPlace& other :
       {PrinterPlace{"server:631", "Other"}, PrinterPlace{"other:631", "Morva"},
        PrinterPlace{"server:1631", "Morva"}, PrinterPlace{"localhost", "Morva"},
        PrinterPlace{"server:631", "morva"}, PrinterPlace{"server:631", "Morva/draft"},
        PrinterPlace{"server:631", ""}})
    expectNothing(recall(other, report));
  EXPECT_THAT(messages, IsEmpty());
}

TEST_F(RememberedSettings, AreFoundByTheirServerWithAndWithoutTheDefaultPort) {
  remember(place, reversedOnA3(), report);
  EXPECT_THAT(recall({"server", "Morva"}, report).panel, ElementsAre(Option{"Margin", "12"}));
}

TEST_F(RememberedSettings, AreFoundByAnyNameOfThisComputersServer) {
  const auto file = rememberedFile({"localhost", "Morva"});
  EXPECT_EQ(rememberedFile({"localhost:631", "Morva"}), file);
  EXPECT_EQ(rememberedFile({"/run/cups/cups.sock", "Morva"}), file);
}

TEST_F(RememberedSettings, AreThoseOfTheServerThatLibcupsChooses) {
  cupsSetServer("chosen:1631");
  EXPECT_EQ(rememberedFile({std::nullopt, "Morva"}), rememberedFile({"chosen:1631", "Morva"}));
  cupsSetServer(nullptr);
}

TEST_F(RememberedSettings, StayInTheirFolderForAnyNameOfThePrinter) {
  for (const char* name : {"../Morva", "a/b", "Möwe", "%2F", "a@b"}) {
    const PrinterPlace odd{"localhost", name};
    remember(odd, reversedOnA3(), report);
    EXPECT_EQ(rememberedFile(odd).lexically_normal().parent_path(), rememberedFile(place).parent_path());
    EXPECT_THAT(recall(odd, report).panel, ElementsAre(Option{"Margin", "12"})) << name;
  }
  EXPECT_NE(rememberedFile({"localhost", "a@b"}), rememberedFile({"b", "a"}));
  EXPECT_NE(rememberedFile({"localhost", "ab"}), rememberedFile({"b", "a"}));
}

TEST_F(RememberedSettings, ReplaceEarlierOnes) {
  remember(place, reversedOnA3(), report);
  auto later = reversedOnA3();
  later.tabs.settings->set_reverse(false);
  later.panel = {{"Position", "Left"}};
  remember(place, later, report);
  EXPECT_FALSE(recall(place, report).tabs.settings->get_reverse());
  EXPECT_THAT(recall(place, report).panel, ElementsAre(Option{"Position", "Left"}));
}

TEST_F(RememberedSettings, LeaveOutWhatIsMeantForOneJob) {
  auto settings = reversedOnA3();
  auto& job = *settings.tabs.settings;
  job.set_print_pages(Gtk::PrintPages::RANGES);
  job.set_page_ranges({Gtk::PageRange(1, 2)});
  job.set_page_set(Gtk::PageSet::ODD);
  job.set_n_copies(3);
  job.set_collate(false);
  job.set("cups-job-hold-until", "indefinite");
  job.set("print-at", "on-hold");
  job.set("print-at-time", "23:00");
  job.set("output-uri", "file:///tmp/secret.pdf");
  job.set("output-file-format", "pdf");
  remember(place, settings, report);
  const auto recalled = recall(place, report).tabs.settings;
  EXPECT_EQ(recalled->get_print_pages(), Gtk::PrintPages::ALL);
  for (const char* key : {"page-ranges", "page-set", "n-copies", "collate", "cups-job-hold-until", "print-at",
                          "print-at-time", "output-uri", "output-file-format"})
    EXPECT_FALSE(recalled->has_key(key)) << key;
  EXPECT_TRUE(recalled->get_reverse());
  EXPECT_EQ(job.get_print_pages(), Gtk::PrintPages::RANGES) << "the job's own settings changed";
}

TEST_F(RememberedSettings, OfEarlierVersionsLoseWhatWasMeantForOneJob) {
  write(rememberedFile(place), "[Print Settings]\nn-copies=3\npage-set=odd\nreverse=true\n");
  const auto recalled = recall(place, report).tabs.settings;
  EXPECT_FALSE(recalled->has_key("n-copies"));
  EXPECT_FALSE(recalled->has_key("page-set"));
  EXPECT_TRUE(recalled->get_reverse());
}

TEST_F(RememberedSettings, OfTheFirstVersionIncludeThoseOfThePanel) {
  write(rememberedFile(place), "[Print Settings]\nreverse=true\n[Tandem Trim]\nMVTopMargin=12\n");
  EXPECT_THAT(recall(place, report).panel, ElementsAre(Option{"MVTopMargin", "12"}));
  remember(place, reversedOnA3(), report);
  EXPECT_THAT(recall(place, report).panel, ElementsAre(Option{"Margin", "12"}));
}

TEST_F(RememberedSettings, KeepValuesOfAnyText) {
  auto settings = reversedOnA3();
  settings.panel = {{"Semicolon", "a;b"},
                    {"Empty", ""},
                    {"Spaces", " two words "},
                    {"Line", "one\ntwo"},
                    {"Umlaut", "Öse"}};
  remember(place, settings, report);
  EXPECT_EQ(recall(place, report).panel, settings.panel);
}

TEST_F(RememberedSettings, CanBeReadByTheirUserOnly) {
  remember(place, reversedOnA3(), report);
  const auto file = rememberedFile(place);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(fs::status(file.parent_path()).permissions(), fs::perms::owner_all);
}

TEST_F(RememberedSettings, AreEmptyBeforeTheFirstJob) {
  expectNothing(recall(place, report));
  EXPECT_THAT(messages, IsEmpty());
}

TEST_F(RememberedSettings, ThatAreDamagedAreReportedAndSetAside) {
  const auto file = rememberedFile(place);
  write(file, "[Print Settings\nn-copies");
  expectNothing(recall(place, report));
  EXPECT_THAT(messages, ElementsAre(AllOf(HasSubstr(file.string()), HasSubstr(".damaged"))));
  EXPECT_FALSE(fs::exists(file));
  EXPECT_TRUE(fs::exists(file.string() + ".damaged"));

  EXPECT_FALSE(remember(place, reversedOnA3(), report));
  EXPECT_THAT(recall(place, report).panel, ElementsAre(Option{"Margin", "12"}));
  EXPECT_EQ(messages.size(), 1U);
}

// A file that cannot be read now may be intact.
TEST_F(RememberedSettings, ThatCannotBeReadStayWhereTheyAreAndAreReported) {
  remember(place, reversedOnA3(), report);
  struct rlimit limit {};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  const struct rlimit noFiles { 0, limit.rlim_max };
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &noFiles), 0);
  expectNothing(recall(place, report));
  setrlimit(RLIMIT_NOFILE, &limit);
  EXPECT_THAT(messages,
              ElementsAre(rememberedFile(place).string() + " cannot be read: " + std::strerror(EMFILE)));
  EXPECT_EQ(recall(place, report).panel, reversedOnA3().panel);
}

TEST_F(RememberedSettings, InAFolderThatCannotBeReadAreReported) {
  const auto folder = rememberedFile(place).parent_path();
  fs::create_directories(folder.parent_path());
  fs::create_symlink(folder, folder);
  expectNothing(recall(place, report));
  EXPECT_THAT(messages, ElementsAre(HasSubstr(rememberedFile(place).string() + " cannot be read")));
  fs::remove(folder);
}

TEST_F(RememberedSettings, ThatCannotBeWrittenAreReported) {
  const auto folder = rememberedFile(place).parent_path();
  write(folder, "no folder");
  const auto failure = remember(place, reversedOnA3(), report);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->trouble(), Trouble::notRemembered);
  EXPECT_THAT(messages, ElementsAre(failure->what()));
  fs::remove(folder);
}

TEST_F(RememberedSettings, AreNotReadFromAPipe) {
  const auto file = rememberedFile(place);
  fs::create_directories(file.parent_path());
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  expectNothing(recall(place, report));
  EXPECT_THAT(messages, ElementsAre(HasSubstr(file.string())));
  EXPECT_FALSE(remember(place, reversedOnA3(), report));
  EXPECT_TRUE(recall(place, report).tabs.settings);
}

TEST_F(RememberedSettings, MakeAFolderThatOnlyTheUserCanOpenAndKeepTheModeOfAnExistingOne) {
  const auto folder = rememberedFile(place).parent_path();
  remember(place, reversedOnA3(), report);
  EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
  const auto elsewhere = folder.parent_path() / "elsewhere";
  fs::remove_all(folder);
  fs::create_directory(elsewhere);
  fs::permissions(elsewhere, fs::perms(0755));
  fs::create_directory_symlink(elsewhere, folder);
  EXPECT_FALSE(remember(place, reversedOnA3(), report));
  EXPECT_EQ(fs::status(elsewhere).permissions(), fs::perms(0755));
  fs::remove(folder);
  fs::remove_all(elsewhere);
}

}  // namespace
}  // namespace tandemtrim::host
