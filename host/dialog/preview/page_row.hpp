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

/// Whether this is a button of a page row, which speaks of the page.
bool isTurnButton(GtkWidget* widget);

/// Which page of the document the picture of the sheet shows, between two buttons that turn to the next ones
/// that are printed and keep the keyboard at the first and last one. It shows for a document of several pages
/// only.
class PageRow : public Gtk::Box {
 public:
  /// `turn` goes on by a page, or back where it gets a negative number.
  explicit PageRow(const std::function<void(int)>& turn);
  PageRow(const PageRow&) = delete;
  PageRow& operator=(const PageRow&) = delete;

  void show(const PagePlace& place);
  /// Has a screen reader speak of the page at the buttons, with what is noted about it, if anything.
  void describe(const std::string& note);

 private:
  Gtk::Button back_;
  Gtk::Label number_;
  Gtk::Button on_;
};

}  // namespace tandemtrim::host
