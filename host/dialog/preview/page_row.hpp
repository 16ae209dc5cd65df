#pragma once

#include <functional>

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

#include "host/dialog/preview/page_preview.hpp"

namespace tandemtrim::host {

/// Which page of the document the picture of the sheet shows, between two buttons that turn to the next ones
/// that are printed. It shows for a document of several pages only.
class PageRow : public Gtk::Box {
 public:
  /// `turn` goes on by a page, or back where it gets a negative number.
  explicit PageRow(const std::function<void(int)>& turn);
  PageRow(const PageRow&) = delete;
  PageRow& operator=(const PageRow&) = delete;

  void show(const PagePlace& place);

 private:
  Gtk::Button back_;
  Gtk::Label number_;
  Gtk::Button on_;
};

}  // namespace tandemtrim::host
