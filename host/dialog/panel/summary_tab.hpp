#pragma once

#include <string>
#include <vector>

#include <gtkmm/listbox.h>

#include "host/panel/panel_session.hpp"

namespace tandemtrim::host {

/// The dialog's tab that lists the panel's settings, a title and a value in each row. All rows together are
/// a single stop for the Tab key, where a screen reader speaks each as "title: value", and where Control-C or
/// a menu copies them in this form.
class SummaryTab : public Gtk::ListBox {
 public:
  SummaryTab();

  void showRows(const std::vector<SummaryRow>& rows);

 private:
  void makeCopyable();
  void showMenu(int x, int y);

  // The only row of this list, since the toolkit's boxes take no focus.
  GtkListBoxRow* const stop_;
  GtkBox* const rows_;
  // Null until it is first shown.
  GtkWidget* menu_ = nullptr;
  // All rows, a line each.
  std::string text_;
};

}  // namespace tandemtrim::host
