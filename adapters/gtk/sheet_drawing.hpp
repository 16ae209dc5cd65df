#pragma once

#include <cairomm/context.h>
#include <gtkmm/widget.h>

#include "platform/controls.hpp"
#include "view/sheet.hpp"

namespace tandemtrim::platform::gtk {

/// Paints the sheet in the colours that the widget's theme and state give it, with the page where the layout
/// has one (null has none).
void drawSheet(Cairo::Context& cairo, const SheetLayout& layout, const PageImage* page,
               const Gtk::Widget& widget);

}  // namespace tandemtrim::platform::gtk
