#pragma once

#include <array>
#include <string>

#include <gtkmm/drawingarea.h>
#include <sigc++/trackable.h>

#include "adapters/gtk/controls/controls.hpp"
#include "adapters/gtk/controls/menus.hpp"
#include "adapters/gtk/controls/text_box.hpp"
#include "view/sheet.hpp"
#include "view/view_names.hpp"

namespace tandemtrim::platform::gtk {

/// A control and the label before it.
template <class Control>
struct Labelled {
  TextLabel* label;
  Control* control;
};

/// The controls that a sheet's picture shows; none of them is null.
struct SheetControls {
  Labelled<PopUpButton> direction;
  Labelled<PopUpButton> position;
  /// By side.
  std::array<Labelled<TextBox>, kSides> margins;
};

/// Draws the sheet as the controls describe it, whoever sets them, and tells the same to those who do not see
/// it. Left is left in every language. It greys when its widget is not sensitive.
class SheetPicture : public sigc::trackable {
 public:
  /// The controls must outlive the picture.
  SheetPicture(Gtk::DrawingArea& area, SheetControls controls);
  SheetPicture(const SheetPicture&) = delete;
  SheetPicture& operator=(const SheetPicture&) = delete;

  /// Millimetres; a size that no paper has is ignored.
  void setPaperSize(double width, double height);

 private:
  void refresh();
  void draw(const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height) const;
  [[nodiscard]] Sheet sheet() const;
  [[nodiscard]] std::string description() const;

  Gtk::DrawingArea& area_;
  SheetControls controls_;
  double paperWidth_;
  double paperHeight_;
};

}  // namespace tandemtrim::platform::gtk
