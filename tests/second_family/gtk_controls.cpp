#include <algorithm>

#include <gtkmm/checkbutton.h>
#include <gtkmm/dropdown.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/spinbutton.h>

#include "tests/second_family/family.hpp"

namespace foldline {
namespace {

using namespace tandemtrim::platform;

struct Row {
  Gtk::CheckButton* check = nullptr;
  Gtk::DropDown* menu = nullptr;
  Gtk::SpinButton* number = nullptr;
};

class GtkControls : public Controls, public View {
 public:
  explicit GtkControls(const std::vector<PanelSetting>& settings) {
    grid_.set_margin(18);
    for (const auto& setting : settings) add(setting);
  }

  View& view() override { return *this; }
  void* toolkitView() override { return grid_.gobj(); }
  void show(std::size_t setting, const std::string& value) override {
    const auto& row = rows_.at(setting);
    const auto& values = kSettings.at(setting).values;
    const auto place = std::ranges::find(values, value) - values.begin();
    if (row.check != nullptr) row.check->set_active(place == 0);
    if (row.menu != nullptr) row.menu->set_selected(static_cast<guint>(place));
    if (row.number != nullptr) row.number->set_text(value);
  }
  [[nodiscard]] std::string shown(std::size_t setting) const override {
    const auto& row = rows_.at(setting);
    const auto& values = kSettings.at(setting).values;
    if (row.check != nullptr) return values.at(row.check->get_active() ? 0 : 1);
    if (row.menu != nullptr)
      return values.at(std::min<std::size_t>(row.menu->get_selected(), values.size() - 1));
    return row.number->get_text();
  }

 private:
  void add(const PanelSetting& setting) {
    const int line = static_cast<int>(rows_.size());
    auto& row = rows_.emplace_back();
    if (setting.kind == PanelSetting::Kind::onOff) {
      row.check = Gtk::make_managed<Gtk::CheckButton>(setting.title);
      grid_.attach(*row.check, 1, line);
      return;
    }
    auto* const label = Gtk::make_managed<Gtk::Label>(setting.title);
    grid_.attach(*label, 0, line);
    Gtk::Widget* control = nullptr;
    if (setting.kind == PanelSetting::Kind::choice) {
      std::vector<Glib::ustring> titles;
      for (const auto& choice : setting.choices) titles.emplace_back(choice.title);
      control = row.menu = Gtk::make_managed<Gtk::DropDown>(titles);
    } else {
      control = row.number = Gtk::make_managed<Gtk::SpinButton>();
      row.number->set_range(static_cast<double>(setting.minimum), static_cast<double>(setting.maximum));
      row.number->set_increments(1, 10);
    }
    label->set_mnemonic_widget(*control);
    grid_.attach(*control, 1, line);
  }

  Gtk::Grid grid_;
  std::vector<Row> rows_;
};

}  // namespace

std::unique_ptr<Controls> makeControls(const std::vector<PanelSetting>& settings) {
  return std::make_unique<GtkControls>(settings);
}

}  // namespace foldline
