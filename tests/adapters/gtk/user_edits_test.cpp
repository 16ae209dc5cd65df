#include <functional>

#include <X11/keysym.h>
#include <gmock/gmock.h>

#include "adapters/shared/notification_center.hpp"
#include "tests/adapters/gtk/shown_panel.hpp"

namespace tandemtrim::test {
namespace {

constexpr const char* kTop = "textBoxMarginTop";
constexpr const char* kBottom = "textBoxMarginBottom";

// The sample printer allows up to 20 mm at the top.
class UserEdits : public testing::Test {
 protected:
  ShownPanel shown{{.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "12"}}}};
  User& user = shown.user();
  GtkWidget* box = shown.widget(kTop);
  int notifications = 0;

  UserEdits() {
    auto* const object = dynamic_cast<platform::gtk::Panel&>(shown.view()).control(kTop);
    platform::defaultCenter().addObserver(
        this, [this](const platform::Notification&) { ++notifications; },
        platform::NSControlTextDidChangeNotification, object);
    user.focus(box);
  }
  ~UserEdits() override { platform::defaultCenter().removeObserver(this); }
  UserEdits(const UserEdits&) = delete;
  UserEdits& operator=(const UserEdits&) = delete;

  [[nodiscard]] std::string text() { return shown.text(kTop); }
  [[nodiscard]] int caret() { return gtk_editable_get_position(GTK_EDITABLE(box)); }
};

// The box shows the user's input at once; the program's correction follows.
TEST_F(UserEdits, AreCorrectedByASingleWriteAndNotWrittenWhereTheyAreLegal) {
  const std::pair<const char*, int> texts[] = {{"12", 0}, {"1a2", 1}, {"99", 1}, {"007", 1}};
  for (const auto& [typed, expected] : texts) {
    gtk_editable_delete_text(GTK_EDITABLE(box), 0, -1);
    int end = 0;
    gtk_editable_insert_text(GTK_EDITABLE(box), typed, -1, &end);
    int writes = 0;
    const auto handler = g_signal_connect(
        box, "notify::text", G_CALLBACK(+[](GtkWidget*, GParamSpec*, int* count) { ++*count; }), &writes);
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
    g_signal_handler_disconnect(box, handler);
    EXPECT_EQ(writes, expected) << typed;
  }
}

struct Edit {
  const char* what;
  std::function<void(User&, GtkWidget*)> act;
  const char* text;

  friend std::ostream& operator<<(std::ostream& out, const Edit& edit) { return out << edit.what; }
};

GtkWidget* textIn(GtkWidget* box) { return GTK_WIDGET(gtk_editable_get_delegate(GTK_EDITABLE(box))); }

void selectAll(User& user) { user.press(XK_a, XK_Control_L); }

const Edit kEdits[] = {
    {"a digit over everything",
     [](User& user, GtkWidget*) {
       selectAll(user);
       user.type("5");
     },
     "5"},
    {"a letter over everything",
     [](User& user, GtkWidget*) {
       selectAll(user);
       user.type("x");
     },
     "0"},
    {"a digit at the end",
     [](User& user, GtkWidget*) {
       user.press(XK_End);
       user.type("3");
     },
     "20"},
    {"deletion of everything",
     [](User& user, GtkWidget*) {
       selectAll(user);
       user.press(XK_Delete);
     },
     "0"},
    {"deletion of the last digit",
     [](User& user, GtkWidget*) {
       user.press(XK_End);
       user.press(XK_BackSpace);
     },
     "1"},
    {"deletion of the word",
     [](User& user, GtkWidget*) {
       user.press(XK_End);
       user.press(XK_BackSpace, XK_Control_L);
     },
     "0"},
    {"cutting",
     [](User& user, GtkWidget*) {
       selectAll(user);
       user.press(XK_x, XK_Control_L);
     },
     "0"},
    {"pasting over everything",
     [](User& user, GtkWidget*) {
       selectAll(user);
       user.paste("7 mm");
     },
     "7"},
    {"an edit from a screen reader",
     [](User&, GtkWidget* box) {
       gtk_editable_set_text(GTK_EDITABLE(box), "9");
       while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
     },
     "9"},
};

class EachUserEdit : public UserEdits, public testing::WithParamInterface<Edit> {};

TEST_P(EachUserEdit, IsReportedOnceWithItsFinalText) {
  GetParam().act(user, box);
  EXPECT_EQ(text(), GetParam().text);
  EXPECT_EQ(notifications, 1);
  shown.panel().saveValuesAndReturnError(nullptr);
  EXPECT_EQ(shown.stored("MVTopMargin"), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Edits, EachUserEdit, testing::ValuesIn(kEdits));

TEST_F(UserEdits, IncludeATextDroppedIntoTheBox) {
  auto* const source = shown.widget(kBottom);
  user.focus(source);
  selectAll(user);
  user.type("30");
  selectAll(user);
  user.drag(textIn(source), textIn(box));
  waitUntil("the drop", [&] { return notifications > 0; });
  user.awaitFrame();
  EXPECT_EQ(text(), "20");
  EXPECT_EQ(notifications, 1);
}

// Ctrl+Shift+U begins a character that is entered by its number.
TEST_F(UserEdits, AreReportedWhenTheInputMethodHasComposedThem) {
  selectAll(user);
  user.press(XK_U, XK_Control_L);
  user.type("37");
  EXPECT_EQ(notifications, 0);
  user.press(XK_Return);
  EXPECT_EQ(text(), "7");
  EXPECT_EQ(notifications, 1);
}

TEST_F(UserEdits, ThatTheInputMethodStillComposesDoNotDelayTheHost) {
  selectAll(user);
  user.press(XK_U, XK_Control_L);
  user.type("3");
  shown.panel().saveValuesAndReturnError(nullptr);
  EXPECT_EQ(shown.stored("MVTopMargin"), "0");
  EXPECT_EQ(text(), "0");
  // The composition has ended.
  user.type("7");
  EXPECT_EQ(text(), "7");
}

TEST_F(UserEdits, ThatTheInputMethodHasNotCommittedEndWithTheHostsCall) {
  user.press(XK_End);
  user.press(XK_U, XK_Control_L);
  user.type("3");
  shown.panel().saveValuesAndReturnError(nullptr);
  EXPECT_EQ(shown.stored("MVTopMargin"), "12");
  user.type("1");
  EXPECT_EQ(text(), "20");
}

TEST_F(UserEdits, AndStepsAreUndoneOneByOne) {
  user.press(XK_End);
  user.type("3");
  selectAll(user);
  user.paste("abc");
  user.press(XK_Up);
  for (const auto* const before : {"0", "20", "12", "12"}) {
    user.press(XK_z, XK_Control_L);
    EXPECT_EQ(text(), before);
    shown.panel().saveValuesAndReturnError(nullptr);
    EXPECT_EQ(shown.stored("MVTopMargin"), before);
  }
}

TEST_F(UserEdits, AreNeverUndoneIntoAnIllegalText) {
  ShownPanel foreign({.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "777"}}});
  foreign.user().focus(foreign.widget(kTop));
  selectAll(foreign.user());
  foreign.user().type("1");
  foreign.user().press(XK_z, XK_Control_L);
  EXPECT_EQ(foreign.text(kTop), "1");
}

// If 12.5 were corrected, it would become 20, as 125 is above the limit.
TEST_F(UserEdits, ThatArePendingDoNotCorrectWhatTheProgramShowsNext) {
  gtk_editable_set_text(GTK_EDITABLE(box), "9");
  dynamic_cast<MorvaTTTextBoxKV2&>(*dynamic_cast<platform::gtk::Panel&>(shown.view()).control(kTop))
      .setStringValue("12.5");
  EXPECT_EQ(notifications, 1);
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
  EXPECT_EQ(text(), "12.5");
  EXPECT_EQ(notifications, 1);
}

TEST_F(UserEdits, AreNotReportedForChangesByTheProgram) {
  shown.panel().willShow();
  shown.panel().restoreValuesAndReturnError(nullptr);
  user.click(shown.widget("defaultButton"));
  EXPECT_EQ(text(), "5");
  EXPECT_EQ(notifications, 0);
}

// A margin has only digits.
TEST_F(UserEdits, AreOfferedNoEmojiInTheMenuOfTheBox) {
  user.press(XK_F10, XK_Shift_L);
  std::vector<std::string> offered;
  for (auto* const label : widgetsOf(box, GTK_TYPE_LABEL)) {
    if (gtk_widget_get_mapped(label) != FALSE) offered.emplace_back(gtk_label_get_text(GTK_LABEL(label)));
  }
  user.press(XK_Escape);
  EXPECT_THAT(offered, testing::Contains("Select All"));
  EXPECT_THAT(offered, testing::Not(testing::Contains("Insert Emoji")));
}

struct Typing {
  const char* before;
  std::vector<unsigned> keys;
  const char* after;
  int caret;

  friend std::ostream& operator<<(std::ostream& out, const Typing& typing) {
    return out << typing.before << " becomes " << typing.after;
  }
};

class InsertionPoint : public UserEdits, public testing::WithParamInterface<Typing> {};

TEST_P(InsertionPoint, StaysWhereAUserExpectsIt) {
  const auto& typing = GetParam();
  selectAll(user);
  user.type(typing.before);
  user.press(XK_Home);
  for (const auto key : typing.keys) user.press(key);
  EXPECT_EQ(text(), typing.after);
  EXPECT_EQ(caret(), typing.caret);
}

const Typing kTypings[] = {
    {"5", {XK_1}, "15", 1},         {"15", {XK_Right, XK_a}, "15", 1},    {"5", {XK_0}, "5", 0},
    {"1", {XK_End, XK_2}, "12", 2}, {"1", {XK_End, XK_a, XK_2}, "12", 2}, {"12", {XK_Right, XK_9}, "20", 1},
    {"12", {XK_Delete}, "2", 0},    {"5", {XK_Delete, XK_8}, "8", 1},
};

INSTANTIATE_TEST_SUITE_P(Typings, InsertionPoint, testing::ValuesIn(kTypings));

// The text of another program has five digits after the insertion point, the corrected text only two.
TEST_F(UserEdits, ThatShortenTheRestOfTheTextLeaveTheInsertionPointBeforeIt) {
  ShownPanel foreign({.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", "77777"}}});
  foreign.user().focus(foreign.widget(kTop));
  foreign.user().press(XK_Home);
  foreign.user().type("1");
  EXPECT_EQ(foreign.text(kTop), "20");
  EXPECT_EQ(gtk_editable_get_position(GTK_EDITABLE(foreign.widget(kTop))), 0);
}

struct Selection {
  const char* what;
  std::function<void(User&)> act;
  std::string text;
  // Empty if nothing is selected.
  std::string selected;
  bool byHost = false;

  friend std::ostream& operator<<(std::ostream& out, const Selection& selection) {
    return out << selection.what;
  }
};

class SelectedText : public UserEdits, public testing::WithParamInterface<Selection> {};

TEST_P(SelectedText, StaysSelectedOnlyIfItIsTheWholeText) {
  GetParam().act(user);
  if (GetParam().byHost) shown.panel().restoreValuesAndReturnError(nullptr);
  EXPECT_EQ(text(), GetParam().text);
  int start = 0;
  int end = 0;
  gtk_editable_get_selection_bounds(GTK_EDITABLE(box), &start, &end);
  const auto from = static_cast<std::size_t>(start);
  EXPECT_EQ(text().substr(from, static_cast<std::size_t>(end) - from), GetParam().selected);
}

const Selection kSelections[] = {
    {"the host's value with one digit selected",
     [](User& user) {
       user.press(XK_Up);
       user.press(XK_Home);
       user.press(XK_Right, XK_Shift_L);
     },
     "12", "", true},
    {"a step with nothing selected",
     [](User& user) {
       user.press(XK_End);
       user.press(XK_Up);
     },
     "13", ""},
    {"the host's value with all of it selected",
     [](User& user) {
       user.press(XK_Up);
       selectAll(user);
     },
     "12", "12", true},
    {"deletion of all of it",
     [](User& user) {
       selectAll(user);
       user.press(XK_Delete);
     },
     "0", ""},
};

INSTANTIATE_TEST_SUITE_P(Selections, SelectedText, testing::ValuesIn(kSelections));

struct HostCall {
  const char* name;
  std::function<void(platform::PrintPanel&)> call;
  const char* text;

  friend std::ostream& operator<<(std::ostream& out, const HostCall& call) { return out << call.name; }
};

class TypedAtOnce : public UserEdits, public testing::WithParamInterface<HostCall> {};

// Nothing runs between the typing and the host's call.
TEST_P(TypedAtOnce, IsCorrectedBeforeTheHostsCallReturns) {
  gtk_editable_set_text(GTK_EDITABLE(box), "1a8");
  GetParam().call(shown.panel());
  EXPECT_EQ(notifications, 1);
  EXPECT_EQ(text(), GetParam().text);
}

const HostCall kHostCalls[] = {
    {"save", [](auto& panel) { panel.saveValuesAndReturnError(nullptr); }, "18"},
    {"restore", [](auto& panel) { panel.restoreValuesAndReturnError(nullptr); }, "12"},
    {"willShow", [](auto& panel) { panel.willShow(); }, "12"},
    {"summaryInfo", [](auto& panel) { (void)panel.summaryInfo(); }, "12"},
    {"panelName", [](auto& panel) { (void)panel.panelName(); }, "18"},
    {"panelKind", [](auto& panel) { (void)panel.panelKind(); }, "18"},
    {"panelView", [](auto& panel) { (void)panel.panelView(); }, "18"},
    {"shouldHide", [](auto& panel) { (void)panel.shouldHide(); }, "18"},
    {"shouldShowHelp", [](auto& panel) { (void)panel.shouldShowHelp(); }, "18"},
    {"supportedPPDOptionKeys", [](auto& panel) { (void)panel.supportedPPDOptionKeys(); }, "18"},
    {"shouldPrint", [](auto& panel) { (void)panel.shouldPrint(); }, "18"},
};

INSTANTIATE_TEST_SUITE_P(Calls, TypedAtOnce, testing::ValuesIn(kHostCalls));

TEST_F(UserEdits, StayPendingWhenTheHostReadsTheSettings) {
  gtk_editable_set_text(GTK_EDITABLE(box), "1a8");
  (void)shown.panel().settings();
  EXPECT_EQ(notifications, 0);
  EXPECT_EQ(text(), "1a8");
}

// The correction of a box without a range raises.
TEST_F(UserEdits, WhoseCorrectionRaisesAreCorrectedLaterAndNeverSavedAsTyped) {
  auto& control =
      dynamic_cast<MorvaTTTextBoxKV2&>(*dynamic_cast<platform::gtk::Panel&>(shown.view()).control(kTop));
  const auto min = control.min();
  const auto max = control.max();
  control.setValueRange(nullptr, nullptr);
  selectAll(user);
  user.paste("1a8");
  EXPECT_EQ(text(), "1a8");
  EXPECT_THROW(shown.panel().saveValuesAndReturnError(nullptr), std::invalid_argument);
  EXPECT_EQ(shown.stored("MVTopMargin"), "12");
  control.setValueRange(min, max);
  shown.panel().saveValuesAndReturnError(nullptr);
  EXPECT_EQ(text(), "18");
  EXPECT_EQ(shown.stored("MVTopMargin"), "18");
}

TEST_F(UserEdits, ThatArePendingAreDroppedWithThePanel) {
  gtk_editable_set_text(GTK_EDITABLE(box), "1a8");
  shown.dropPanel();
  user.focus(box);
  EXPECT_EQ(gtk_editable_get_text(GTK_EDITABLE(box)), std::string("1a8"));
  EXPECT_EQ(notifications, 0);
}

using namespace std::string_literals;

struct StoredText {
  const char* what;
  std::string text;
  std::string shown;

  friend std::ostream& operator<<(std::ostream& out, const StoredText& stored) { return out << stored.what; }
};

class StoredTextThatTheToolkitCannotShow : public testing::TestWithParam<StoredText> {};

TEST_P(StoredTextThatTheToolkitCannotShow, IsSavedByteForByteUntilItIsEdited) {
  const auto& stored = GetParam();
  ShownPanel shown({.stored = {{"MVTandemTrim", "On"}, {"MVTopMargin", stored.text}}});
  EXPECT_EQ(shown.text(kTop), stored.shown);
  shown.panel().restoreValuesAndReturnError(nullptr);
  shown.user().focus(shown.widget(kTop));
  shown.panel().saveValuesAndReturnError(nullptr);
  EXPECT_EQ(shown.stored("MVTopMargin"), stored.text);
  shown.user().press(XK_End);
  shown.user().press(XK_BackSpace);
  shown.panel().saveValuesAndReturnError(nullptr);
  EXPECT_EQ(shown.stored("MVTopMargin"), shown.text(kTop));
  EXPECT_THAT(shown.text(kTop), testing::MatchesRegex("[0-9]{1,2}"));
}

// A box shows at most 65,534 bytes.
const StoredText kStoredTexts[] = {
    {"Latin 1", "5\xE9", "5\uFFFD"},
    {"a lone byte", "\xFF", "\uFFFD"},
    {"a null character", "5\0x"s, "5\uFFFDx"},
    {"a surrogate", "1\xED\xA0\x80", "1\uFFFD\uFFFD\uFFFD"},
    {"digits without end", std::string(100'000, '7'), std::string(65'534, '7')},
    {"a character across the end", std::string(65'533, '7') + "\u00E9", std::string(65'533, '7')},
};

INSTANTIATE_TEST_SUITE_P(Texts, StoredTextThatTheToolkitCannotShow, testing::ValuesIn(kStoredTexts));

TEST_F(UserEdits, InAWindowWhosePanelIsGoneDoNothing) {
  auto* const plus = gtk_widget_get_last_child(shown.widget("textBoxMarginTop"));
  auto* const check = shown.widget("tandemTrimValid");
  auto* const menu = shown.widget("positionPopUp");
  shown.dropPanel();
  user.turnWheel(box, true);
  user.press(XK_z, XK_Control_L);
  EXPECT_EQ(gtk_editable_get_text(GTK_EDITABLE(box)), std::string("12"));
  user.press(XK_Up);
  user.focus(box);
  user.press(XK_End);
  user.type("9");
  user.click(plus);
  user.click(check);
  user.click(menu);
  EXPECT_EQ(gtk_menu_button_get_popover(GTK_MENU_BUTTON(menu)), nullptr);
  EXPECT_EQ(shown.stored("MVTopMargin"), "12");
  EXPECT_EQ(notifications, 0);
}

}  // namespace
}  // namespace tandemtrim::test
