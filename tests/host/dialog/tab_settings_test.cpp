#include "host/dialog/settings/tab_settings.hpp"

#include <algorithm>
#include <functional>
#include <utility>

#include <gmock/gmock.h>

#include "host/dialog/settings/paper.hpp"
#include "tests/host/dialog/sample_ppd.hpp"
#include "tests/host/failure_matcher.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using test::kPapers;
using test::SamplePpd;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAreArray;

TabSettings newTabs() {
  TabSettings tabs{Gtk::PrintSettings::create(), Gtk::PageSetup::create()};
  tabs.setup->set_paper_size(Gtk::PaperSize("iso_a4"));
  return tabs;
}

// The value that GTK's tabs show under a key when a job starts from these options.
struct Shown {
  Options options;
  std::string key;
  std::string value;
};

class OptionsInTabs : public testing::TestWithParam<Shown> {};

TEST_P(OptionsInTabs, AreShownAsTheJobPrintsThem) {
  auto tabs = newTabs();
  applyOptions(GetParam().options, nullptr, tabs);
  EXPECT_EQ(tabs.settings->get(GetParam().key).raw(), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Tabs, OptionsInTabs,
    testing::Values(
        Shown{{{"copies", "3"}}, "n-copies", "3"}, Shown{{{"Copies", "3"}}, "n-copies", "3"},
        Shown{{{"copies", "0"}}, "n-copies", ""}, Shown{{{"copies", "-2"}}, "n-copies", ""},
        Shown{{{"copies", "two"}}, "n-copies", ""}, Shown{{{"copies", "2 "}}, "n-copies", ""},
        Shown{{{"copies", "2"}, {"copies", "x"}}, "n-copies", "2"},
        Shown{{{"Collate", "True"}}, "collate", "true"}, Shown{{{"collate", "false"}}, "collate", "false"},
        Shown{{{"sheet-collate", "collated"}}, "collate", "true"},
        Shown{{{"sheet-collate", "uncollated"}}, "collate", "false"},
        Shown{{{"multiple-document-handling", "separate-documents-uncollated-copies"}}, "collate", "false"},
        Shown{{{"multiple-document-handling", "separate-documents-collated-copies"}}, "collate", "true"},
        Shown{{{"OutputOrder", "Reverse"}}, "reverse", "true"},
        Shown{{{"outputorder", "reverse"}}, "reverse", "true"},
        Shown{{{"OutputOrder", "Normal"}}, "reverse", "false"},
        Shown{{{"page-set", "even"}}, "page-set", "even"}, Shown{{{"page-set", "odd"}}, "page-set", "odd"},
        Shown{{{"page-set", "some"}}, "page-set", ""}, Shown{{{"page-ranges", "2"}}, "print-pages", "ranges"},
        Shown{{{"page-ranges", "none"}}, "print-pages", ""},
        Shown{{{"sides", "two-sided-long-edge"}}, "cups-sides", "two-sided-long-edge"},
        Shown{{{"sides", "two-sided-long-edge"}}, "cups-Duplex", "DuplexNoTumble"},
        Shown{{{"Duplex", "DuplexTumble"}}, "cups-sides", "two-sided-short-edge"},
        Shown{{{"EFDuplex", "None"}}, "cups-Duplex", "None"},
        Shown{{{"JCLDuplex", "DuplexTumble"}}, "cups-sides", "two-sided-short-edge"},
        Shown{{{"KD03Duplex", "DuplexNoTumble"}}, "cups-sides", "two-sided-long-edge"},
        Shown{{{"sides", "one-sided"}}, "cups-Duplex", "None"}, Shown{{{"sides", "three"}}, "cups-sides", ""},
        Shown{{{"number-up", "4"}}, "cups-number-up", "4"}, Shown{{{"Glue", "Hot"}}, "cups-Glue", "Hot"}));

TEST(PageRangesInTabs, AreThoseOfTheOption) {
  auto tabs = newTabs();
  applyOptions({{"page-ranges", "1-3,5,8-"}}, nullptr, tabs);
  std::vector<std::pair<int, int>> ranges;
  for (const auto& range : tabs.settings->get_page_ranges()) ranges.emplace_back(range.start, range.end);
  // GTK counts from 0; -1 is the end.
  EXPECT_THAT(ranges, ElementsAre(Pair(0, 2), Pair(4, 4), Pair(7, -1)));
}

struct Orientation {
  Options options;
  Gtk::PageOrientation shown;
};

class OrientationInTabs : public testing::TestWithParam<Orientation> {};

TEST_P(OrientationInTabs, IsTheLastOneThatTheOptionsName) {
  auto tabs = newTabs();
  applyOptions(GetParam().options, nullptr, tabs);
  EXPECT_EQ(tabs.setup->get_orientation(), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Tabs, OrientationInTabs,
    testing::Values(Orientation{{}, Gtk::PageOrientation::PORTRAIT},
                    Orientation{{{"landscape", "true"}}, Gtk::PageOrientation::LANDSCAPE},
                    Orientation{{{"landscape", ""}}, Gtk::PageOrientation::LANDSCAPE},
                    Orientation{{{"Landscape", "false"}}, Gtk::PageOrientation::PORTRAIT},
                    Orientation{{{"orientation-requested", "3"}}, Gtk::PageOrientation::PORTRAIT},
                    Orientation{{{"orientation-requested", "4"}}, Gtk::PageOrientation::LANDSCAPE},
                    Orientation{{{"orientation-requested", "5"}}, Gtk::PageOrientation::REVERSE_LANDSCAPE},
                    Orientation{{{"orientation-requested", "6"}}, Gtk::PageOrientation::REVERSE_PORTRAIT},
                    Orientation{{{"orientation-requested", "9"}}, Gtk::PageOrientation::PORTRAIT},
                    Orientation{{{"landscape", "true"}, {"orientation-requested", "3"}},
                                Gtk::PageOrientation::PORTRAIT}));

TEST(PaperInTabs, IsTheOneThatTheOptionsNameElseThePrintersDefault) {
  const SamplePpd ppd(kPapers);
  TabSettings tabs{Gtk::PrintSettings::create(), {}};
  applyOptions({{"copies", "2"}}, ppd.get(), tabs);
  EXPECT_FALSE(tabs.setup) << "the options name neither paper nor orientation";
  applyOptions({{"landscape", "true"}}, ppd.get(), tabs);
  ASSERT_TRUE(tabs.setup);
  EXPECT_EQ(tabs.setup->get_paper_size().get_ppd_name(), "A3");
  applyOptions({{"PageSize", "Blade"}}, ppd.get(), tabs);
  EXPECT_EQ(tabs.setup->get_paper_size().get_ppd_name(), "Blade");
  EXPECT_EQ(tabs.setup->get_orientation(), Gtk::PageOrientation::LANDSCAPE);
}

// The options that a job gets after these choices in GTK's tabs.
struct TabChoices {
  std::function<void(const TabSettings&)> choose;
  Options expected;
};

// Adds the options that every job gets unless the tabs show something else.
Options withUsual(Options options) {
  for (const Option& usual : {Option{"copies", "1"}, Option{"OutputOrder", "Normal"},
                              Option{"page-set", "all"}, Option{"orientation-requested", "3"}}) {
    if (std::ranges::find(options, usual.keyword, &Option::keyword) == options.end())
      options.push_back(usual);
  }
  return options;
}

Options optionsOf(const TabSettings& tabs, Options options = {}, const Options& untouched = {}) {
  addTabOptions(tabs, nullptr, Gtk::PaperSize("iso_a4").gobj(), untouched, options);
  return options;
}

class OptionsFromTabs : public testing::TestWithParam<TabChoices> {};

TEST_P(OptionsFromTabs, AreThoseThatTheTabsShow) {
  const auto tabs = newTabs();
  GetParam().choose(tabs);
  EXPECT_THAT(optionsOf(tabs), UnorderedElementsAreArray(withUsual(GetParam().expected)));
}

INSTANTIATE_TEST_SUITE_P(
    Tabs, OptionsFromTabs,
    testing::Values(
        TabChoices{[](const TabSettings&) {}, {}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set_n_copies(3); },
                   {{"copies", "3"}, {"Collate", "True"}}},
        TabChoices{[](const TabSettings& tabs) {
                     tabs.settings->set_n_copies(2);
                     tabs.settings->set_collate(false);
                   },
                   {{"copies", "2"}, {"Collate", "False"}}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set_collate(false); }, {}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set_reverse(); },
                   {{"OutputOrder", "Reverse"}}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set_page_set(Gtk::PageSet::EVEN); },
                   {{"page-set", "even"}}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set_page_set(Gtk::PageSet::ODD); },
                   {{"page-set", "odd"}}},
        TabChoices{[](const TabSettings& tabs) {
                     tabs.settings->set_print_pages(Gtk::PrintPages::RANGES);
                     tabs.settings->set_page_ranges(
                         {Gtk::PageRange(4, 4), Gtk::PageRange(0, 2), Gtk::PageRange(7, -1)});
                   },
                   {{"page-ranges", "1-3,5,8-"}}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set_page_ranges({Gtk::PageRange(4, 4)}); },
                   {}},
        TabChoices{
            [](const TabSettings& tabs) { tabs.setup->set_orientation(Gtk::PageOrientation::LANDSCAPE); },
            {{"orientation-requested", "4"}}},
        TabChoices{[](const TabSettings& tabs) {
                     tabs.setup->set_orientation(Gtk::PageOrientation::REVERSE_PORTRAIT);
                   },
                   {{"orientation-requested", "6"}}},
        TabChoices{[](const TabSettings& tabs) {
                     tabs.setup->set_orientation(Gtk::PageOrientation::REVERSE_LANDSCAPE);
                   },
                   {{"orientation-requested", "5"}}},
        TabChoices{[](const TabSettings& tabs) { tabs.setup->set_paper_size(*paperNamed("A5", nullptr)); },
                   {{"media", "iso_a5_148x210mm"}}},
        TabChoices{[](const TabSettings& tabs) {
                     tabs.setup->set_paper_size(Gtk::PaperSize("own", "Own", 100, 200, Gtk::Unit::MM));
                   },
                   {{"PageSize", "Custom.283.46x566.93"}}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set("cups-sides", "two-sided-long-edge"); },
                   {{"sides", "two-sided-long-edge"}}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set("cups-Glue", "Hot"); },
                   {{"Glue", "Hot"}}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set("cups-Glue", "gtk-ignore-value"); }, {}},
        TabChoices{[](const TabSettings& tabs) { tabs.settings->set("Glue", "Hot"); }, {}}));

TEST(OptionsFromTabs, ReplaceWhatTheJobStartedFrom) {
  const auto tabs = newTabs();
  tabs.settings->set("cups-Duplex", "None");
  tabs.settings->set("cups-number-up", "1");
  const Options starting{{"Copies", "9"},         {"landscape", "true"}, {"page-ranges", "7"},
                         {"sheet-collate", "no"}, {"PageSize", "A3"},    {"sides", "two-sided-long-edge"},
                         {"Number-Up", "4"},      {"x-note", "kept"}};
  EXPECT_THAT(
      optionsOf(tabs, starting),
      UnorderedElementsAreArray(withUsual({{"Duplex", "None"}, {"number-up", "1"}, {"x-note", "kept"}})));
}

class AnOptionThatTheTabsAlwaysShow : public testing::TestWithParam<std::string> {};

TEST_P(AnOptionThatTheTabsAlwaysShow, IsSentAsTheTabsShowIt) {
  EXPECT_THAT(optionsOf(newTabs(), {{GetParam(), "7"}}), UnorderedElementsAreArray(withUsual({})));
}

INSTANTIATE_TEST_SUITE_P(Tabs, AnOptionThatTheTabsAlwaysShow,
                         testing::Values("copies", "page-ranges", "page-set", "orientation-requested",
                                         "landscape", "PageSize", "PageRegion", "OutputOrder", "Collate",
                                         "sheet-collate", "multiple-document-handling"));

TEST(TwoSidedPrinting, HasSeveralKeywordsAndSpellings) {
  for (const char* keyword : {"sides", "Duplex", "JCLDuplex", "EFDuplex", "KD03Duplex"}) {
    EXPECT_TRUE(isDuplexKeyword(keyword));
    EXPECT_THAT(spellings({keyword, "DuplexTumble"}), ElementsAre("DuplexTumble", "two-sided-short-edge"));
    EXPECT_THAT(spellings({keyword, "one-sided"}), ElementsAre("one-sided", "None"));
  }
  EXPECT_FALSE(isDuplexKeyword("side"));
  EXPECT_THAT(spellings({"Glue", "None"}), ElementsAre("None"));
}

TEST(TypedPages, AreRefusedOnlyIfTheyCannotBeUnderstood) {
  for (const char* text : {"", "2", "1-3,5", "1:3", "1;3", "2-"})
    EXPECT_NO_THROW(refuseWrongPages(text)) << text;
  for (const char* text : {"x", "1-x", "3-1", "0"}) {
    const auto failure = failureOf([&] { refuseWrongPages(text); });
    EXPECT_EQ(failure.trouble(), Trouble::userMessage);
    EXPECT_THAT(failure.what(),
                testing::StartsWith('"' + std::string(text) + "\" is not a valid page range."));
  }
}

TEST(OptionsFromTabs, KeepTheTrayOfMediaBesideThePaper) {
  const auto tabs = newTabs();
  EXPECT_THAT(optionsOf(tabs, {{"media", "A3,Upper"}}),
              UnorderedElementsAreArray(withUsual({{"media", "Upper"}})));
  tabs.setup->set_paper_size(*paperNamed("A5", nullptr));
  EXPECT_THAT(optionsOf(tabs, {{"media", "A3,Upper"}}),
              UnorderedElementsAreArray(withUsual({{"media", "iso_a5_148x210mm,Upper"}})));
}

TEST(OptionsFromTabs, NameThePaperIfThePrinterHasNoDefault) {
  Options options;
  addTabOptions(newTabs(), nullptr, nullptr, {}, options);
  EXPECT_THAT(options, UnorderedElementsAreArray(withUsual({{"PageSize", "A4"}})));
}

TEST(OptionsFromTabs, DoNotNameThePrintersDefaultPaper) {
  const auto tabs = newTabs();
  EXPECT_THAT(optionsOf(tabs, {{"media", "A3"}}), UnorderedElementsAreArray(withUsual({})));
}

// GTK's rows show what the user saved for a printer, not the options that a job starts from.
TEST(OptionsFromTabs, KeepTheOptionOfARowThatNobodyTouched) {
  const auto tabs = newTabs();
  tabs.settings->set("cups-Glue", "Hot");
  tabs.settings->set("cups-number-up", "2");
  const Options asked{{"glue", "Cold"}, {"number-up", "4"}};
  const auto untouched = rowsShowing(tabs, asked);
  EXPECT_THAT(untouched, UnorderedElementsAreArray(Options{{"Glue", "Hot"}, {"number-up", "2"}}));
  tabs.settings->set("cups-number-up", "1");
  EXPECT_THAT(optionsOf(tabs, asked, untouched),
              UnorderedElementsAreArray(withUsual({{"glue", "Cold"}, {"number-up", "1"}})));
}

TEST(RowsOfTabs, AreNotFoundForOptionsThatGtkDoesNotShow) {
  const auto tabs = newTabs();
  tabs.settings->set("cups-Glue", "Hot");
  EXPECT_THAT(rowsShowing(tabs, {{"x-note", "kept"}}), IsEmpty());
}

TEST(OptionsFromTabs, AreRefusedIfRangesAreChosenButNotTyped) {
  const auto tabs = newTabs();
  tabs.settings->set_print_pages(Gtk::PrintPages::RANGES);
  const auto failure = failureOf([&] { optionsOf(tabs); });
  EXPECT_EQ(failure.trouble(), Trouble::userMessage);
  EXPECT_STREQ(failure.what(), "Type the numbers of the pages to print, or choose all pages.");
}

Glib::RefPtr<Gtk::PrintSettings> settingsWith(
    const std::vector<std::pair<const char*, const char*>>& entries) {
  auto settings = Gtk::PrintSettings::create();
  for (const auto& [key, value] : entries) settings->set(key, value);
  return settings;
}

std::vector<std::pair<std::string, std::string>> entriesOf(Gtk::PrintSettings& settings) {
  std::vector<std::pair<std::string, std::string>> entries;
  settings.setting_foreach([&](const auto& key, const auto& value) { entries.emplace_back(key, value); });
  return entries;
}

TEST(SettingsOfTheNextPrinter, AreThoseRememberedForIt) {
  const auto now = settingsWith({{"reverse", "false"}, {"cups-number-up", "2"}});
  const auto kept = settingsWith({{"reverse", "true"}, {"cups-Glue", "Hot"}});
  EXPECT_THAT(entriesOf(*settingsOfNextPrinter(now, kept, {})),
              testing::UnorderedElementsAre(Pair("reverse", "true"), Pair("cups-Glue", "Hot")));
  EXPECT_THAT(entriesOf(*settingsOfNextPrinter(now, {}, {})),
              testing::UnorderedElementsAre(Pair("reverse", "false"), Pair("cups-number-up", "2")));
}

TEST(SettingsOfTheNextPrinter, KeepTheDocumentsCopiesAndPages) {
  const auto now = settingsWith({{"n-copies", "3"}, {"print-pages", "ranges"}, {"page-ranges", "0-1"}});
  const auto kept = settingsWith({{"n-copies", "7"}, {"page-set", "odd"}, {"reverse", "true"}});
  EXPECT_THAT(entriesOf(*settingsOfNextPrinter(now, kept, {})),
              testing::UnorderedElementsAre(Pair("n-copies", "3"), Pair("print-pages", "ranges"),
                                            Pair("page-ranges", "0-1"), Pair("reverse", "true")));
}

TEST(SettingsOfTheNextPrinter, KeepTheCommandLinesOptionsAsTheyAreShown) {
  const Options asked{{"OutputOrder", "Reverse"}, {"number-up", "4"}, {"Glue", "Cold"}};
  const auto now = settingsWith({{"reverse", "false"}, {"cups-number-up", "2"}});
  const auto kept = settingsWith({{"reverse", "true"}, {"cups-number-up", "6"}, {"cups-Glue", "Hot"}});
  EXPECT_THAT(entriesOf(*settingsOfNextPrinter(now, kept, asked)),
              testing::UnorderedElementsAre(Pair("reverse", "false"), Pair("cups-number-up", "2"),
                                            Pair("cups-Glue", "Cold")));
}

TEST(TabsOfTheNextPrinter, UseTheRememberedPageSetupElseTheSavedOptions) {
  const auto now = newTabs();
  const Options saved{{"OutputOrder", "Reverse"}, {"PageSize", "A3"}, {"copies", "7"}};
  auto next = tabsOfNextPrinter(now, {}, saved, {}, nullptr);
  EXPECT_TRUE(next.settings->get_reverse());
  EXPECT_EQ(next.setup->get_paper_size().get_name(), "iso_a3_297x420mm");
  EXPECT_FALSE(next.settings->has_key("n-copies"));
  next = tabsOfNextPrinter(now, newTabs(), saved, {}, nullptr);
  EXPECT_FALSE(next.settings->get_reverse());
  EXPECT_EQ(next.setup->get_paper_size().get_name(), "iso_a4");
  EXPECT_EQ(tabsOfNextPrinter(now, {}, {}, {}, nullptr).setup, now.setup);
}

TEST(TabsOfTheNextPrinter, KeepTheCommandLinesOptionsAsTheyAreShown) {
  const auto now = newTabs();
  const Options saved{{"OutputOrder", "Reverse"}, {"PageSize", "A3"}};
  const auto next = tabsOfNextPrinter(now, {}, saved, {{"OutputOrder", "Reverse"}, {"media", "A5"}}, nullptr);
  EXPECT_FALSE(next.settings->get_reverse()) << "the user has changed it by hand since";
  EXPECT_EQ(next.setup, now.setup);
}

TEST(OptionsFromTabs, AreRefusedForATimeThatDoesNotExist) {
  const auto tabs = newTabs();
  tabs.settings->set("print-at", "at");
  for (const char* time : {"25:99", "abc", "indefinite", "", "24:00", "1:2", "12:60"}) {
    tabs.settings->set("print-at-time", time);
    tabs.settings->set("cups-job-hold-until", time);
    const auto failure = failureOf([&] { optionsOf(tabs); });
    EXPECT_EQ(failure.trouble(), Trouble::userMessage);
    EXPECT_THAT(failure.what(), testing::StartsWith('"' + std::string(time) + "\" is not a time of day."));
  }
  for (const char* time : {"00:00", "23:59", "14:30:59"}) {
    tabs.settings->set("cups-job-hold-until", time);
    EXPECT_NO_THROW(optionsOf(tabs)) << time;
  }
}

}  // namespace
}  // namespace tandemtrim::host
