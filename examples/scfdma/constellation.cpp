#include "constellation.hpp"

#include "common/write_png.hpp"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t kSide = 360; // of a plane, in pixels
constexpr std::size_t kGap = 12;
constexpr float kReach = 2; // of the axes
constexpr std::size_t kWidth = 2 * kSide + kGap;
constexpr std::uint8_t kAxis = 70;
constexpr std::uint8_t kFaintest = 110;

// Number of points by pixel.
std::vector<std::size_t> density(const std::vector<Tfm32fc>& points) {
  std::vector<std::size_t> counts(kSide * kSide);
  const auto pixel = [](float x) { return static_cast<int>(std::floor((x / kReach + 1) * kSide / 2)); };
  const auto isInside = [](int i) { return i >= 0 && i < static_cast<int>(kSide); };
  for (const Tfm32fc point : points) {
    const int column = pixel(point.re);
    const int row = pixel(-point.im);
    if (isInside(column) && isInside(row)) {
      ++counts[static_cast<std::size_t>(row) * kSide + static_cast<std::size_t>(column)];
    }
  }
  return counts;
}

void draw(const std::vector<Tfm32fc>& points, std::size_t firstColumn, std::vector<std::uint8_t>& pixels) {
  const std::vector<std::size_t> counts = density(points);
  const double most = static_cast<double>(*std::max_element(counts.begin(), counts.end()));
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const std::size_t row = i / kSide;
    const std::size_t column = i % kSide;
    const bool isOnAxis = row == kSide / 2 || column == kSide / 2;
    std::uint8_t& level = pixels[row * kWidth + firstColumn + column];
    level = isOnAxis ? kAxis : 0;
    if (counts[i] != 0) {
      const double share = std::log1p(static_cast<double>(counts[i])) / std::log1p(most);
      level = static_cast<std::uint8_t>(std::lround(kFaintest + (255 - kFaintest) * share));
    }
  }
}

} // namespace

void writeConstellations(const std::vector<Tfm32fc>& left, const std::vector<Tfm32fc>& right, const std::string& path) {
  std::vector<std::uint8_t> pixels(kWidth * kSide, 255);
  draw(left, 0, pixels);
  draw(right, kSide + kGap, pixels);
  writePng(path, {kWidth, kSide}, pixels);
}
