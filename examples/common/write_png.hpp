#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

struct PictureSize {
  std::size_t width;
  std::size_t height;
};

using Colour = std::array<std::uint8_t, 3>; // red, green, blue

// Writes an 8-bit PNG, row by row from the top: grey levels, or numbers of `colours` where some are given. A file that
// was there is replaced only by a complete picture. Throws std::runtime_error with the path in the message.
void writePng(const std::string& path, PictureSize size, std::span<const std::uint8_t> pixels,
              std::span<const Colour> colours = {});
