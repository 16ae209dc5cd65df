#include <algorithm>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <gtkmm/init.h>

#include "adapters/gtk/panel.hpp"
#include "view/controls.hpp"

namespace tandemtrim::test {
namespace {

using platform::gtk::Panel;

// An owner that records what a nib connects to it.
class Owner : public platform::NibOwner {
 public:
  [[nodiscard]] std::vector<std::string_view> outletNames() const override {
    return {"labelMarginTop", "textBoxMarginTop", "stepperMarginTop", "tandemTrimValid",
            "directionPopUp", "defaultButton",    "tandemTrimView"};
  }
  void setOutlet(std::string_view name, platform::NibObject* object) override { outlets[name] = object; }
  void performAction(std::string_view name, platform::NibObject* sender) override {
    actions.emplace_back(name, sender);
  }

  std::map<std::string_view, platform::NibObject*> outlets;
  std::vector<std::pair<std::string, platform::NibObject*>> actions;
};

// A nib whose view contains `objects`, with `others` outside the view.
std::string nib(const std::string& objects, const std::string& others = "") {
  return "<interface>" + others + R"(<object class="GtkBox" id="tandemTrimView">)" + objects +
         "</object></interface>";
}
std::string object(const std::string& type, const std::string& name, const std::string& content = "") {
  return "<child><object class=\"" + type + "\" id=\"" + name + "\">" + content + "</object></child>";
}

class GtkNib : public testing::Test {
 protected:
  Owner owner;
  std::unique_ptr<Panel> panel;

  GtkNib() {
    gtk_init();
    Gtk::init_gtkmm_internals();
  }

  void load(const std::string& text) {
    panel = std::make_unique<Panel>(Gtk::Builder::create_from_string(text), owner);
    panel->connectOutlets(owner);
  }
  template <class Class>
  [[nodiscard]] bool isConnected(std::string_view outlet) const {
    const auto found = owner.outlets.find(outlet);
    return found != owner.outlets.end() && dynamic_cast<Class*>(found->second) != nullptr;
  }
};

TEST_F(GtkNib, ConnectsOnlyTheOutletsThatItHas) {
  load(nib(object("GtkLabel", "labelMarginTop")));
  EXPECT_THAT(owner.outlets, testing::SizeIs(2));
  EXPECT_TRUE(isConnected<MorvaTTTextLabelKV2>("labelMarginTop"));
  EXPECT_TRUE(isConnected<platform::View>("tandemTrimView"));
}

TEST_F(GtkNib, GivesEachWidgetTheClassOfItsKind) {
  load(nib(object("GtkSpinButton", "textBoxMarginTop") + object("GtkCheckButton", "tandemTrimValid") +
               object("GtkMenuButton", "directionPopUp") + object("GtkButton", "defaultButton"),
           R"(<object class="GtkAdjustment" id="stepperMarginTop"/>)"));
  EXPECT_TRUE(isConnected<MorvaTTTextBoxKV2>("textBoxMarginTop"));
  EXPECT_TRUE(isConnected<MorvaTTCheckBoxKV2>("tandemTrimValid"));
  EXPECT_TRUE(isConnected<MorvaTTPopUpButtonKV2>("directionPopUp"));
  EXPECT_TRUE(isConnected<MorvaTTButtonKV2>("defaultButton"));
  EXPECT_TRUE(isConnected<MorvaTTStepperKV2>("stepperMarginTop"));
}

TEST_F(GtkNib, ConnectsNoObjectOfAnUnknownKind) {
  load(nib(object("GtkImage", "defaultButton") + object("GtkBox", "stepperMarginTop")));
  EXPECT_THAT(owner.outlets, testing::SizeIs(1));
}

TEST_F(GtkNib, HasNoViewUnlessOneIsNamed) {
  load(R"(<interface><object class="GtkBox"/></interface>)");
  EXPECT_TRUE(owner.outlets.empty());
  EXPECT_EQ(panel->toolkitView(), nullptr);
  panel->setPaperSize(210, 297);
}

TEST_F(GtkNib, RunsTheActionsOfItsOwner) {
  load(nib(object("GtkCheckButton", "tandemTrimValid") + object("GtkButton", "defaultButton")));
  auto* const check = gtk_widget_get_first_child(GTK_WIDGET(panel->toolkitView()));
  g_signal_emit_by_name(gtk_widget_get_next_sibling(check), "clicked");
  gtk_check_button_set_active(GTK_CHECK_BUTTON(check), TRUE);
  EXPECT_THAT(
      owner.actions,
      testing::ElementsAre(testing::Pair("setDefaultValue:", owner.outlets.at("defaultButton")),
                           testing::Pair("changeTandemTrimValid:", owner.outlets.at("tandemTrimValid"))));
}

TEST_F(GtkNib, KeepsTheItemsOfItsMenusInOrder) {
  load(nib(object("GtkMenuButton", "directionPopUp"),
           R"(<object class="GtkStringList" id="directionPopUpItems">
                <items><item>one</item><item>two</item></items></object>)"));
  auto& menu = dynamic_cast<platform::PopUpButton&>(*owner.outlets.at("directionPopUp"));
  ASSERT_EQ(menu.numberOfItems(), 2U);
  EXPECT_EQ(menu.selectedItem(), &menu.itemAtIndex(0));
  EXPECT_EQ(menu.itemAtIndex(1).representedObject(), std::nullopt);
  menu.itemAtIndex(1).setTitle("Zwei");
  menu.itemAtIndex(1).setRepresentedObject("2");
  menu.selectItemWithTitle("Zwei");
  ASSERT_NE(menu.selectedItem(), nullptr);
  EXPECT_EQ(menu.selectedItem()->representedObject(), "2");
  menu.selectItemWithTitle("two");
  EXPECT_EQ(menu.selectedItem(), nullptr);
  EXPECT_THROW((void)menu.itemAtIndex(2), std::out_of_range);
}

TEST_F(GtkNib, ThatIsMissingIsReportedToTheCaller) {
  EXPECT_FALSE(platform::loadNibNamed("Other", owner));
  EXPECT_TRUE(owner.outlets.empty());
}

TEST_F(GtkNib, OfAnotherFormatIsRefused) {
  EXPECT_THROW(load("<interface><object class=\"NoSuchClass\"/></interface>"), Glib::Error);
  EXPECT_THROW(load("no nib"), Glib::Error);
}

TEST_F(GtkNib, IsFoundInTheBundleByItsName) {
  EXPECT_TRUE(platform::loadNibNamed("TandemTrim", owner));
  EXPECT_EQ(owner.outlets.size(), owner.outletNames().size());
}

// An exception that left a handler of the main loop would end the host's program.
TEST_F(GtkNib, KeepsWorkingAfterAnActionThatRaises) {
  struct Raising : Owner {
    void performAction(std::string_view name, platform::NibObject* sender) override {
      Owner::performAction(name, sender);
      throw std::runtime_error("no");
    }
  } raising;
  Panel raised(Gtk::Builder::create_from_string(nib(object("GtkButton", "defaultButton"))), raising);
  auto* const button = gtk_widget_get_first_child(GTK_WIDGET(raised.toolkitView()));
  for (int click = 0; click < 2; ++click) g_signal_emit_by_name(button, "clicked");
  EXPECT_EQ(raising.actions.size(), 2U);
}

}  // namespace
}  // namespace tandemtrim::test
