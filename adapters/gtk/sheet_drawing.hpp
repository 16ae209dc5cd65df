#pragma once

#include <cairomm/context.h>
#include <gdkmm/rgba.h>
#include <gtkmm/widget.h>

#include "platform/controls.hpp"
#include "view/sheet.hpp"

namespace tandemtrim::platform::gtk {

/// The colours of a sheet's picture, other than those of the paper and its content.
struct SheetColours {
  /// Of the arrow.
  Gdk::RGBA ink;
  /// Of the margins and the printable part's outline.
  Gdk::RGBA tint;
  /// Of the whole picture, from 0 to 1.
  double opacity;
};

/// The colours of the widget's theme. A disabled widget has a pale, grey picture.
SheetColours sheetColoursOf(const Gtk::Widget& widget);

/// Paints the sheet, with the page if the layout has one and `page` is not null.
void drawSheet(Cairo::Context& cairo, const SheetLayout& layout, const PageImage* page,
               const SheetColours& colours);

}  // namespace tandemtrim::platform::gtk
