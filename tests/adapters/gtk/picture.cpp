#include "tests/adapters/gtk/picture.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <stdexcept>

namespace tandemtrim::test {
namespace {

struct Unref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Object>
using Ref = std::unique_ptr<Object, Unref>;

struct NodeUnref {
  void operator()(GskRenderNode* node) const { gsk_render_node_unref(node); }
};

constexpr std::size_t kBytesOfPixel = 4;

double luminance(Colour colour) {
  const auto linear = [](std::uint8_t part) {
    const double value = part / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.red) + 0.7152 * linear(colour.green) + 0.0722 * linear(colour.blue);
}

// The part of the painted window within the bounds.
Ref<GdkTexture> painted(GtkWidget* window, const graphene_rect_t& bounds) {
  const Ref<GdkPaintable> paintable(gtk_widget_paintable_new(window));
  auto* const snapshot = gtk_snapshot_new();
  gdk_paintable_snapshot(paintable.get(), snapshot, gdk_paintable_get_intrinsic_width(paintable.get()),
                         gdk_paintable_get_intrinsic_height(paintable.get()));
  const std::unique_ptr<GskRenderNode, NodeUnref> node(gtk_snapshot_free_to_node(snapshot));
  if (!node) throw std::runtime_error("nothing is painted");
  const Ref<GskRenderer> renderer(gsk_cairo_renderer_new());
  if (gsk_renderer_realize(renderer.get(), nullptr, nullptr) == FALSE)
    throw std::runtime_error("nothing can be painted");
  Ref<GdkTexture> texture(gsk_renderer_render_texture(renderer.get(), node.get(), &bounds));
  gsk_renderer_unrealize(renderer.get());
  return texture;
}

}  // namespace

int Colour::saturation() const { return std::max({red, green, blue}) - std::min({red, green, blue}); }

double contrast(Colour one, Colour other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

Picture::Picture(GtkWidget* widget) {
  auto* const window = GTK_WIDGET(gtk_widget_get_root(widget));
  graphene_rect_t bounds{};
  if (!gtk_widget_compute_bounds(widget, window, &bounds))
    throw std::runtime_error("a widget without a place");
  graphene_rect_round_extents(&bounds, &bounds);
  const auto texture = painted(window, bounds);
  width_ = gdk_texture_get_width(texture.get());
  height_ = gdk_texture_get_height(texture.get());
  stride_ = static_cast<std::size_t>(width_) * kBytesOfPixel;
  bytes_.resize(stride_ * static_cast<std::size_t>(height_));
  gdk_texture_download(texture.get(), bytes_.data(), stride_);
}

// Cairo's order on little-endian machines: blue, green, red, opacity.
Colour Picture::at(int x, int y) const {
  const auto first = static_cast<std::size_t>(y) * stride_ + static_cast<std::size_t>(x) * kBytesOfPixel;
  return {.red = bytes_.at(first + 2), .green = bytes_.at(first + 1), .blue = bytes_.at(first)};
}

std::vector<Colour> Picture::pixels() const {
  std::vector<Colour> all;
  for (int y = 0; y < height_; ++y) {
    for (int x = 0; x < width_; ++x) all.push_back(at(x, y));
  }
  return all;
}

void Picture::save(const std::string& path) const {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  const std::unique_ptr<GBytes, decltype(&g_bytes_unref)> bytes(g_bytes_new(bytes_.data(), bytes_.size()),
                                                                &g_bytes_unref);
  const Ref<GdkTexture> texture(
      gdk_memory_texture_new(width_, height_, GDK_MEMORY_DEFAULT, bytes.get(), stride_));
  if (gdk_texture_save_to_png(texture.get(), path.c_str()) == FALSE)
    throw std::runtime_error("cannot write " + path);
}

}  // namespace tandemtrim::test
