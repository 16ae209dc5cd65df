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

/// The controls that a sheet's picture shows; they are never null.
struct SheetControls {
  /// Shows the note about the page in the picture.
  TextLabel* note;
  Labelled<PopUpButton> direction;
  Labelled<PopUpButton> position;
  /// By side.
  std::array<Labelled<TextBox>, kSides> margins;
};

/// Draws the sheet as the controls describe it, whether the user or the program sets them, and describes it
/// to screen readers. With a page of the document it also notes the page's content in the margins. It is not
/// mirrored in any language. It turns grey when its widget is disabled.
class SheetPicture : public sigc::trackable {
 public:
  /// The text of a key in the user's language.
  using Texts = std::function<std::string(std::string_view)>;

  /// The controls must outlive the picture.
  SheetPicture(Gtk::DrawingArea& area, SheetControls controls, Texts texts);
  SheetPicture(const SheetPicture&) = delete;
  SheetPicture& operator=(const SheetPicture&) = delete;

  /// In millimetres; an impossible size is ignored.
  void setPaperSize(double width, double height);
  /// Shows this page in place of the lines that represent text; null shows the lines.
  void showPage(std::shared_ptr<const PageImage> page);
  /// The note about the page's content in the margins; empty if they have no content or the picture's widget
  /// is disabled.
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
