#pragma once

#include <functional>
#include <string>

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include "host/dialog/preview/page_preview.hpp"

namespace tandemtrim::host {

/// "Page 2 of 5" in the user's language.
std::string pageNumberText(const PagePlace& place);

/// Whether this is a button of a page row, whose description is the page already.
bool isTurnButton(GtkWidget* widget);

/// The number of the document's page in the picture of the sheet, between two buttons that turn to the
/// previous and the next page that is printed. They keep the focus at the first and the last page. Visible
/// only for a document of several pages.
class PageRow : public Gtk::Box {
 public:
  /// `turn` turns to the next page, or back for a negative number.
  explicit PageRow(const std::function<void(int)>& turn);
  PageRow(const PageRow&) = delete;
  PageRow& operator=(const PageRow&) = delete;

  void show(const PagePlace& place);
  /// Describes the buttons for a screen reader by the page's number and its note, if any.
  void describe(const std::string& note);

 private:
  Gtk::Button back_;
  Gtk::Label number_;
  Gtk::Button on_;
};

}  // namespace tandemtrim::host
