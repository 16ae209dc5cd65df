#pragma once

#include <cairomm/context.h>
#include <gtkmm/widget.h>

#include "platform/controls.hpp"
#include "view/sheet.hpp"

namespace tandemtrim::platform::gtk {

/// Paints the sheet in the colours of the widget's theme and state, with the page if the layout has one and
/// `page` is not null.
void drawSheet(Cairo::Context& cairo, const SheetLayout& layout, const PageImage* page,
               const Gtk::Widget& widget);

}  // namespace tandemtrim::platform::gtk
