#include "host/dialog/panel/panel_page.hpp"

#include <utility>

#include <glibmm/main.h>
#include <gtk/gtk.h>

#include "host/dialog/panel/spoken_title.hpp"
#include "host/dialog/texts/texts.hpp"

namespace tandemtrim::host {
namespace {

constexpr int kPageMargin = 12;
constexpr int kSpacing = 12;

void setSideMargins(Gtk::Box& row) {
  row.set_margin_start(kPageMargin);
  row.set_margin_end(kPageMargin);
}

}  // namespace

PanelPage::PanelPage(PresetRow::Events presets, std::function<void(int)> turn,
                     std::function<std::string()> note)
    : Gtk::Box(Gtk::Orientation::VERTICAL),
      useForAllJobs(localized(kUseForAllJobsText), true),
      notify(localized(kNotifyText), true),
      help(localized(kHelpText), true),
      presetEvents_(std::move(presets)),
      turn_(std::move(turn)),
      note_(std::move(note)),
      footer_(Gtk::Orientation::HORIZONTAL, kSpacing) {
  set_margin_bottom(kPageMargin);
  text_.set_margin(kPageMargin);
  text_.set_wrap();
  text_.set_xalign(0);
  append(text_);
  speakTitle(useForAllJobs, localized(kUseForAllJobsText));
  speakTitle(notify, localized(kNotifyText));
  speakTitle(help, localized(kHelpText));
  useForAllJobs.set_hexpand();
  footer_.append(useForAllJobs);
  footer_.append(notify);
  footer_.set_visible(false);
  setSideMargins(footer_);
  append(footer_);
}

PanelPage::~PanelPage() { edited_.disconnect(); }

void PanelPage::watchEdits(GtkWidget* widget) {
  const auto connect = [&](const char* signal) {
    const auto edited = [](PanelPage* page) { page->onEdited(); };
    g_signal_connect_swapped(widget, signal, G_CALLBACK(+edited), this);
  };
  if (GTK_IS_EDITABLE(widget) || GTK_IS_COMBO_BOX(widget)) connect("changed");
  if (GTK_IS_CHECK_BUTTON(widget)) connect("toggled");
  if (GTK_IS_DROP_DOWN(widget)) connect("notify::selected");
  // A menu's button shows the choice.
  if (GTK_IS_LABEL(widget) && gtk_widget_get_ancestor(widget, GTK_TYPE_MENU_BUTTON) != nullptr)
    connect("notify::label");
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child))
    watchEdits(child);
}

void PanelPage::onEdited() {
  if (edited_.connected() || !(reportsEdits_ || pageRow_)) return;
  edited_ = Glib::signal_idle().connect([this] {
    if (reportsEdits_) signalEdited();
    speak();
    return false;
  });
}

void PanelPage::showText(const Glib::ustring& shown) {
  removeView();
  text_.set_text(shown);
  text_.set_visible();
}

void PanelPage::showView(GtkWidget* view) {
  if (view == view_) return;
  removeView();
  text_.set_visible(false);
  view_ = view;
  if (!presets_) {
    presets_.emplace(presetEvents_);
    setSideMargins(*presets_);
    presets_->set_margin_top(kPageMargin);
    presets_->append(help);
    insert_child_after(*presets_, text_);
  }
  presets_->set_visible();
  gtk_box_insert_child_after(gobj(), view, GTK_WIDGET(presets_->gobj()));
  watchEdits(view);
  footer_.set_visible();
}

void PanelPage::removeView() {
  if (view_ != nullptr) gtk_box_remove(gobj(), view_);
  view_ = nullptr;
  reportsEdits_ = false;
  hideWarning();
  if (presets_) presets_->set_visible(false);
  footer_.set_visible(false);
}

void PanelPage::showPresets(const PresetList& list) {
  if (presets_) presets_->show(list);
}

void PanelPage::showPagePlace(const PagePlace& place) {
  if (!pageRow_ && place.pages == 0) return;
  if (!pageRow_) pageRow_.emplace(turn_).insert_before(*presets_, help);
  pageRow_->show(place);
  speak();
}

void PanelPage::hideWarning() {
  if (warning_) warning_->show({}, false);
  speak();
}

void PanelPage::speak() {
  const auto note = pageRow_ && view_ != nullptr ? note_() : "";
  if (pageRow_) pageRow_->describe(note);
  const auto warning = warning_ ? warning_->text() : "";
  const auto text = warning + (warning.empty() || note.empty() ? "" : "\n") + note;
  if (!spoken_ && text.empty()) return;
  if (!spoken_) spoken_.emplace(*this);
  spoken_->set(text);
}

void PanelPage::warnOf(const std::vector<IllegalValue>& values, const std::vector<Conflict>& conflicts) {
  if (values.empty() && conflicts.empty()) return hideWarning();
  if (!warning_) {
    warning_.emplace();
    setSideMargins(*warning_);
    warning_->set_margin_bottom(kSpacing);
    warning_->correct.signal_clicked().connect(signalCorrect.make_slot());
    insert_child_after(*warning_, *footer_.get_prev_sibling());
  }
  warning_->show(problemTexts(values, conflicts), !values.empty());
  speak();
}

}  // namespace tandemtrim::host
