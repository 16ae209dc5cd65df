#include <X11/keysym.h>

#include "adapters/gtk/controls/controls.hpp"
#include "adapters/gtk/controls/menus.hpp"
#include "adapters/gtk/controls/stepper.hpp"
#include "adapters/gtk/controls/text_box.hpp"
#include "adapters/gtk/hosted_panel.hpp"
#include "adapters/gtk/panel.hpp"
#include "tests/adapters/gtk/user.hpp"
#include "tests/conformance/linux_platform.hpp"

namespace tandemtrim::conformance {
namespace {

namespace gtk = platform::gtk;

// Reads what a user sees of a control of any class.
struct Seen {
  Look look;

  void of(gtk::TextLabel& label) {
    look.text = label.widget().get_text();
    look.color = label.widget().has_css_class("dim-label") ? "lightGrayColor" : "blackColor";
  }
  void of(gtk::TextBox& box) { look.text = box.widget().get_text(); }
  void of(gtk::Stepper& stepper) {
    look.text = stepper.stringValue();
    look.min = stepper.minValue();
    look.max = stepper.maxValue();
  }
  void of(gtk::CheckBox& box) {
    look.text = unmarked(box.widget().get_label());
    look.state = box.state();
  }
  void of(gtk::Button& button) { look.text = unmarked(button.widget().get_label()); }
  void of(gtk::PopUpButton& menu) {
    look.text = gtk_label_get_text(GTK_LABEL(gtk_menu_button_get_child(menu.widget().gobj())));
    if (auto* selected = menu.selectedItem()) look.chosen = selected->representedObject();
  }

  // The title without the mark of its mnemonic.
  static std::string unmarked(const std::string& marked) {
    std::string title;
    for (std::size_t index = 0; index < marked.size(); ++index) {
      if (marked[index] == '_' && ++index == marked.size()) break;
      title += marked[index];
    }
    return title;
  }

  template <class Class>
  bool isOf(platform::NibObject* control) {
    auto* const known = dynamic_cast<Class*>(control);
    if (known == nullptr) return false;
    look.enabled = known->widget().is_sensitive();
    of(*known);
    return true;
  }
};

class GtkPanel : public LinuxPanel {
 public:
  using LinuxPanel::LinuxPanel;
  // The window is destroyed before the panel, whose view it contains.
  ~GtkPanel() override { user_.reset(); }

  bool panelView() override {
    if (!LinuxPanel::panelView()) return false;
    if (!user_) {
      auto* const window = GTK_WINDOW(gtk_window_new());
      gtk_window_set_child(window, GTK_WIDGET(panel().panelView()->toolkitView()));
      user_ = std::make_unique<test::User>(window);
    }
    return true;
  }

  Look look(const std::string& outlet) override {
    auto* const control = view().control(outlet);
    Seen seen;
    if (!(seen.isOf<gtk::TextLabel>(control) || seen.isOf<gtk::TextBox>(control) ||
          seen.isOf<gtk::Stepper>(control) || seen.isOf<gtk::CheckBox>(control) ||
          seen.isOf<gtk::Button>(control) || seen.isOf<gtk::PopUpButton>(control)))
      throw std::out_of_range("the view has no control " + outlet);
    return seen.look;
  }

  std::vector<Choice> choices(const std::string& menu) override {
    focus(widget<gtk::PopUpButton>(menu));
    auto listed = openList(menu);
    user_->press(XK_Escape);
    return listed;
  }

  bool replaceText(const std::string& outlet, const std::string& text) override {
    auto* const entry = widget<gtk::TextBox>(outlet);
    if (!focus(entry)) return false;
    user_->press(XK_a, XK_Control_L);
    text.empty() ? user_->press(XK_Delete) : user_->paste(text);
    return true;
  }
  bool replaceTextAtOnce(const std::string& outlet, const std::string& text) override {
    auto* const entry = widget<gtk::TextBox>(outlet);
    if (gtk_widget_is_sensitive(entry) == FALSE) return false;
    gtk_editable_set_text(GTK_EDITABLE(entry), text.c_str());
    return true;
  }
  bool type(const std::string& outlet, const std::string& keys) override {
    if (!focus(widget<gtk::TextBox>(outlet))) return false;
    user_->press(XK_End);
    user_->type(keys);
    return true;
  }
  bool backspace(const std::string& outlet) override {
    if (!focus(widget<gtk::TextBox>(outlet))) return false;
    user_->press(XK_End);
    user_->press(XK_BackSpace);
    return true;
  }
  bool click(const std::string& outlet) override {
    auto* const button =
        outlet == "defaultButton" ? widget<gtk::Button>(outlet) : widget<gtk::CheckBox>(outlet);
    if (gtk_widget_is_sensitive(button) == FALSE) return false;
    user_->click(button);
    return true;
  }
  bool step(const std::string& outlet, int steps) override {
    auto* const stepper = widget<gtk::Stepper>(outlet);
    if (gtk_widget_is_sensitive(stepper) == FALSE) return false;
    auto* const plus = gtk_widget_get_last_child(stepper);
    auto* const button = steps > 0 ? plus : gtk_widget_get_prev_sibling(plus);
    for (int step = 0; step < std::abs(steps); ++step) user_->click(button);
    return true;
  }
  bool choose(const std::string& outlet, const std::string& value) override {
    if (!focus(widget<gtk::PopUpButton>(outlet))) return false;
    const auto listed = openList(outlet);
    user_->press(XK_Home);
    for (const auto& choice : listed) {
      if (choice.value == value) {
        user_->press(XK_Return);
        return true;
      }
      user_->press(XK_Down);
    }
    throw std::out_of_range("the menu " + outlet + " has no item " + value);
  }
  void setMixed(const std::string& outlet) override {
    dynamic_cast<gtk::CheckBox&>(*view().control(outlet)).setState(gtk::CheckBox::kMixed);
  }

 protected:
  platform::PrintPanel& corePanel() override { return dynamic_cast<gtk::HostedPanel&>(panel()).upToDate(); }

 private:
  gtk::Panel& view() { return dynamic_cast<gtk::Panel&>(*panel().panelView()); }
  template <class Class>
  GtkWidget* widget(const std::string& outlet) {
    return static_cast<Gtk::Widget&>(dynamic_cast<Class&>(*view().control(outlet)).widget()).gobj();
  }
  // Opens the list of a menu that has the focus. Returns its titles and the values behind them.
  std::vector<Choice> openList(const std::string& outlet) {
    user_->press(XK_space);
    auto& menu = dynamic_cast<gtk::PopUpButton&>(*view().control(outlet));
    auto* const popover = gtk_menu_button_get_popover(menu.widget().gobj());
    auto* const list = GTK_LIST_BOX(gtk_popover_get_child(GTK_POPOVER(popover)));
    std::vector<Choice> listed;
    while (auto* const row = gtk_list_box_get_row_at_index(list, static_cast<int>(listed.size()))) {
      auto* const title = GTK_LABEL(gtk_widget_get_first_child(gtk_list_box_row_get_child(row)));
      listed.push_back({gtk_label_get_text(title), menu.itemAtIndex(listed.size()).representedObject()});
    }
    return listed;
  }
  bool focus(GtkWidget* widget) {
    if (gtk_widget_is_sensitive(widget) == FALSE) return false;
    user_->focus(widget);
    return true;
  }

  std::unique_ptr<test::User> user_;
};

}  // namespace

std::unique_ptr<Dialog> openDialog(const Scene& scene) {
  gtk_init();
  return std::make_unique<LinuxDialog<GtkPanel>>(scene);
}

std::size_t longestText() { return GTK_ENTRY_BUFFER_MAX_SIZE - 1; }

}  // namespace tandemtrim::conformance
