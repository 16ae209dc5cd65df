#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtk/gtk.h>

#include "host/cups_handles.hpp"
#include "host/note.hpp"
#include "host/panel_session.hpp"
#include "host/plugin_loader.hpp"
#include "platform/linux/print_settings.hpp"

namespace tandemtrim::host {

/// The plug-in's panel for one printer, as the dialog's host uses it. Every operation raises PluginFailure
/// when the panel does not do its part.
class OpenPanel {
 public:
  /// Opens the panel of the bundle at this path and shows in it what the settings hold. `settings` and `ppd`
  /// outlive it; `ppd` is null for a printer without one.
  OpenPanel(const std::string& bundle, platform::linux::PrintSettings& settings, ppd_file_t* ppd,
            const Note& note);

  [[nodiscard]] const std::string& title() const { return title_; }
  [[nodiscard]] GtkWidget* view() const { return GTK_WIDGET(view_->toolkitView()); }
  [[nodiscard]] const std::vector<std::string>& keywords() const { return keywords_; }

  void willShow();
  /// Tells the panel's view the size of the chosen paper in millimetres.
  void setPaperSize(double width, double height) const;
  [[nodiscard]] bool shouldHide() const;
  [[nodiscard]] bool shouldShowHelp() const;
  [[nodiscard]] bool shouldPrint() const;
  /// Writes what the controls show into the settings. What the person did not touch stays as it was stored,
  /// even where the controls cannot show it.
  void save();
  /// Shows what the settings hold.
  void restore();
  /// What is saved, in display order.
  [[nodiscard]] std::vector<SummaryRow> summary();
  /// The settings that this printer does not allow.
  [[nodiscard]] std::vector<IllegalValue> illegalValues() const;

 private:
  OpenPanel(const PluginBundle& bundle, platform::linux::PrintSettings& settings, ppd_file_t* ppd,
            const Note& note);
  using StoredValues = std::map<std::string, std::optional<std::string>>;
  [[nodiscard]] StoredValues storedValues() const;
  void saveAll() const;
  void takeUntouched();
  template <class Operation>
  auto call(const char* name, Operation operation) const {
    return callPlugin(plugin_.bundle, name, [&] { return operation(*panels_->front()); });
  }

  platform::linux::PrintSettings& settings_;
  ppd_file_t* ppd_;
  LoadedPlugin plugin_;
  std::optional<LoadedPlugin> screenless_;
  std::unique_ptr<platform::PanelList> panels_;
  std::string title_;
  platform::View* view_ = nullptr;
  std::vector<std::string> keywords_;
  // What was stored when the controls last took it over, and what they would save of it, untouched.
  StoredValues stored_;
  StoredValues untouched_;
};

}  // namespace tandemtrim::host
