#include <X11/keysym.h>
#include <gtest/gtest.h>

#include "adapters/shared/notification_center.hpp"
#include "tests/adapters/gtk/shown_panel.hpp"

namespace tandemtrim::test {
namespace {

// The sample printer allows up to 20 mm at the top.
class StepperBesideABox : public testing::Test {
 protected:
  ShownPanel shown{{.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "12"}}}};
  User& user = shown.user();
  GtkWidget* box = shown.widget("textBoxMarginTop");
  GtkWidget* plus = gtk_widget_get_last_child(box);
  GtkWidget* minus = gtk_widget_get_prev_sibling(plus);

  // In microseconds: time for a stepper to repeat by mistake.
  static constexpr gint64 kSeveralRepeats = 250'000;

  [[nodiscard]] int value() { return std::stoi(shown.text("textBoxMarginTop")); }
  void leaveTheBox() { user.focus(shown.widget("positionPopUp")); }
};

TEST_F(StepperBesideABox, MovesItsValueByOneOnEachClick) {
  user.click(plus);
  user.click(plus);
  EXPECT_EQ(value(), 14);
  user.click(minus);
  EXPECT_EQ(value(), 13);
}

TEST_F(StepperBesideABox, RepeatsWhileItIsPressedAndStopsWhenItIsReleased) {
  user.hold(minus, [&] { return value() <= 8; });
  const int atRelease = value();
  EXPECT_GT(atRelease, 5);
  user.click(plus);
  EXPECT_EQ(value(), atRelease + 1);
}

TEST_F(StepperBesideABox, StopsAtItsLimitHoweverLongItIsPressed) {
  gint64 arrived = 0;
  user.hold(plus, [&] {
    if (value() == 20 && arrived == 0) arrived = g_get_monotonic_time();
    return arrived != 0 && g_get_monotonic_time() - arrived > kSeveralRepeats;
  });
  EXPECT_EQ(value(), 20);
}

TEST_F(StepperBesideABox, StopsRepeatingWhenItIsGreyed) {
  gint64 greyed = 0;
  int atThatTime = 0;
  user.hold(plus, [&] {
    if (value() >= 14 && greyed == 0) {
      gtk_widget_set_sensitive(box, FALSE);
      greyed = g_get_monotonic_time();
      atThatTime = value();
    }
    return greyed != 0 && g_get_monotonic_time() - greyed > kSeveralRepeats;
  });
  EXPECT_EQ(value(), atThatTime);
}

TEST_F(StepperBesideABox, FollowsTheUpAndDownKeysInTheBox) {
  user.focus(box);
  for (const auto up : {XK_Up, XK_KP_Up}) user.press(static_cast<unsigned>(up));
  EXPECT_EQ(value(), 14);
  user.press(XK_Down);
  EXPECT_EQ(value(), 13);
  EXPECT_TRUE(gtk_widget_has_focus(GTK_WIDGET(gtk_editable_get_delegate(GTK_EDITABLE(box)))));
}

TEST_F(StepperBesideABox, MovesByTenAndToTheLimitsByPageUpAndPageDown) {
  user.focus(box);
  const std::pair<unsigned, int> presses[] = {{XK_Page_Down, 2}, {XK_Page_Up, 12}, {XK_Page_Up, 20}};
  for (const auto& [key, expected] : presses) {
    user.press(key);
    EXPECT_EQ(value(), expected);
  }
  user.press(XK_Page_Down, XK_Control_L);
  EXPECT_EQ(value(), 0);
  user.press(XK_Page_Up, XK_Control_L);
  EXPECT_EQ(value(), 20);
}

// The panel's tab has neighbours on both sides.
TEST_F(StepperBesideABox, KeepsTheTabOnCtrlPageUpAndCtrlPageDown) {
  ShownPanel dialog({.inPrintDialog = true, .stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "20"}}});
  dialog.user().focus(dialog.widget("textBoxMarginTop"));
  for (const auto key : {XK_Page_Up, XK_Page_Down, XK_Page_Down}) {
    dialog.user().press(static_cast<unsigned>(key), XK_Control_L);
    EXPECT_TRUE(gtk_widget_get_mapped(dialog.root()));
  }
}

TEST_F(StepperBesideABox, GreysTheButtonThatLeadsBeyondALimit) {
  for (const auto& [text, canFall, canRise] :
       {std::tuple{"0", false, true}, {"7", true, true}, {"20", true, false}}) {
    user.focus(box);
    user.press(XK_a, XK_Control_L);
    user.type(text);
    EXPECT_EQ(gtk_widget_is_sensitive(minus), canFall) << text;
    EXPECT_EQ(gtk_widget_is_sensitive(plus), canRise) << text;
  }
}

TEST_F(StepperBesideABox, MovesTheFocusToTheTextOnAClick) {
  leaveTheBox();
  user.click(plus);
  EXPECT_TRUE(gtk_widget_has_focus(GTK_WIDGET(gtk_editable_get_delegate(GTK_EDITABLE(box)))));
}

TEST_F(StepperBesideABox, ContinuesFromTheTypedText) {
  user.focus(box);
  user.press(XK_a, XK_Control_L);
  user.type("7");
  user.press(XK_Up);
  EXPECT_EQ(value(), 8);
  gtk_editable_set_text(GTK_EDITABLE(box), "3");
  g_signal_emit_by_name(box, "change-value", GTK_SCROLL_STEP_UP);
  EXPECT_EQ(value(), 4);
}

// Ctrl+Shift+U begins a character, which replaces the selection; an empty box counts as 0.
TEST_F(StepperBesideABox, ContinuesFromTheRestOfTheTextWhileTheInputMethodComposes) {
  user.focus(box);
  user.press(XK_a, XK_Control_L);
  user.press(XK_U, XK_Control_L);
  user.type("3");
  user.turnWheel(box, true);
  EXPECT_EQ(value(), 1);
}

TEST_F(StepperBesideABox, IgnoresKeysThatTheInputMethodMayNeed) {
  user.focus(box);
  user.press(XK_a, XK_Control_L);
  user.press(XK_U, XK_Control_L);
  user.type("3");
  const auto composing = shown.text("textBoxMarginTop");
  for (const auto step : {GTK_SCROLL_STEP_UP, GTK_SCROLL_PAGE_DOWN, GTK_SCROLL_END}) {
    g_signal_emit_by_name(box, "change-value", step);
    EXPECT_EQ(shown.text("textBoxMarginTop"), composing);
  }
  user.type("9 ");
  EXPECT_EQ(value(), 9);
}

TEST_F(StepperBesideABox, FollowsTheWheelOnlyWhileTheBoxHasTheFocus) {
  leaveTheBox();
  user.turnWheel(box, true);
  EXPECT_EQ(value(), 12);
  user.focus(box);
  user.turnWheel(box, true);
  EXPECT_EQ(value(), 13);
  user.turnWheel(box, false);
  user.turnWheel(box, false);
  EXPECT_EQ(value(), 11);
}

TEST_F(StepperBesideABox, PostsNoNotificationOfAnEdit) {
  int notifications = 0;
  auto* const object = dynamic_cast<platform::gtk::Panel&>(shown.view()).control("textBoxMarginTop");
  platform::defaultCenter().addObserver(
      this, [&](const platform::Notification&) { ++notifications; },
      platform::NSControlTextDidChangeNotification, object);
  user.click(plus);
  user.focus(box);
  user.press(XK_Up);
  platform::defaultCenter().removeObserver(this);
  EXPECT_EQ(value(), 14);
  EXPECT_EQ(notifications, 0);
}

TEST_F(StepperBesideABox, BringsAForeignValueIntoItsRangeOnTheFirstStep) {
  for (const auto& [stored, nearest] : {std::pair{"777", "20"}, {"-40", "0"}}) {
    for (const auto step : {XK_Up, XK_Down}) {
      ShownPanel foreign({.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", stored}}});
      foreign.user().focus(foreign.widget("textBoxMarginTop"));
      foreign.user().press(static_cast<unsigned>(step));
      EXPECT_EQ(foreign.text("textBoxMarginTop"), nearest) << stored;
    }
  }
}

TEST(MenuUnderTheWheel, KeepsItsChoice) {
  ShownPanel shown;
  for (const std::string menu : {"directionPopUp", "positionPopUp"}) {
    auto* const widget = shown.widget(menu);
    auto* const choice = widgetsOf(widget, GTK_TYPE_LABEL).front();
    const std::string before = gtk_label_get_text(GTK_LABEL(choice));
    for (const bool up : {false, true}) {
      shown.user().turnWheel(widget, up);
      EXPECT_EQ(gtk_label_get_text(GTK_LABEL(choice)), before) << menu;
      shown.user().focus(widget);
      shown.user().turnWheel(widget, up);
      EXPECT_EQ(gtk_label_get_text(GTK_LABEL(choice)), before) << menu;
    }
  }
}

}  // namespace
}  // namespace tandemtrim::test
