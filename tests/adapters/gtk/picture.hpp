#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <gtk/gtk.h>

namespace tandemtrim::test {

/// One pixel, each part from 0 to 255.
struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  bool operator==(const Colour&) const = default;
  /// How far it is from grey, from 0 to 255.
  [[nodiscard]] int saturation() const;
};

/// How readable one colour is on the other, from 1 (not at all) to 21 (black on white), as the guidelines
/// for accessible content on the web compute it.
double contrast(Colour one, Colour other);

/// A picture of a widget in a shown window, with what its window paints behind it.
class Picture {
 public:
  explicit Picture(GtkWidget* widget);

  [[nodiscard]] int width() const { return width_; }
  [[nodiscard]] int height() const { return height_; }
  [[nodiscard]] Colour at(int x, int y) const;
  /// Every pixel, row by row.
  [[nodiscard]] std::vector<Colour> pixels() const;
  bool operator==(const Picture& other) const { return bytes_ == other.bytes_; }

  /// Writes it as a PNG file, and makes the file's folder if it is missing.
  void save(const std::string& path) const;

 private:
  int width_ = 0;
  int height_ = 0;
  std::size_t stride_ = 0;
  std::vector<std::uint8_t> bytes_;
};

}  // namespace tandemtrim::test
