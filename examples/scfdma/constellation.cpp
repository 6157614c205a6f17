#include "constellation.hpp"

#include "common/axis.hpp"
#include "common/canvas.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

constexpr std::size_t kSide = 360; // of a plane, in pixels
constexpr float kReach = 2;        // of the axes
constexpr PictureSize kPicture{940, 470};
constexpr double kTop = 50;
constexpr double kFaintest = 110;

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

// Black where there is no point, the brighter the more.
std::vector<Colour> brightness(const std::vector<Tfm32fc>& points) {
  const std::vector<std::size_t> counts = density(points);
  const double most = static_cast<double>(*std::max_element(counts.begin(), counts.end()));
  std::vector<Colour> colours(counts.size());
  std::transform(counts.begin(), counts.end(), colours.begin(), [most](std::size_t count) {
    const double share = std::log1p(static_cast<double>(count)) / std::log1p(most);
    const auto level = static_cast<std::uint8_t>(count == 0 ? 0 : std::lround(kFaintest + (255 - kFaintest) * share));
    return Colour{level, level, level};
  });
  return colours;
}

void draw(Canvas& canvas, double left, const std::string& title, const std::vector<Tfm32fc>& points) {
  const Rectangle plane{left, kTop, kSide, kSide};
  canvas.text(left + plane.width / 2, kTop / 2, title, Canvas::Anchor::centre, {.size = 15, .bold = true});
  canvas.image(plane, brightness(points), kSide);
  canvas.frame(plane);
  drawBelow(canvas, plane, {-kReach, kReach, "real part"});
  drawLeft(canvas, plane, {-kReach, kReach, "imaginary part"});
}

} // namespace

void writeConstellations(const std::vector<Tfm32fc>& received, const std::vector<Tfm32fc>& despread,
                         const std::string& path) {
  Canvas canvas(kPicture);
  draw(canvas, 90, "carriers as received", received);
  draw(canvas, 550, "symbols after despreading", despread);
  canvas.write(path);
}
