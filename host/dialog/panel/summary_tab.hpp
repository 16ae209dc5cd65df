#pragma once

#include <vector>

#include <gtkmm/listbox.h>

#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// The dialog's tab that lists the panel's settings, a title and a value in each row. The keyboard stops once
/// at all of them, where a screen reader speaks each as "title: value".
class SummaryTab : public Gtk::ListBox {
 public:
  SummaryTab();

  void showRows(const std::vector<SummaryRow>& rows);

 private:
  // The only row of this list, since the toolkit's boxes take no focus.
  GtkListBoxRow* const stop_;
  GtkBox* const rows_;
};

}  // namespace tandemtrim::host
