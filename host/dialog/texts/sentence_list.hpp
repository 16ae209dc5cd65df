#pragma once

#include <string>
#include <vector>

#include <gtkmm/box.h>
#include <gtkmm/scrolledwindow.h>

namespace tandemtrim::host {

/// The text as a widget shows it that is read from the right: a line may begin with a printer's name, by
/// whose letters the toolkit would take it for one that is read from the left.
std::string directed(const Gtk::Widget& widget, const std::string& text);

/// Sentences one below the other. It is as high as they are at its width, and scrolls where that would be
/// higher than `mostHeight` pixels. It asks for no width unless its natural width is propagated.
class SentenceList : public Gtk::ScrolledWindow {
 public:
  explicit SentenceList(int mostHeight);

  /// Lines are at most as long as this many characters, else as its width.
  void show(const std::vector<std::string>& sentences, int mostCharacters = -1);

 protected:
  Gtk::SizeRequestMode get_request_mode_vfunc() const override;
  void measure_vfunc(Gtk::Orientation orientation, int forSize, int& least, int& liked, int& leastBaseline,
                     int& likedBaseline) const override;

 private:
  int mostHeight_;
  Gtk::Box& box_;
};

}  // namespace tandemtrim::host
