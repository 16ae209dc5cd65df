#pragma once

#include <cairomm/context.h>
#include <gtkmm/widget.h>

#include "view/sheet.hpp"

namespace tandemtrim::platform::gtk {

/// Paints the sheet in the colours that the widget's theme and state give it.
void drawSheet(Cairo::Context& cairo, const SheetLayout& layout, const Gtk::Widget& widget);

}  // namespace tandemtrim::platform::gtk
