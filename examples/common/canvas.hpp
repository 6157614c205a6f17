#pragma once

#include <cairo.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

struct PictureSize {
  int width;
  int height;
};

struct Rectangle {
  double x;
  double y;
  double width;
  double height;
};

using Colour = std::array<std::uint8_t, 3>; // red, green, blue

// A white picture to draw on. Lengths are pixels from the upper left corner.
class Canvas {
public:
  explicit Canvas(PictureSize size);

  // An array of colours, row by row from the top, `columns` in each, stretched over the place without blurring.
  void image(const Rectangle& place, std::span<const Colour> colours, std::size_t columns);
  void frame(const Rectangle& place);
  void line(double x0, double y0, double x1, double y1);

  // Where a text has the point that is given; across the middle of its letters.
  enum class Anchor { left, centre, right };
  struct Font {
    double size = 14;
    bool bold = false;
    bool upward = false; // reads from bottom to top
  };
  void text(double x, double y, const std::string& words, Anchor anchor, Font font);
  void text(double x, double y, const std::string& words, Anchor anchor) { text(x, y, words, anchor, Font{}); }

  // Writes a PNG. A file that was there is replaced only by a complete picture. Throws std::runtime_error with the path
  // in the message.
  void write(const std::string& path) const;

private:
  struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
  };
  using Surface = std::unique_ptr<cairo_surface_t, Destroy>;

  Surface surface_;
  std::unique_ptr<cairo_t, Destroy> context_;
};
