#include "picture.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace {

constexpr std::size_t kWidth = 1200; // at most, in pixels
constexpr std::size_t kHeight = 480; // about
constexpr double kDecibels = 80;

using ColourMap = std::array<Colour, 256>;

// Dark violet through red to light yellow, of steadily growing lightness.
ColourMap colourMap() {
  constexpr std::array<std::array<double, 3>, 9> stops{{{0, 0, 4},
                                                        {27, 12, 65},
                                                        {74, 12, 107},
                                                        {120, 28, 109},
                                                        {165, 44, 96},
                                                        {207, 68, 70},
                                                        {237, 105, 37},
                                                        {251, 155, 6},
                                                        {252, 255, 164}}};
  ColourMap map{};
  for (std::size_t i = 0; i < map.size(); ++i) {
    const double position = static_cast<double>(i) * (stops.size() - 1) / (map.size() - 1);
    const std::size_t stop = std::min(static_cast<std::size_t>(position), stops.size() - 2);
    const double share = position - static_cast<double>(stop);
    for (std::size_t c = 0; c < 3; ++c) {
      map[i][c] = static_cast<std::uint8_t>(std::lround(std::lerp(stops[stop][c], stops[stop + 1][c], share)));
    }
  }
  return map;
}

// Mean power of the frames that fall into a column.
double columnPower(const Spectrogram& spectrogram, std::size_t column, std::size_t columns, std::size_t bin) {
  const std::size_t first = column * spectrogram.frames / columns;
  const std::size_t last = std::max(first + 1, (column + 1) * spectrogram.frames / columns);
  double sum = 0;
  for (std::size_t frame = first; frame < last; ++frame) {
    sum += static_cast<double>(spectrogram.power[frame * spectrogram.bins() + bin]);
  }
  return sum / static_cast<double>(last - first);
}

// columns x bins(), top row first, each an index into the colour map; the strongest has the last colour.
std::vector<std::uint8_t> levels(const Spectrogram& spectrogram, std::size_t columns) {
  std::vector<double> power;
  for (std::size_t bin = spectrogram.bins(); bin-- > 0;) {
    for (std::size_t column = 0; column < columns; ++column) {
      power.push_back(columnPower(spectrogram, column, columns, bin));
    }
  }
  const double strongest = *std::max_element(power.begin(), power.end());
  std::vector<std::uint8_t> result(power.size());
  std::transform(power.begin(), power.end(), result.begin(), [strongest](double p) {
    const double level = p > 0 ? 1 + 10 * std::log10(p / strongest) / kDecibels : 0;
    return static_cast<std::uint8_t>(std::lround(255 * std::max(level, 0.0)));
  });
  return result;
}

// Enlarges every level to a block of pixels.
std::vector<std::uint8_t> enlarge(const std::vector<std::uint8_t>& small, std::size_t columns, std::size_t blockWidth,
                                  std::size_t blockHeight) {
  std::vector<std::uint8_t> pixels;
  pixels.reserve(small.size() * blockWidth * blockHeight);
  for (std::size_t y = 0; y < small.size() / columns * blockHeight; ++y) {
    for (std::size_t x = 0; x < columns * blockWidth; ++x) {
      pixels.push_back(small[y / blockHeight * columns + x / blockWidth]);
    }
  }
  return pixels;
}

} // namespace

PictureSize writePicture(const Spectrogram& spectrogram, const std::string& path) {
  const std::size_t columns = std::min(spectrogram.frames, kWidth);
  const std::size_t blockWidth = kWidth / columns;
  const std::size_t blockHeight = kHeight / spectrogram.bins();
  const PictureSize size{columns * blockWidth, spectrogram.bins() * blockHeight};
  writePng(path, size, enlarge(levels(spectrogram, columns), columns, blockWidth, blockHeight), colourMap());
  return size;
}
