#include "host/dialog/panel/summary_tab.hpp"

#include <gtkmm/label.h>

namespace tandemtrim::host {
namespace {

constexpr int kSummaryMargin = 18;
constexpr int kRowSpacing = 6;
constexpr int kColumnSpacing = 12;

}  // namespace

SummaryTab::SummaryTab() {
  set_margin(kSummaryMargin);
  set_row_spacing(kRowSpacing);
  set_column_spacing(kColumnSpacing);
}

void SummaryTab::showRows(const std::vector<SummaryRow>& rows) {
  while (auto* const cell = get_first_child()) remove(*cell);
  int number = 0;
  for (const auto& [title, value] : rows) {
    int column = 0;
    for (const auto& shown : {title, value}) {
      auto* const label = Gtk::make_managed<Gtk::Label>(shown);
      label->set_xalign(0);
      label->set_selectable(column == 1);
      attach(*label, column++, number);
    }
    ++number;
  }
}

}  // namespace tandemtrim::host
