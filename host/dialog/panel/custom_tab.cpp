#include "host/dialog/panel/custom_tab.hpp"

#include <algorithm>
#include <memory>
#include <vector>

namespace tandemtrim::host {
namespace {

// GTK's notebook never releases a label, so a label whose dialog has gone is used for the next dialog.
Gtk::Label& labelWithoutDialog() {
  // Never destroyed, since GTK is gone when the program ends.
  static auto& labels = *new std::vector<std::unique_ptr<Gtk::Label>>();
  const auto isFree = [](const auto& label) { return label->get_parent() == nullptr; };
  auto label = std::ranges::find_if(labels, isFree);
  if (label == labels.end()) label = labels.insert(label, std::make_unique<Gtk::Label>());
  return **label;
}

}  // namespace

Gtk::Label& addCustomTab(Gtk::PrintUnixDialog& dialog, Gtk::Widget& page, const std::string& title) {
  auto& label = labelWithoutDialog();
  label.set_text(title);
  dialog.add_custom_tab(page, label);
  return label;
}

}  // namespace tandemtrim::host
