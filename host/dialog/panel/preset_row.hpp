#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <giomm/simpleactiongroup.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/menubutton.h>

namespace tandemtrim::host {

/// The contents of the row of presets.
struct PresetList {
  std::vector<std::string> names;
  /// nullopt while no preset is chosen.
  std::optional<std::string> chosen;
  /// Whether the settings differ from those of the chosen preset.
  bool isChanged = false;
  /// Whether the chosen preset is the user's, who may change it.
  bool isOwn = false;
  /// Whether the dialog starts with the chosen preset on this printer.
  bool isPrinterDefault = false;
};

/// The row above a panel with its presets: a button that names the chosen one and opens a menu of them all
/// and of the actions on them.
class PresetRow : public Gtk::Box {
 public:
  struct Events {
    std::function<void(const std::string&)> onChoose;
    std::function<void()> onSave;
    /// Reverts the settings to those of the chosen preset.
    std::function<void()> onBack;
    std::function<void()> onSaveAs;
    std::function<void()> onRename;
    std::function<void()> onDelete;
    /// Sets whether the dialog starts with the chosen preset on this printer.
    std::function<void(bool)> onPrinters;
    /// Returns the contents to show when the menu opens.
    std::function<PresetList()> list;
  };

  explicit PresetRow(Events events);
  PresetRow(const PresetRow&) = delete;
  PresetRow& operator=(const PresetRow&) = delete;
  ~PresetRow() override = default;

  /// Shows the chosen preset on the button.
  void show(const PresetList& list);

 private:
  void makeMenu();

  const Events events_;
  Gtk::Label label_;
  Gtk::Label title_;
  Gtk::MenuButton button_;
  Glib::RefPtr<Gio::SimpleActionGroup> actions_;
};

}  // namespace tandemtrim::host
