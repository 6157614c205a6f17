#include "write_png.hpp"

#include "replace_file.hpp"

#include <png.h>

#include <stdexcept>

void writePng(const std::string& path, PictureSize size, std::span<const std::uint8_t> pixels,
              std::span<const Colour> colours) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(size.width);
  image.height = static_cast<png_uint_32>(size.height);
  image.format = colours.empty() ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB_COLORMAP;
  image.colormap_entries = static_cast<png_uint_32>(colours.size());
  replaceFile(path, [&](const std::string& part) {
    if (png_image_write_to_file(&image, part.c_str(), 0, pixels.data(), 0, colours.data()) == 0) {
      throw std::runtime_error("cannot write " + path + ": " + image.message);
    }
  });
}
