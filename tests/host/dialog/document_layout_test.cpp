#include "host/dialog/settings/document_layout.hpp"

#include <tuple>

#include <gmock/gmock.h>

#include "host/failure.hpp"

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class LaidOutDocument : public testing::Test {
 protected:
  LaidOutDocument() {
    settings->set_n_copies(3);
    settings->set_collate(true);
    settings->set_reverse(true);
    settings->set_number_up(2);
    settings->set("number-up-layout", "rltb");
    settings->set_page_set(Gtk::PageSet::ODD);
    settings->set_scale(75);
    settings->set_print_pages(Gtk::PrintPages::RANGES);
    settings->set(GTK_PRINT_SETTINGS_PAGE_RANGES, "0-1");
    settings->set("cups-MVTopMargin", "12");
    setup->set_orientation(Gtk::PageOrientation::LANDSCAPE);
  }

  [[nodiscard]] auto settingsFor(LaidOut laidOut) const {
    return settingsToLayOut({settings, setup}, laidOut);
  }

  Glib::RefPtr<Gtk::PrintSettings> settings = Gtk::PrintSettings::create();
  Glib::RefPtr<Gtk::PageSetup> setup = Gtk::PageSetup::create();
};

TEST_F(LaidOutDocument, ForAPrinterHasItsPagesAndLeavesTheRestToTheJob) {
  EXPECT_THAT(
      settingsFor(LaidOut::pages),
      ElementsAre(Pair("collate", "false"), Pair("n-copies", "1"), Pair("number-up", "1"),
                  Pair("orientation", "landscape"), Pair("page-ranges", "0-1"), Pair("page-set", "all"),
                  Pair("print-pages", "ranges"), Pair("reverse", "false"), Pair("scale", "75")));
}

TEST_F(LaidOutDocument, ForAFileHasAllThatTheUserChose) {
  const auto entries = settingsFor(LaidOut::everything);
  EXPECT_EQ(entries.at("n-copies"), "3");
  EXPECT_EQ(entries.at("number-up"), "2");
  EXPECT_EQ(entries.at("page-set"), "odd");
  EXPECT_EQ(entries.at("reverse"), "true");
  EXPECT_EQ(entries.at("collate"), "true");
  EXPECT_EQ(entries.at("orientation"), "landscape");
  EXPECT_EQ(entries.at("number-up-layout"), "rltb");
  EXPECT_FALSE(entries.contains("cups-MVTopMargin"));
}

TEST_F(LaidOutDocument, OfAllPagesHasNoRanges) {
  settings->set_print_pages(Gtk::PrintPages::ALL);
  EXPECT_FALSE(settingsFor(LaidOut::pages).contains("page-ranges"));
}

class OptionsOfTheJob : public testing::Test {
 protected:
  [[nodiscard]] Options leftBy(LaidOut laidOut) const {
    auto left = options;
    removeLaidOut(left, laidOut);
    return left;
  }

  const Options options{
      {"MVTopMargin", "12"},          {"copies", "3"},    {"Collate", "True"},         {"page-ranges", "1-2"},
      {"orientation-requested", "4"}, {"number-up", "2"}, {"number-up-layout", "rltb"}};
};

TEST_F(OptionsOfTheJob, AreUnchangedForADocumentThatIsNotLaidOut) {
  EXPECT_EQ(leftBy(LaidOut::nothing), options);
}

TEST_F(OptionsOfTheJob, LackWhatTheProgramHasDone) {
  EXPECT_THAT(leftBy(LaidOut::pages),
              ElementsAre(Option{"MVTopMargin", "12"}, Option{"copies", "3"}, Option{"Collate", "True"},
                          Option{"number-up", "2"}, Option{"number-up-layout", "rltb"}));
}

TEST_F(OptionsOfTheJob, AreNeutralIfTheProgramHasDoneEverything) {
  EXPECT_THAT(leftBy(LaidOut::everything),
              testing::UnorderedElementsAre(Option{"MVTopMargin", "12"}, Option{"copies", "1"},
                                            Option{"OutputOrder", "Normal"}, Option{"page-set", "all"},
                                            Option{"number-up", "1"}));
}

TEST_F(LaidOutDocument, IsSavedWholeOrNotAtAll) {
  EXPECT_THROW(refusePartInFile(*settings, LaidOut::nothing), Failure);
  EXPECT_THROW(refusePartInFile(*settings, LaidOut::pages), Failure);
  EXPECT_NO_THROW(refusePartInFile(*settings, LaidOut::everything));
  settings->set_number_up(1);
  settings->set_page_set(Gtk::PageSet::ALL);
  EXPECT_THROW(refusePartInFile(*settings, LaidOut::nothing), Failure);
  EXPECT_NO_THROW(refusePartInFile(*settings, LaidOut::pages));
  EXPECT_NO_THROW(refusePartInFile(*Gtk::PrintSettings::create(), LaidOut::nothing));
}

TEST(AFile, IsRefusedForEachChoiceOfAPartOfTheDocument) {
  for (const auto& [key, value, neutral] :
       {std::tuple{"print-pages", "ranges", "all"}, {"page-set", "odd", "all"}, {"number-up", "2", "1"}}) {
    const auto settings = Gtk::PrintSettings::create();
    settings->set(key, value);
    EXPECT_THROW(refusePartInFile(*settings, LaidOut::nothing), Failure) << key;
    settings->set(key, neutral);
    settings->set("n-copies", "3");
    EXPECT_NO_THROW(refusePartInFile(*settings, LaidOut::nothing)) << key;
  }
}

}  // namespace
}  // namespace tandemtrim::host
