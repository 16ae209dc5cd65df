#include "host/dialog/panel_page.hpp"

#include <glibmm/main.h>
#include <gtk/gtk.h>

#include "host/dialog/texts.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kPageMargin = 18;
constexpr int kSpacing = 12;

}  // namespace

PanelPage::PanelPage()
    : Gtk::Box(Gtk::Orientation::VERTICAL, kSpacing),
      correct(localized(kCorrectText), true),
      useForAllJobs(localized(kUseForAllJobsText), true),
      help(localized(kHelpText), true),
      place_(Gtk::Orientation::VERTICAL),
      warning_(Gtk::Orientation::HORIZONTAL, kSpacing),
      footer_(Gtk::Orientation::HORIZONTAL, kSpacing) {
  set_margin_bottom(kPageMargin);
  text_.set_margin(kPageMargin);
  text_.set_wrap();
  text_.set_xalign(0);
  append(text_);
  append(place_);
  for (auto* box : {&warning_, &footer_}) {
    box->set_margin_start(kPageMargin);
    box->set_margin_end(kPageMargin);
    append(*box);
  }
  warningText_.set_wrap();
  warningText_.set_xalign(0);
  warningText_.set_hexpand();
  warningText_.add_css_class("warning");
  warning_.append(warningText_);
  warning_.append(correct);
  warning_.set_visible(false);
  useForAllJobs.set_hexpand();
  footer_.append(useForAllJobs);
  footer_.append(help);
  footer_.set_visible(false);
}

PanelPage::~PanelPage() { edited_.disconnect(); }

void PanelPage::follow(GtkWidget* widget) {
  const auto connect = [&](const char* signal) {
    const auto edited = [](PanelPage* page) { page->onEdited(); };
    g_signal_connect_swapped(widget, signal, G_CALLBACK(+edited), this);
  };
  if (GTK_IS_EDITABLE(widget) || GTK_IS_COMBO_BOX(widget)) connect("changed");
  if (GTK_IS_CHECK_BUTTON(widget)) connect("toggled");
  if (GTK_IS_DROP_DOWN(widget)) connect("notify::selected");
  // What is chosen from a menu shows on its button.
  if (GTK_IS_LABEL(widget) && gtk_widget_get_ancestor(widget, GTK_TYPE_MENU_BUTTON) != nullptr)
    connect("notify::label");
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    follow(child);
}

void PanelPage::onEdited() {
  if (edited_.connected() || !warning_.get_visible()) return;
  edited_ = Glib::signal_idle().connect([this] {
    signalEdited();
    return false;
  });
}

void PanelPage::showText(const Glib::ustring& shown) {
  removeView();
  text_.set_text(shown);
  text_.set_visible();
}

void PanelPage::showView(GtkWidget* view) {
  removeView();
  text_.set_visible(false);
  view_ = view;
  gtk_box_append(place_.gobj(), view);
  follow(view);
  footer_.set_visible();
}

void PanelPage::removeView() {
  if (view_ != nullptr) gtk_box_remove(place_.gobj(), view_);
  view_ = nullptr;
  warning_.set_visible(false);
  footer_.set_visible(false);
}

void PanelPage::warnOf(const std::vector<IllegalValue>& values) {
  warningText_.set_text(illegalValuesText(values));
  warning_.set_visible(!values.empty());
}

}  // namespace tandemtrim::host
