#include "canvas.hpp"

#include "replace_file.hpp"

#include <numbers>
#include <stdexcept>

namespace {

constexpr double kGrey = 0.15; // of lines and letters

std::uint32_t packed(Colour colour) {
  return static_cast<std::uint32_t>(colour[0]) << 16U | static_cast<std::uint32_t>(colour[1]) << 8U | colour[2];
}

} // namespace

Canvas::Canvas(PictureSize size)
    : surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24, size.width, size.height)),
      context_(cairo_create(surface_.get())) {
  cairo_set_source_rgb(context_.get(), 1, 1, 1);
  cairo_paint(context_.get());
  cairo_set_line_width(context_.get(), 1);
}

void Canvas::image(const Rectangle& place, std::span<const Colour> colours, std::size_t columns) {
  const auto width = static_cast<int>(columns);
  const auto height = static_cast<int>(colours.size() / columns);
  const Surface small(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
  cairo_surface_flush(small.get());
  unsigned char* const data = cairo_image_surface_get_data(small.get());
  if (data == nullptr) {
    throw std::runtime_error("no memory for a picture of " + std::to_string(colours.size()) + " pixels");
  }
  const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(small.get()));
  for (std::size_t i = 0; i < colours.size(); ++i) {
    auto* const row = reinterpret_cast<std::uint32_t*>(data + i / columns * stride); // rows start at multiples of 4
    row[i % columns] = packed(colours[i]);
  }
  cairo_surface_mark_dirty(small.get());

  cairo_t* const context = context_.get();
  cairo_save(context);
  cairo_rectangle(context, place.x, place.y, place.width, place.height);
  cairo_clip(context);
  cairo_translate(context, place.x, place.y);
  cairo_scale(context, place.width / width, place.height / height);
  cairo_set_source_surface(context, small.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
  cairo_paint(context);
  cairo_restore(context);
}

void Canvas::frame(const Rectangle& place) {
  cairo_set_source_rgb(context_.get(), kGrey, kGrey, kGrey);
  // Lines run through the middle of pixels.
  cairo_rectangle(context_.get(), place.x - 0.5, place.y - 0.5, place.width + 1, place.height + 1);
  cairo_stroke(context_.get());
}

void Canvas::line(double x0, double y0, double x1, double y1) {
  cairo_set_source_rgb(context_.get(), kGrey, kGrey, kGrey);
  cairo_move_to(context_.get(), x0, y0);
  cairo_line_to(context_.get(), x1, y1);
  cairo_stroke(context_.get());
}

void Canvas::text(double x, double y, const std::string& words, Anchor anchor, Font font) {
  cairo_t* const context = context_.get();
  cairo_select_font_face(context, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                         font.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(context, font.size);
  cairo_set_source_rgb(context, kGrey, kGrey, kGrey);
  cairo_text_extents_t words_extents;
  cairo_text_extents_t letter; // all words of a line lie alike, with or without descenders
  cairo_text_extents(context, words.c_str(), &words_extents);
  cairo_text_extents(context, "H", &letter);
  const double share = anchor == Anchor::left ? 0 : anchor == Anchor::centre ? 0.5 : 1;
  cairo_save(context);
  cairo_translate(context, x, y);
  if (font.upward) {
    cairo_rotate(context, -std::numbers::pi / 2);
  }
  cairo_move_to(context, -share * words_extents.x_advance, letter.height / 2);
  cairo_show_text(context, words.c_str());
  cairo_restore(context);
}

void Canvas::write(const std::string& path) const {
  replaceFile(path, [&](const std::string& part) {
    const cairo_status_t status = cairo_surface_write_to_png(surface_.get(), part.c_str());
    if (status != CAIRO_STATUS_SUCCESS) {
      throw std::runtime_error("cannot write " + path + ": " + cairo_status_to_string(status));
    }
  });
}
