#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/label.h>

#include "host/dialog/panel/preset_row.hpp"
#include "host/dialog/panel/spoken_text.hpp"
#include "host/dialog/panel/warning_row.hpp"
#include "host/dialog/preview/page_row.hpp"
#include "host/panel/conflicts.hpp"
#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// The dialog's page for the panel: the panel's view, or a line of text before there is one; above it the
/// presets and the number of the document's page, below it a warning about values that the printer does not
/// allow and about conflicts, and the host's own controls.
class PanelPage : public Gtk::Box {
 public:
  /// `turn` turns to the document's next page, or back for a negative number; `note` returns the view's note
  /// about a page.
  PanelPage(PresetRow::Events presets, std::function<void(int)> turn, std::function<std::string()> note);
  PanelPage(const PanelPage&) = delete;
  PanelPage& operator=(const PanelPage&) = delete;
  ~PanelPage() override;

  /// Shows a line of text instead of a view.
  void showText(const Glib::ustring& shown);
  /// Shows the view, which its owner keeps.
  void showView(GtkWidget* view);
  /// Removes the view, before its owner destroys it.
  void removeView();
  /// Shows the presets above the view, if there is one.
  void showPresets(const PresetList& list);
  /// Shows above the view which page of the document it shows.
  void showPagePlace(const PagePlace& place);
  /// Sets whether edits of the view are reported, which costs time.
  void reportEdits(bool reports) { reportsEdits_ = reports; }
  /// Emitted after a reported edit of the view; once for several edits in a row.
  sigc::signal<void()> signalEdited;
  /// Names the values and the conflicts, or shows no warning when there are none.
  void warnOf(const std::vector<IllegalValue>& values, const std::vector<Conflict>& conflicts);
  /// Emitted when the user wants the nearest legal values.
  sigc::signal<void()> signalCorrect;

  /// Whether the settings become the user's defaults.
  Gtk::CheckButton useForAllJobs;
  /// Whether the desktop shows a notification about the job.
  Gtk::CheckButton notify;
  Gtk::Button help;

 private:
  void watchEdits(GtkWidget* widget);
  void onEdited();
  void hideWarning();
  void speak();

  const PresetRow::Events presetEvents_;
  Gtk::Label text_;
  // Made with the first view.
  std::optional<PresetRow> presets_;
  const std::function<void(int)> turn_;
  const std::function<std::string()> note_;
  // Made for the first page.
  std::optional<PageRow> pageRow_;
  // Made for the first warning, since few users ever see one.
  std::optional<WarningRow> warning_;
  // Speaks the warning and the note.
  std::optional<SpokenText> spoken_;
  Gtk::Box footer_;
  GtkWidget* view_ = nullptr;
  bool reportsEdits_ = false;
  sigc::connection edited_;
};

}  // namespace tandemtrim::host
