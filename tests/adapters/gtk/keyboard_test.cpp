#include <algorithm>
#include <array>
#include <set>
#include <tuple>

#include <X11/keysym.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/adapters/gtk/shown_panel.hpp"

namespace tandemtrim::test {
namespace {

const std::vector<std::string> kFromTopToBottom{
    "tandemTrimValid",     "directionPopUp",    "positionPopUp",      "textBoxMarginTop",
    "textBoxMarginBottom", "textBoxMarginLeft", "textBoxMarginRight", "defaultButton"};

// The nib's name of the control that has the focus.
std::string focused(ShownPanel& shown) {
  for (auto* widget = gtk_root_get_focus(GTK_ROOT(shown.window())); widget != nullptr;
       widget = gtk_widget_get_parent(widget)) {
    const char* const name = gtk_buildable_get_buildable_id(GTK_BUILDABLE(widget));
    if (name != nullptr && std::ranges::count(kFromTopToBottom, name) == 1) return name;
  }
  return "";
}

class KeyboardInALanguage : public testing::TestWithParam<const char*> {};

TEST_P(KeyboardInALanguage, GoesFromTopToBottomAndOneStepBack) {
  ShownPanel shown({.language = GetParam()});
  shown.user().focus(shown.widget(kFromTopToBottom.front()));
  std::vector<std::string> visited{focused(shown)};
  while (visited.size() < kFromTopToBottom.size()) {
    shown.user().press(XK_Tab);
    visited.push_back(focused(shown));
  }
  EXPECT_EQ(visited, kFromTopToBottom);
  shown.user().press(XK_Tab, XK_Shift_L);
  EXPECT_EQ(focused(shown), "textBoxMarginRight");
}

TEST_P(KeyboardInALanguage, MarksADifferentAccessLetterForEachControl) {
  ShownPanel shown({.language = GetParam()});
  std::set<guint> letters;
  for (auto* const label : widgetsOf(shown.root(), GTK_TYPE_LABEL)) {
    const auto letter = gtk_label_get_mnemonic_keyval(GTK_LABEL(label));
    if (letter != GDK_KEY_VoidSymbol) letters.insert(letter);
  }
  EXPECT_EQ(letters.size(), kFromTopToBottom.size());
}

INSTANTIATE_TEST_SUITE_P(Languages, KeyboardInALanguage, testing::ValuesIn(kLanguages));

TEST(Mnemonic, MovesTheFocusToTheBoxOfItsLabelInThePrintDialogToo) {
  struct Keys {
    const char* language;
    const char* ofMargins;
  };
  for (const auto& [language, keys] : {Keys{"en", "tblr"}, Keys{"de", "oulr"}, Keys{"fr", "mfgr"},
                                       Keys{"it", "mfsd"}, Keys{"nl", "bolr"}, Keys{"ja", "tblr"}}) {
    for (const bool inPrintDialog : {false, true}) {
      ShownPanel shown({.language = language, .inPrintDialog = inPrintDialog});
      std::string_view rest = keys;
      for (const std::string side : {"Top", "Bottom", "Left", "Right"}) {
        shown.user().focus(shown.widget("defaultButton"));
        shown.user().press(static_cast<unsigned char>(rest.front()), XK_Alt_L);
        EXPECT_EQ(focused(shown), "textBoxMargin" + side) << language;
        rest.remove_prefix(1);
      }
    }
  }
}

TEST(Mnemonic, BelongsToTheMenuOfItsLabel) {
  ShownPanel shown;
  for (const auto& [label, menu] :
       {std::pair{"labelDirection", "directionPopUp"}, std::pair{"labelPosition", "positionPopUp"}})
    EXPECT_EQ(gtk_label_get_mnemonic_widget(GTK_LABEL(shown.widget(label))), shown.widget(menu));
}

// The choice that a menu shows.
std::string choice(ShownPanel& shown) {
  return gtk_label_get_text(GTK_LABEL(widgetsOf(shown.widget("positionPopUp"), GTK_TYPE_LABEL).front()));
}

// Whether its list is open.
bool isOpen(ShownPanel& shown) {
  auto* const popover = gtk_menu_button_get_popover(GTK_MENU_BUTTON(shown.widget("positionPopUp")));
  return popover != nullptr && gtk_widget_get_mapped(GTK_WIDGET(popover)) != FALSE;
}

void awaitList(ShownPanel& shown, bool open) {
  waitUntil(open ? "the list" : "the end of the list", [&] { return isOpen(shown) == open; });
}

// The item of the open list that has the focus.
std::string itemAtKeyboard(ShownPanel& shown) {
  auto* const row = gtk_root_get_focus(GTK_ROOT(shown.window()));
  const auto labels = widgetsOf(row, GTK_TYPE_LABEL);
  return GTK_IS_LIST_BOX_ROW(row) ? gtk_label_get_text(GTK_LABEL(labels.front())) : "";
}

TEST(MenuByKeys, ClosesWhenItsPanelIsDestroyed) {
  ShownPanel shown;
  auto* const menu = shown.widget("positionPopUp");
  shown.user().focus(menu);
  shown.user().press(XK_space);
  awaitList(shown, true);
  shown.dropPanel();
  EXPECT_EQ(gtk_menu_button_get_popover(GTK_MENU_BUTTON(menu)), nullptr);
  shown.user().press(XK_Down);
  shown.user().press(XK_Return);
}

TEST(MenuByKeys, OpensAtItsChoice) {
  for (const auto& [key, modifier] :
       {std::pair{XK_space, 0}, std::pair{XK_Return, 0}, std::pair{XK_Down, 0}, std::pair{XK_Up, 0},
        std::pair{XK_KP_Down, 0}, std::pair{XK_Down, XK_Alt_L}}) {
    ShownPanel shown;
    EXPECT_FALSE(isOpen(shown));
    shown.user().focus(shown.widget("positionPopUp"));
    shown.user().press(key, modifier);
    awaitList(shown, true);
    EXPECT_EQ(itemAtKeyboard(shown), "Center");
  }
}

TEST(MenuByKeys, ChoosesTheItemThatTheKeysMoveTo) {
  for (const auto& [go, choose, expected] :
       {std::tuple{XK_Down, XK_Return, "Right"}, std::tuple{XK_Up, XK_space, "Left"},
        std::tuple{XK_Home, XK_Return, "Left"}, std::tuple{XK_End, XK_space, "Right"}}) {
    ShownPanel shown;
    shown.user().focus(shown.widget("positionPopUp"));
    shown.user().press(XK_Down);
    awaitList(shown, true);
    shown.user().press(go);
    EXPECT_EQ(itemAtKeyboard(shown), expected);
    EXPECT_EQ(choice(shown), "Center");
    shown.user().press(choose);
    awaitList(shown, false);
    EXPECT_EQ(choice(shown), expected);
    EXPECT_EQ(focused(shown), "positionPopUp");
  }
}

TEST(MenuByKeys, ClosesWithoutAChoiceOnEscape) {
  ShownPanel shown;
  shown.user().focus(shown.widget("positionPopUp"));
  shown.user().press(XK_Down);
  awaitList(shown, true);
  shown.user().press(XK_Down);
  shown.user().press(XK_Escape);
  awaitList(shown, false);
  EXPECT_EQ(choice(shown), "Center");
  EXPECT_EQ(focused(shown), "positionPopUp");
}

TEST(MenuByKeys, StaysClosedWhileItIsGrey) {
  ShownPanel shown({.stored = {{"MVTandemTrim", "Off"}}});
  EXPECT_FALSE(gtk_widget_grab_focus(shown.widget("positionPopUp")));
  shown.user().click(shown.widget("positionPopUp"));
  EXPECT_FALSE(isOpen(shown));
}

TEST(Menu, ListsItsItemsInOrderAndAcceptsAClick) {
  ShownPanel shown;
  auto* const menu = shown.widget("positionPopUp");
  shown.user().click(menu);
  awaitList(shown, true);
  shown.user().awaitFrame();
  auto* const list = widgetsOf(menu, GTK_TYPE_LIST_BOX).at(0);
  const auto labels = widgetsOf(list, GTK_TYPE_LABEL);
  std::vector<std::string> titles;
  for (auto* const label : labels) titles.emplace_back(gtk_label_get_text(GTK_LABEL(label)));
  EXPECT_THAT(titles, testing::ElementsAre("Left", "Center", "Right"));
  // As wide as the button, apart from its frame.
  EXPECT_NEAR(gtk_widget_get_width(list), gtk_widget_get_width(menu), 20);
  shown.user().click(labels.back());
  awaitList(shown, false);
  EXPECT_EQ(choice(shown), "Right");
}

// The widths that the menu needs, one after the user has chosen each of its items.
std::set<int> widthsByChoice(ShownPanel& shown, const char* name, int items) {
  auto* const menu = shown.widget(name);
  std::set<int> widths;
  shown.user().focus(menu);
  for (int item = 0; item < items; ++item) {
    shown.user().press(XK_space);
    shown.user().press(item == 0 ? XK_Home : XK_Down);
    shown.user().press(XK_Return);
    int width = 0;
    gtk_widget_measure(menu, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, &width, nullptr, nullptr);
    widths.insert(width);
  }
  return widths;
}

// Otherwise the panel would move while it is used.
TEST_P(KeyboardInALanguage, ChangesNoMenusWidth) {
  ShownPanel shown({.language = GetParam()});
  EXPECT_EQ(widthsByChoice(shown, "directionPopUp", 2).size(), 1U);
  EXPECT_EQ(widthsByChoice(shown, "positionPopUp", 3).size(), 1U);
}

TEST(MenuByKeys, ChoosesTheItemThatIsTyped) {
  ShownPanel shown;
  auto& user = shown.user();
  user.focus(shown.widget("positionPopUp"));
  user.type("r");
  EXPECT_EQ(choice(shown), "Right");
  user.type("x");
  EXPECT_EQ(choice(shown), "Right");
  EXPECT_FALSE(isOpen(shown));
  EXPECT_EQ(focused(shown), "positionPopUp");
}

TEST(MenuByKeys, TakesACapitalForTheSameLetter) {
  ShownPanel shown;
  shown.user().focus(shown.widget("positionPopUp"));
  shown.user().type("R");
  EXPECT_EQ(choice(shown), "Right");
}

TEST(MenuByKeys, LeavesKeysWithModifiersToTheWindow) {
  ShownPanel shown;
  auto& user = shown.user();
  for (const auto modifier : {XK_Control_L, XK_Alt_L, XK_Super_L}) {
    user.focus(shown.widget("positionPopUp"));
    user.press(XK_r, static_cast<unsigned>(modifier));
    EXPECT_EQ(choice(shown), "Center") << modifier;
  }
  user.focus(shown.widget("positionPopUp"));
  user.press(XK_Down, XK_Control_L);
  EXPECT_FALSE(isOpen(shown));
}

TEST(MenuByKeys, MovesInTheOpenListToTheItemThatIsTyped) {
  ShownPanel shown;
  auto& user = shown.user();
  user.focus(shown.widget("positionPopUp"));
  user.press(XK_space);
  awaitList(shown, true);
  user.type("le");
  EXPECT_EQ(itemAtKeyboard(shown), "Left");
  EXPECT_EQ(choice(shown), "Center");
  user.press(XK_Return);
  awaitList(shown, false);
  EXPECT_EQ(choice(shown), "Left");
}

// The height of a row, the place of its title, and how far the check mark is from the title's end.
std::vector<float> look(GtkWidget* row) {
  graphene_rect_t whole{};
  graphene_rect_t title{};
  graphene_rect_t mark{};
  EXPECT_TRUE(gtk_widget_compute_bounds(row, row, &whole));
  EXPECT_TRUE(gtk_widget_compute_bounds(widgetsOf(row, GTK_TYPE_LABEL).front(), row, &title));
  EXPECT_TRUE(gtk_widget_compute_bounds(widgetsOf(row, GTK_TYPE_IMAGE).front(), row, &mark));
  return {whole.size.height, title.origin.x - whole.origin.x, title.origin.y - whole.origin.y,
          mark.origin.x - title.origin.x - title.size.width};
}

TEST(Menu, LooksLikeTheToolkitsOwn) {
  ShownPanel shown;
  auto* const menu = shown.widget("positionPopUp");
  shown.user().click(menu);
  awaitList(shown, true);
  shown.user().awaitFrame();
  auto* const row = gtk_widget_get_parent(
      gtk_widget_get_parent(widgetsOf(widgetsOf(menu, GTK_TYPE_LIST_BOX).at(0), GTK_TYPE_LABEL).at(1)));
  const auto ours = look(row);
  shown.user().press(XK_Escape);

  constexpr std::array<const char*, 4> kTitles{"Left", "Center", "Right", nullptr};
  auto* const toolkits = gtk_drop_down_new_from_strings(kTitles.data());
  auto* const window = GTK_WINDOW(gtk_window_new());
  gtk_window_set_child(window, toolkits);
  User other(window);
  auto* const popover = gtk_widget_get_last_child(toolkits);
  gtk_popover_popup(GTK_POPOVER(popover));
  other.awaitFrame();
  auto* const list = widgetsOf(popover, GTK_TYPE_LIST_VIEW).at(0);
  EXPECT_EQ(ours, look(gtk_widget_get_next_sibling(gtk_widget_get_first_child(list))));
  gtk_popover_popdown(GTK_POPOVER(popover));
  waitUntil("the end of the toolkit's list", [&] { return !gtk_widget_get_mapped(popover); });
}

TEST(Menu, HasACheckMarkAtItsChoiceOnly) {
  ShownPanel shown;
  auto* const menu = shown.widget("positionPopUp");
  for (const auto& chosen : {std::vector<double>{0, 1, 0}, std::vector<double>{0, 0, 1}}) {
    shown.user().click(menu);
    awaitList(shown, true);
    auto* const list = widgetsOf(menu, GTK_TYPE_LIST_BOX).at(0);
    std::vector<double> marks;
    for (auto* const mark : widgetsOf(list, GTK_TYPE_IMAGE)) {
      EXPECT_STREQ(gtk_image_get_icon_name(GTK_IMAGE(mark)), "object-select-symbolic");
      marks.push_back(gtk_widget_get_opacity(mark));
    }
    EXPECT_EQ(marks, chosen);
    shown.user().press(XK_End);
    shown.user().press(XK_Return);
    awaitList(shown, false);
  }
}

TEST(Menu, OpensWithNothingChosenWhereTheStoredValueIsNotAnItem) {
  ShownPanel shown({.stored = {{"MVTandemTrim", "On"}, {"MVPrintPosition", "elsewhere"}}});
  EXPECT_EQ(choice(shown), "");
  shown.user().focus(shown.widget("positionPopUp"));
  shown.user().press(XK_Down);
  awaitList(shown, true);
  EXPECT_EQ(itemAtKeyboard(shown), "Left");
  shown.user().press(XK_Return);
  awaitList(shown, false);
  EXPECT_EQ(choice(shown), "Left");
}

TEST(Mnemonic, SwitchesTheFunctionByTheLetterOfTheCheckBox) {
  ShownPanel shown;
  auto* const check = shown.widget("tandemTrimValid");
  shown.user().press(XK_e, XK_Alt_L);
  EXPECT_FALSE(gtk_check_button_get_active(GTK_CHECK_BUTTON(check)));
  EXPECT_FALSE(gtk_widget_is_sensitive(shown.widget("directionPopUp")));
}

}  // namespace
}  // namespace tandemtrim::test
