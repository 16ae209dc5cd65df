#pragma once

#include <functional>
#include <string>

#include <giomm/simpleactiongroup.h>
#include <gtkmm/box.h>
#include <gtkmm/label.h>
#include <gtkmm/menubutton.h>

#include "host/dialog/panel/preset_list.hpp"

namespace tandemtrim::host {

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
