#pragma once

#include <vector>

#include <gtkmm/grid.h>

#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// The dialog's tab that lists the panel's settings, a title and a value in each row.
class SummaryTab : public Gtk::Grid {
 public:
  SummaryTab();

  void showRows(const std::vector<SummaryRow>& rows);
};

}  // namespace tandemtrim::host
