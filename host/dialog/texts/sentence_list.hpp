#pragma once

#include <string>
#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/scrolledwindow.h>

namespace tandemtrim::host {

/// The text with marks of direction for a widget that is read from the right. Without them, the toolkit would
/// lay out a line from the left when it begins with a printer's name in Latin letters.
std::string directed(const Gtk::Widget& widget, const std::string& text);

/// Sentences one below the other. The list is as high as they are at its width, and scrolls when that is more
/// than `mostHeight` pixels. It requests only its minimum width unless its natural width is propagated.
class SentenceList : public Gtk::ScrolledWindow {
 public:
  explicit SentenceList(int mostHeight);

  /// Lines have at most this many characters; with -1, as many as fit the width.
  void show(const std::vector<std::string>& sentences, int mostCharacters = -1);

 protected:
  Gtk::SizeRequestMode get_request_mode_vfunc() const override;
  void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                     int& minimumBaseline, int& naturalBaseline) const override;

 private:
  int mostHeight_;
  Gtk::Box& box_;
};

}  // namespace tandemtrim::host
