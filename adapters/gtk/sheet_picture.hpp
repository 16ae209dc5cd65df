#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

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
  /// What is noted about the page that the picture shows.
  TextLabel* note;
  Labelled<PopUpButton> direction;
  Labelled<PopUpButton> position;
  /// By side.
  std::array<Labelled<TextBox>, kSides> margins;
};

/// Draws the sheet as the controls describe it, whoever sets them, and tells the same to those who do not see
/// it. With a page of the document it notes, too, what of its content is in the margins. Left is left in
/// every language. It greys when its widget is not sensitive.
class SheetPicture : public sigc::trackable {
 public:
  /// The text of a key in the user's language.
  using Texts = std::function<std::string(std::string_view)>;

  /// The controls must outlive the picture.
  SheetPicture(Gtk::DrawingArea& area, SheetControls controls, Texts texts);
  SheetPicture(const SheetPicture&) = delete;
  SheetPicture& operator=(const SheetPicture&) = delete;

  /// Millimetres; a size that no paper has is ignored.
  void setPaperSize(double width, double height);
  /// Shows this page in place of the lines that stand for print; null shows the lines.
  void showPage(std::shared_ptr<const PageImage> page);
  /// What of the page the margins take; empty when that is nothing.
  [[nodiscard]] std::string note() const;

 private:
  void refresh();
  void draw(const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height) const;
  [[nodiscard]] Sheet sheet() const;
  [[nodiscard]] std::string description(const std::string& noted) const;

  Gtk::DrawingArea& area_;
  SheetControls controls_;
  Texts texts_;
  double paperWidth_;
  double paperHeight_;
  std::shared_ptr<const PageImage> page_;
};

}  // namespace tandemtrim::platform::gtk
