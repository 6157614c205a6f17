#include "image.hpp"

#include <png.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>

Image readPng(const std::string& path) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&png, path.c_str()) == 0) {
    throw std::runtime_error("cannot read " + path + ": " + png.message);
  }
  png.format = PNG_FORMAT_GRAY;
  std::vector<std::uint8_t> levels(PNG_IMAGE_SIZE(png));
  const png_color black{};
  if (png_image_finish_read(&png, &black, levels.data(), 0, nullptr) == 0) {
    throw std::runtime_error("cannot read " + path + ": " + png.message);
  }
  Image image{png.width, png.height, std::vector<float>(levels.size())};
  std::transform(levels.begin(), levels.end(), image.pixels.begin(),
                 [](std::uint8_t level) { return static_cast<float>(level) / 255.0F; });
  return image;
}

Image squareOf(const Image& image, std::size_t size) {
  const std::size_t side = std::min(image.width, image.height);
  if (side < size) {
    throw std::runtime_error("the picture must be at least " + std::to_string(size) + " pixels wide and high");
  }
  const std::size_t left = (image.width - side) / 2;
  const std::size_t top = (image.height - side) / 2;
  Image square{size, size, {}};
  for (std::size_t y = 0; y < size; ++y) {
    for (std::size_t x = 0; x < size; ++x) {
      const std::size_t endY = (y + 1) * side / size;
      const std::size_t endX = (x + 1) * side / size;
      double sum = 0;
      int count = 0;
      for (std::size_t v = y * side / size; v < endY; ++v) {
        for (std::size_t u = x * side / size; u < endX; ++u) {
          sum += static_cast<double>(image.pixels[(top + v) * image.width + left + u]);
          ++count;
        }
      }
      square.pixels.push_back(static_cast<float>(sum / count));
    }
  }
  return square;
}
