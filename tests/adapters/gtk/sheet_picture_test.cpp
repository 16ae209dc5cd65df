#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include "tests/adapters/gtk/picture.hpp"
#include "tests/adapters/gtk/shown_panel.hpp"

namespace tandemtrim::test {
namespace {

// The number of tinted pixels in a row or column across the sheet shows how wide the margins are.
bool isTinted(Colour colour) { return colour.saturation() > 40; }

class SheetPicture : public testing::Test {
 protected:
  static std::map<std::string, std::string> on(const std::map<std::string, std::string>& settings) {
    std::map<std::string, std::string> stored{{"MVTandemTrim", "On"},
                                              {"MVTopMargin", "0"},
                                              {"MVBottomMargin", "0"},
                                              {"MVLeftMargin", "0"},
                                              {"MVRightMargin", "0"}};
    for (const auto& [key, value] : settings) stored[key] = value;
    return stored;
  }
  static Picture pictureOf(ShownPanel& shown) {
    shown.user().awaitFrame();
    return Picture(shown.widget("sheetPicture"));
  }
  // The number of tinted pixels to the left and to the right of the middle, in a row below it.
  static std::pair<long, long> tintedAcross(const Picture& picture) {
    const auto tinted = [&](int from, int to) {
      long count = 0;
      for (int x = from; x < to; ++x) count += isTinted(picture.at(x, picture.height() * 3 / 5)) ? 1 : 0;
      return count;
    };
    return {tinted(0, picture.width() / 2), tinted(picture.width() / 2, picture.width())};
  }
  static long tintedDown(const Picture& picture) {
    long count = 0;
    for (int y = 0; y < picture.height(); ++y)
      count += isTinted(picture.at(picture.width() / 2 + 55, y)) ? 1 : 0;
    return count;
  }
};

TEST_F(SheetPicture, TintsEachMarginWhereItIs) {
  ShownPanel left({.stored = on({{"MVLeftMargin", "15"}})});
  const auto [leftHalf, rightHalf] = tintedAcross(pictureOf(left));
  EXPECT_GT(leftHalf, rightHalf + 5);
  ShownPanel right({.stored = on({{"MVRightMargin", "25"}})});
  const auto [otherLeftHalf, otherRightHalf] = tintedAcross(pictureOf(right));
  EXPECT_GT(otherRightHalf, otherLeftHalf + 10);
  ShownPanel none({.stored = on({})});
  EXPECT_LE(tintedDown(pictureOf(none)), 2);
  ShownPanel both({.stored = on({{"MVTopMargin", "20"}, {"MVBottomMargin", "30"}})});
  EXPECT_GT(tintedDown(pictureOf(both)), 25);
}

TEST_F(SheetPicture, FollowsEachKeyAtOnce) {
  ShownPanel shown({.stored = on({})});
  const auto before = pictureOf(shown);
  shown.user().focus(shown.widget("textBoxMarginTop"));
  shown.user().press(XK_End);
  shown.user().type("9");
  const auto nine = pictureOf(shown);
  EXPECT_NE(before, nine);
  EXPECT_GT(tintedDown(nine), tintedDown(before) + 3);
  shown.user().press(XK_BackSpace);
  EXPECT_EQ(pictureOf(shown), before);
}

TEST_F(SheetPicture, FollowsSteppersMenusDefaultsAndTheHost) {
  ShownPanel shown({.stored = on({})});
  auto last = pictureOf(shown);
  const auto expectChange = [&](const char* what) {
    const auto now = pictureOf(shown);
    EXPECT_NE(now, last) << what;
    last = now;
  };
  shown.user().click(gtk_widget_get_last_child(shown.widget("textBoxMarginLeft")));
  expectChange("stepper");
  shown.user().focus(shown.widget("directionPopUp"));
  for (const auto key : {XK_Down, XK_Down, XK_Return}) shown.user().press(key);
  expectChange("direction");
  shown.user().focus(shown.widget("positionPopUp"));
  for (const auto key : {XK_Down, XK_Down, XK_Return}) shown.user().press(key);
  expectChange("position");
  shown.user().click(shown.widget("defaultButton"));
  expectChange("defaults");
  shown.panel().restoreValuesAndReturnError(nullptr);
  expectChange("restore");
  shown.view().setPaperSize(420, 297);
  expectChange("paper");
}

TEST_F(SheetPicture, ShowsA4UntilTheHostSetsThePaper) {
  ShownPanel shown({.stored = on({{"MVTopMargin", "20"}})});
  const auto before = pictureOf(shown);
  shown.view().setPaperSize(210, 297);
  EXPECT_EQ(pictureOf(shown), before);
  for (const auto& [width, height] : {std::pair{148.0, 297.0}, std::pair{210.0, 210.0}}) {
    shown.view().setPaperSize(width, height);
    EXPECT_NE(pictureOf(shown), before);
  }
}

TEST_F(SheetPicture, IgnoresASizeThatNoPaperHas) {
  ShownPanel shown;
  const auto before = pictureOf(shown);
  for (const auto& [width, height] : {std::pair{0.0, 297.0}, std::pair{210.0, 0.0}, std::pair{210.0, -1.0},
                                      std::pair{std::nan(""), 297.0}, std::pair{210.0, HUGE_VAL}}) {
    shown.view().setPaperSize(width, height);
    EXPECT_EQ(pictureOf(shown), before) << width << " x " << height;
  }
}

TEST_F(SheetPicture, ShowsValuesThatThePaperCannotHold) {
  ShownPanel shown(
      {.stored = on({{"MVTopMargin", "777"}, {"MVLeftMargin", "-5"}, {"MVPrintPosition", "Nowhere"}})});
  EXPECT_GT(tintedDown(pictureOf(shown)), 100);
}

TEST_F(SheetPicture, IsGreyWhileTheFunctionIsOff) {
  for (const bool dark : {false, true}) {
    const auto mostColourful = [&](const char* valid) {
      ShownPanel shown({.dark = dark, .stored = on({{"MVTandemTrim", valid}, {"MVTopMargin", "20"}})});
      const auto pixels = pictureOf(shown).pixels();
      return std::ranges::max_element(pixels, {}, &Colour::saturation)->saturation();
    };
    EXPECT_GT(mostColourful("On"), 60);
    EXPECT_LT(mostColourful("Off"), 10);
  }
}

TEST_F(SheetPicture, FollowsTheSwitch) {
  ShownPanel shown({.stored = on({{"MVTopMargin", "20"}})});
  const auto colour = [&] {
    const auto pixels = pictureOf(shown).pixels();
    return std::ranges::max_element(pixels, {}, &Colour::saturation)->saturation();
  };
  EXPECT_GT(colour(), 60);
  shown.user().click(shown.widget("tandemTrimValid"));
  EXPECT_LT(colour(), 10);
  shown.user().click(shown.widget("tandemTrimValid"));
  EXPECT_GT(colour(), 60);
}

TEST_F(SheetPicture, IsNotMirrored) {
  ShownPanel arabic({.language = "ar", .stored = on({{"MVLeftMargin", "15"}, {"MVPrintPosition", "Left"}})});
  const auto picture = pictureOf(arabic);
  const auto [leftHalf, rightHalf] = tintedAcross(picture);
  EXPECT_GT(leftHalf, rightHalf + 5);
}

// A page of one colour in the middle of the paper, with content up to its edges.
std::shared_ptr<platform::PageImage> pageOf(std::uint32_t colour, double width = 210, double height = 297) {
  return std::make_shared<platform::PageImage>(platform::PageImage{10, 10, std::vector(100, colour),
                                                                   (210 - width) / 2, (297 - height) / 2,
                                                                   width, height, std::array<double, 4>{}});
}

bool isRed(Colour colour) { return colour.red > 200 && colour.green < 60 && colour.blue < 60; }

constexpr std::uint32_t kRed = 0xFF0000;

std::string noteOf(ShownPanel& shown) {
  auto* const note = shown.widget("pageNote");
  return gtk_widget_get_visible(note) != FALSE ? gtk_label_get_text(GTK_LABEL(note)) : "";
}

TEST_F(SheetPicture, ShowsThePageInItsSizeUnderTheMargins) {
  ShownPanel shown({.stored = on({{"MVLeftMargin", "15"}, {"MVPrintPosition", "Left"}})});
  const auto lines = pictureOf(shown);
  shown.view().showPage(pageOf(kRed));
  const auto whole = pictureOf(shown);
  const auto redAcross = [](const Picture& picture) {
    int count = 0;
    for (int x = 0; x < picture.width(); ++x) count += isRed(picture.at(x, picture.height() * 3 / 5)) ? 1 : 0;
    return count;
  };
  EXPECT_EQ(redAcross(lines), 0);
  EXPECT_GT(redAcross(whole), 100);
  // It is still visible below the tint of the margin.
  const auto middle = whole.height() * 3 / 5;
  int first = 0;
  while (!isRed(whole.at(first, middle))) ++first;
  const auto inMargin = whole.at(first - 4, middle);
  EXPECT_GT(inMargin.red, inMargin.green + 50);
  EXPECT_GT(inMargin.blue, 40);
  shown.view().showPage(pageOf(kRed, 105, 148));
  EXPECT_NEAR(redAcross(pictureOf(shown)), (redAcross(whole) + 11) / 2, 4);
  shown.view().showPage(nullptr);
  EXPECT_EQ(pictureOf(shown), lines);
}

TEST_F(SheetPicture, ShowsThePositionOverThePage) {
  ShownPanel shown({.stored = on({{"MVPrintPosition", "Left"}})});
  shown.view().showPage(pageOf(0xFFFFFF));
  const auto left = pictureOf(shown);
  shown.user().focus(shown.widget("positionPopUp"));
  for (const auto key : {XK_Down, XK_Down, XK_Return}) shown.user().press(key);
  EXPECT_NE(pictureOf(shown), left);
}

TEST_F(SheetPicture, NotesHowFarContentIsInEachMarginWhileItIsTyped) {
  for (const auto& [side, title] : {std::pair{"Top", "Top Margin"},
                                    {"Bottom", "Bottom Margin"},
                                    {"Left", "Left Margin"},
                                    {"Right", "Right Margin"}}) {
    ShownPanel shown({.stored = on({{"MV" + std::string(side) + "Margin", "3"}})});
    EXPECT_EQ(noteOf(shown), "") << side;
    shown.view().showPage(pageOf(kRed));
    EXPECT_EQ(noteOf(shown), "The page has content in: " + std::string(title) + " (up to 3 mm)");
    shown.user().focus(shown.widget("textBoxMargin" + std::string(side)));
    shown.user().press(XK_a, XK_Control_L);
    shown.user().type("7");
    EXPECT_EQ(noteOf(shown), "The page has content in: " + std::string(title) + " (up to 7 mm)");
    // The label may be too narrow for the whole note.
    EXPECT_STREQ(gtk_widget_get_tooltip_text(shown.widget("pageNote")), noteOf(shown).c_str());
    shown.user().press(XK_a, XK_Control_L);
    shown.user().type("0");
    EXPECT_EQ(noteOf(shown), "") << side;
  }
}

// Otherwise the window would grow, which closes open menus.
TEST_F(SheetPicture, HasSpaceForTheNoteBeforeItNotesAnything) {
  for (const char* language : {"en", "de", "ja", "ar"}) {
    for (const double scale : {1.0, 2.0}) {
      ShownPanel shown({.language = language,
                        .textScale = scale,
                        .stored = on({{"MVTopMargin", "3"},
                                      {"MVBottomMargin", "3"},
                                      {"MVLeftMargin", "3"},
                                      {"MVRightMargin", "3"}})});
      auto* const space = gtk_widget_get_parent(shown.widget("pageNote"));
      const auto height = [&] {
        int least = 0;
        gtk_widget_measure(space, GTK_ORIENTATION_VERTICAL, -1, &least, nullptr, nullptr, nullptr);
        return least;
      };
      const int before = height();
      shown.view().showPage(pageOf(kRed));
      shown.user().awaitFrame();
      auto* const note = GTK_LABEL(shown.widget("pageNote"));
      ASSERT_TRUE(gtk_widget_get_mapped(GTK_WIDGET(note)));
      EXPECT_EQ(pango_layout_get_line_count(gtk_label_get_layout(note)), 2) << language;
      int lines = 0;
      pango_layout_get_pixel_size(gtk_label_get_layout(note), nullptr, &lines);
      EXPECT_GE(before, lines) << language << " at " << scale;
      EXPECT_EQ(height(), before) << language << " at " << scale;
    }
  }
}

TEST_F(SheetPicture, NotesNothingWhileTheFunctionIsOffOrWithoutAPage) {
  ShownPanel shown({.stored = on({{"MVTopMargin", "3"}})});
  shown.view().showPage(pageOf(kRed));
  EXPECT_NE(noteOf(shown), "");
  shown.user().click(shown.widget("tandemTrimValid"));
  EXPECT_EQ(noteOf(shown), "");
  shown.user().click(shown.widget("tandemTrimValid"));
  EXPECT_NE(noteOf(shown), "");
  shown.view().showPage(nullptr);
  EXPECT_EQ(noteOf(shown), "");
}

}  // namespace
}  // namespace tandemtrim::test
