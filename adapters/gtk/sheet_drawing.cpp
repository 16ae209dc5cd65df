#include "adapters/gtk/sheet_drawing.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include <cairomm/surface.h>
#include <gtkmm/stylecontext.h>

namespace tandemtrim::platform::gtk {
namespace {

void setColour(Cairo::Context& cairo, const Gdk::RGBA& colour, double opacity = 1) {
  cairo.set_source_rgba(colour.get_red(), colour.get_green(), colour.get_blue(),
                        colour.get_alpha() * opacity);
}

void fill(Cairo::Context& cairo, const Rectangle& area) {
  cairo.rectangle(area.x, area.y, area.width, area.height);
  cairo.fill();
}

// A line of one pixel that lies inside the area.
void outline(Cairo::Context& cairo, const Rectangle& area) {
  if (area.width < 1 || area.height < 1) return;
  cairo.set_line_width(1);
  cairo.rectangle(area.x + 0.5, area.y + 0.5, area.width - 1, area.height - 1);
  cairo.stroke();
}

// Bars in the shape of paragraphs of text.
void drawPrint(Cairo::Context& cairo, const Rectangle& area) {
  constexpr double kLine = 2;
  constexpr double kStep = 7;
  constexpr std::array<double, 4> kLengths{1, 0.92, 0.97, 0.6};
  std::size_t line = 0;
  for (double y = area.y + kStep; y + kStep <= area.y + area.height; y += kStep)
    fill(cairo, {area.x, y, area.width * kLengths.at(line++ % kLengths.size()), kLine});
}

// For a real page: a bar that shows the print's position across the printable part.
void drawPosition(Cairo::Context& cairo, const Rectangle& print) {
  constexpr double kThickness = 3;
  fill(cairo, {print.x, print.y, print.width, std::min(kThickness, print.height)});
}

void drawPage(Cairo::Context& cairo, const Rectangle& paper, const Rectangle& area, const PageImage& page) {
  if (area.width <= 0 || area.height <= 0) return;
  // The surface only reads the pixels.
  auto* const pixels = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(page.pixels.data()));
  const auto image =
      Cairo::ImageSurface::create(pixels, Cairo::Surface::Format::RGB24, page.columns, page.rows,
                                  page.columns * static_cast<int>(sizeof(std::uint32_t)));
  cairo.save();
  cairo.rectangle(paper.x, paper.y, paper.width, paper.height);
  cairo.clip();
  cairo.translate(area.x, area.y);
  cairo.scale(area.width / page.columns, area.height / page.rows);
  cairo.set_source(image, 0, 0);
  cairo.rectangle(0, 0, page.columns, page.rows);
  cairo.fill();
  cairo.restore();
}

void drawArrow(Cairo::Context& cairo, const Arrow& arrow) {
  constexpr double kLength = 7;
  constexpr double kHalfWidth = 5;
  const double across = arrow.head.x - arrow.tail.x;
  const double down = arrow.head.y - arrow.tail.y;
  cairo.save();
  cairo.translate(arrow.head.x, arrow.head.y);
  cairo.rotate(std::atan2(down, across));
  cairo.set_line_width(2);
  cairo.move_to(-std::hypot(across, down), 0);
  cairo.line_to(-kLength, 0);
  cairo.stroke();
  cairo.move_to(0, 0);
  cairo.line_to(-kLength, -kHalfWidth);
  cairo.line_to(-kLength, kHalfWidth);
  cairo.fill();
  cairo.restore();
}

}  // namespace

SheetColours sheetColoursOf(const Gtk::Widget& widget) {
  const auto style = const_cast<Gtk::Widget&>(widget).get_style_context();
  const bool isEnabled = widget.is_sensitive();
  SheetColours colours{style->get_color(), Gdk::RGBA("gray"), isEnabled ? 1 : 0.5};
  if (Gdk::RGBA accent; isEnabled && style->lookup_color("theme_selected_bg_color", accent))
    colours.tint = accent;
  return colours;
}

// Paper is white in a dark theme, too.
void drawSheet(Cairo::Context& cairo, const SheetLayout& layout, const PageImage* page,
               const SheetColours& colours) {
  const auto& paper = layout.paper;
  cairo.push_group();
  setColour(cairo, Gdk::RGBA("black"), 0.15);
  fill(cairo, {paper.x + 2, paper.y + 2, paper.width, paper.height});
  setColour(cairo, Gdk::RGBA("white"));
  fill(cairo, paper);
  const bool showsPage = page != nullptr && layout.page;
  if (showsPage) drawPage(cairo, paper, *layout.page, *page);
  setColour(cairo, colours.tint, 0.35);
  for (const auto& margin : layout.margins) fill(cairo, margin);
  setColour(cairo, colours.tint);
  outline(cairo, layout.printable);
  if (layout.print && showsPage) drawPosition(cairo, *layout.print);
  setColour(cairo, Gdk::RGBA("black"), 0.4);
  if (layout.print && !showsPage) drawPrint(cairo, *layout.print);
  outline(cairo, paper);
  setColour(cairo, colours.ink);
  if (layout.feed) drawArrow(cairo, *layout.feed);
  cairo.pop_group_to_source();
  cairo.paint_with_alpha(colours.opacity);
}

}  // namespace tandemtrim::platform::gtk
