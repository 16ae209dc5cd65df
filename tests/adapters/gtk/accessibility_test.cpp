#include <algorithm>
#include <set>
#include <sstream>

#include <X11/keysym.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/adapters/gtk/shown_panel.hpp"

namespace tandemtrim::test {
namespace {

/// A control as a screen reader reads it.
struct Accessible {
  std::string role;
  std::string name;
  std::string description;
};

// The reader is a separate program, which this one answers while it runs.
std::vector<Accessible> accessiblesOfThisProgram() {
  const auto process = std::to_string(getpid());
  GError* error = nullptr;
  auto* const reader = g_subprocess_new(G_SUBPROCESS_FLAGS_STDOUT_PIPE, &error, "/usr/bin/python3",
                                        ACCESSIBLE_TREE, process.c_str(), nullptr);
  if (reader == nullptr) throw std::runtime_error(error->message);
  std::string output;
  bool done = false;
  struct Reading {
    std::string& output;
    bool& done;
  } reading{output, done};
  g_subprocess_communicate_utf8_async(
      reader, nullptr, nullptr,
      [](GObject* source, GAsyncResult* result, gpointer data) {
        char* text = nullptr;
        g_subprocess_communicate_utf8_finish(G_SUBPROCESS(source), result, &text, nullptr, nullptr);
        auto& [out, isDone] = *static_cast<Reading*>(data);
        if (text != nullptr) out = text;
        g_free(text);
        isDone = true;
      },
      &reading);
  waitUntil("the screen reader", [&] { return done; });
  g_object_unref(reader);

  std::vector<Accessible> accessibles;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    Accessible& control = accessibles.emplace_back();
    std::getline(fields, control.role, '\t');
    std::getline(fields, control.name, '\t');
    std::getline(fields, control.description, '\t');
  }
  return accessibles;
}

bool isControl(const Accessible& one) {
  static const std::set<std::string> kRoles{"check box", "combo box", "push button", "spin button", "image"};
  return kRoles.contains(one.role);
}

std::vector<Accessible> accessibleControls() {
  auto accessibles = accessiblesOfThisProgram();
  std::erase_if(accessibles, [](const Accessible& one) { return !isControl(one); });
  return accessibles;
}

TEST(ScreenReader, ReadsEachControlFromTopToBottom) {
  ShownPanel shown;
  std::vector<std::string> spoken;
  for (const auto& [role, name, description] : accessibleControls())
    spoken.push_back(role + " | " + name + " | " + description);
  EXPECT_THAT(spoken,
              testing::ElementsAre(
                  "check box | Use Tandem Trim | ",                   //
                  "combo box | Image Direction: | ",                  //
                  "push button | Image Direction: | Long-Edge Feed",  //
                  "combo box | Print Position: | ",                   //
                  "push button | Print Position: | Center",           //
                  "spin button | Top Margin: | mm   (0 to 20)",       //
                  "spin button | Bottom Margin: | mm   (0 to 30)",    //
                  "spin button | Left Margin: | mm   (0 to 15)",      //
                  "spin button | Right Margin: | mm   (0 to 25)",     //
                  "image | 210 \u00D7 297 mm; Image Direction: Long-Edge Feed; Print Position: Center; "
                  "Top Margin: 5 mm; Bottom Margin: 5 mm; Left Margin: 5 mm; Right Margin: 5 mm | ",
                  "push button | Restore Defaults | "));
}

TEST(ScreenReader, ReadsWhatThePictureOfTheSheetShows) {
  ShownPanel shown;
  shown.view().setPaperSize(215.9, 279.4);
  shown.user().focus(shown.widget("positionPopUp"));
  for (const auto key : {XK_Down, XK_Down, XK_Return}) shown.user().press(key);
  shown.user().focus(shown.widget("textBoxMarginLeft"));
  shown.user().press(XK_a, XK_Control_L);
  shown.user().type("8");
  const auto accessibles = accessibleControls();
  const auto image = std::ranges::find(accessibles, "image", &Accessible::role);
  ASSERT_NE(image, accessibles.end());
  EXPECT_THAT(image->name, testing::StartsWith("216 \u00D7 279 mm; "));
  EXPECT_THAT(image->name, testing::HasSubstr("Print Position: Right; "));
  EXPECT_THAT(image->name, testing::HasSubstr("Left Margin: 8 mm; "));
  const auto position = std::ranges::find(accessibles, "Right", &Accessible::description);
  EXPECT_NE(position, accessibles.end());
}

TEST(ScreenReader, ReadsTheNoteAboutThePage) {
  ShownPanel shown;
  shown.view().showPage(std::make_shared<platform::PageImage>(
      platform::PageImage{1, 1, {0}, 0, 0, 210, 297, std::array{2.0, 9.0, 9.0, 9.0}, "Page 2 of 5"}));
  const std::string note = "The page has content in: Top Margin (up to 3 mm)";
  const auto accessibles = accessiblesOfThisProgram();
  const auto label = std::ranges::find(accessibles, note, &Accessible::name);
  ASSERT_NE(label, accessibles.end());
  EXPECT_EQ(label->role, "label");
  EXPECT_EQ(label->description, "");
  const auto image = std::ranges::find(accessibles, "image", &Accessible::role);
  EXPECT_THAT(image->name, testing::EndsWith("; Page 2 of 5; " + note));
  EXPECT_EQ(shown.view().pageNote(), note);
}

// Once the panel sets a number in the focused box, this number is the description of the box until the focus
// leaves it.
TEST(ScreenReader, ReadsEachNumberThatThePanelSets) {
  ShownPanel shown({.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "12"}}});
  auto& user = shown.user();
  const auto description = [] {
    const auto accessibles = accessibleControls();
    return std::ranges::find(accessibles, "Top Margin:", &Accessible::name)->description;
  };
  user.focus(shown.widget("textBoxMarginTop"));
  EXPECT_EQ(description(), "mm   (0 to 20)");
  // A screen reader speaks typed keys itself, and the panel leaves a legal number as it is.
  user.press(XK_a, XK_Control_L);
  user.type("1");
  EXPECT_EQ(description(), "mm   (0 to 20)");
  user.type("2");
  user.press(XK_Up);
  EXPECT_EQ(description(), "13 mm");
  user.press(XK_a, XK_Control_L);
  user.type("99");
  EXPECT_EQ(description(), "20 mm");
  user.press(XK_z, XK_Control_L);
  EXPECT_EQ(description(), "9 mm");
  user.press(XK_Tab);
  waitUntil("the limits", [&] { return description() == "mm   (0 to 20)"; });
}

TEST(ScreenReader, ReadsNoNumberOfABoxThatIsNotInUse) {
  ShownPanel shown({.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "12"}}});
  shown.user().focus(shown.widget("textBoxMarginLeft"));
  shown.user().click(shown.widget("defaultButton"));
  ASSERT_EQ(shown.text("textBoxMarginTop"), "5");
  for (const auto& [role, name, description] : accessibleControls()) {
    if (role == "spin button") {
      EXPECT_THAT(description, testing::StartsWith("mm   (0 to ")) << name;
    }
  }
}

TEST(ScreenReader, ReadsTheItemsOfAnOpenMenu) {
  ShownPanel shown;
  gtk_menu_button_popup(GTK_MENU_BUTTON(shown.widget("positionPopUp")));
  std::vector<std::string> spoken;
  for (const auto& [role, name, description] : accessiblesOfThisProgram()) {
    if (role.starts_with("list")) spoken.push_back(role + " | " + name);
  }
  EXPECT_THAT(spoken, testing::ElementsAre("list | Print Position:", "list item | Left", "list item | Center",
                                           "list item | Right"));
}

TEST(ScreenReader, ReadsANameForEachControlInEveryLanguage) {
  for (const std::string language : kLanguages) {
    ShownPanel shown({.language = language});
    const auto accessibles = accessibleControls();
    EXPECT_EQ(accessibles.size(), 11U) << language;
    for (const auto& [role, name, description] : accessibles) {
      EXPECT_THAT(name, testing::Not(testing::IsEmpty())) << role << " in " << language;
      EXPECT_THAT(name, testing::Not(testing::HasSubstr("_"))) << role << " in " << language;
      EXPECT_THAT(name, testing::Not(testing::HasSubstr("Gtk"))) << role << " in " << language;
    }
  }
}

}  // namespace
}  // namespace tandemtrim::test
