#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/label.h>

#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// The dialog's page for the panel: the panel's view, or a line while there is none yet; below it a warning
/// about values that the printer does not allow, and what the host itself offers.
class PanelPage : public Gtk::Box {
 public:
  PanelPage();
  PanelPage(const PanelPage&) = delete;
  PanelPage& operator=(const PanelPage&) = delete;
  ~PanelPage() override;

  /// Shows a line of text in the place of a view.
  void showText(const Glib::ustring& shown);
  /// Shows the view, which stays its owner's.
  void showView(GtkWidget* view);
  /// Takes the view out again, before its owner ends it.
  void removeView();
  /// Runs after an edit of the view while a warning shows, once for edits that come together.
  sigc::signal<void()> signalEdited;
  /// Names the values, or shows no warning when there are none.
  void warnOf(const std::vector<IllegalValue>& values);
  /// Runs when the person has the nearest legal values typed.
  sigc::signal<void()> signalCorrect;

  /// Has the settings kept as the person's defaults.
  Gtk::CheckButton useForAllJobs;
  Gtk::Button help;

 private:
  /// The row that names illegal values, which few people ever see.
  struct Warning {
    Warning();
    Gtk::Box row;
    Gtk::Label text;
    Gtk::Button correct;
  };
  void follow(GtkWidget* widget);
  void onEdited();
  void hideWarning();

  Gtk::Label text_;
  std::optional<Warning> warning_;
  Gtk::Box footer_;
  GtkWidget* view_ = nullptr;
  sigc::connection edited_;
};

}  // namespace tandemtrim::host
