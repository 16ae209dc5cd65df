#pragma once

#include <functional>
#include <memory>
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
  /// Opens the panel of the bundle at this path and shows in it what the settings hold. `settings` outlive
  /// it; `ppd` is null for a printer without one.
  OpenPanel(const std::string& bundle, platform::linux::PrintSettings& settings, PpdHandle ppd,
            const Note& note);

  [[nodiscard]] const std::string& title() const { return title_; }
  [[nodiscard]] GtkWidget* view() const { return GTK_WIDGET(view_->toolkitView()); }
  [[nodiscard]] ppd_file_t* ppd() const { return ppd_.get(); }
  [[nodiscard]] const std::vector<std::string>& keywords() const { return keywords_; }

  void willShow() const;
  /// Tells the panel's view the size of the chosen paper in millimetres.
  void setPaperSize(double width, double height) const;
  [[nodiscard]] bool shouldHide() const;
  [[nodiscard]] bool shouldShowHelp() const;
  [[nodiscard]] bool shouldPrint() const;
  /// Writes what the controls show into the settings.
  void save() const;
  /// Shows what the settings hold.
  void restore() const;
  /// What is saved, in display order.
  [[nodiscard]] std::vector<SummaryRow> summary() const;
  /// The settings that this printer does not allow.
  [[nodiscard]] std::vector<IllegalValue> illegalValues() const;

 private:
  template <class Operation>
  auto call(const char* name, Operation operation) const {
    return callPlugin(plugin_.bundle, name, [&] { return operation(*panels_->front()); });
  }

  platform::linux::PrintSettings& settings_;
  PpdHandle ppd_;
  LoadedPlugin plugin_;
  LoadedPlugin screenless_;
  std::unique_ptr<platform::PanelList> panels_;
  std::string title_;
  platform::View* view_ = nullptr;
  std::vector<std::string> keywords_;
};

}  // namespace tandemtrim::host
