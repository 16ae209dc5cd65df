#pragma once

#include <functional>

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/label.h>

namespace tandemtrim::host {

/// Which page of the document the picture of the sheet shows, between two buttons that turn the pages. It
/// shows for a document of several pages only.
class PageRow : public Gtk::Box {
 public:
  /// `turn` goes on by so many pages, or back.
  explicit PageRow(const std::function<void(int)>& turn);
  PageRow(const PageRow&) = delete;
  PageRow& operator=(const PageRow&) = delete;

  /// The page, of so many; 0 where there is none.
  void show(int page, int pages);

 private:
  Gtk::Button back_;
  Gtk::Label number_;
  Gtk::Button on_;
};

}  // namespace tandemtrim::host
