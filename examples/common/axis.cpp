#include "axis.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

constexpr double kTick = 6;   // length of the mark
constexpr double kLabel = 10; // from the plot to the values
constexpr double kPixelsPerTick = 64;
constexpr double kBeyond = 0.01; // of a step, less than a pixel: a tick so little beyond an end stands at the end

double stepOf(const Axis& axis, int count) {
  const double rough = std::abs(axis.last - axis.first) / count;
  const double power = std::pow(10, std::floor(std::log10(rough)));
  const double mantissa = rough / power;
  return power * (mantissa <= 1 ? 1 : mantissa <= 2 ? 2 : mantissa <= 5 ? 5 : 10);
}

std::string label(double value, double step) {
  const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
  std::string text(32, '\0');
  text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.*f", decimals, value)));
  return text;
}

int countOf(double pixels) {
  return std::max(2, static_cast<int>(pixels / kPixelsPerTick));
}

// Pixels of a value from the start of an axis, in the middle of one.
double offset(const Axis& axis, double value, double pixels) {
  const double share = std::clamp((value - axis.first) / (axis.last - axis.first), 0.0, 1.0);
  return std::floor(share * pixels) + 0.5;
}

// Values stand on the side of the plot to which `direction` points.
void drawUpright(Canvas& canvas, const Rectangle& plot, const Axis& axis, double side, double direction,
                 double titleDistance) {
  const int count = countOf(plot.height);
  for (const double value : ticks(axis, count)) {
    const double y = plot.y + plot.height - offset(axis, value, plot.height);
    canvas.line(side, y, side + direction * kTick, y);
    canvas.text(side + direction * kLabel, y, label(value, stepOf(axis, count)),
                direction < 0 ? Canvas::Anchor::right : Canvas::Anchor::left);
  }
  canvas.text(side + direction * titleDistance, plot.y + plot.height / 2, axis.title, Canvas::Anchor::centre,
              {.upward = true});
}

} // namespace

std::vector<double> ticks(const Axis& axis, int count) {
  const double step = stepOf(axis, count);
  const auto [low, high] = std::minmax(axis.first, axis.last);
  std::vector<double> values;
  const long last = std::lround(std::floor(high / step + kBeyond));
  for (long number = std::lround(std::ceil(low / step - kBeyond)); number <= last; ++number) {
    values.push_back(static_cast<double>(number) * step);
  }
  return values;
}

void drawBelow(Canvas& canvas, const Rectangle& plot, const Axis& axis) {
  const double bottom = plot.y + plot.height;
  const int count = countOf(plot.width);
  for (const double value : ticks(axis, count)) {
    const double x = plot.x + offset(axis, value, plot.width);
    canvas.line(x, bottom, x, bottom + kTick);
    canvas.text(x, bottom + kLabel + 7, label(value, stepOf(axis, count)), Canvas::Anchor::centre);
  }
  canvas.text(plot.x + plot.width / 2, bottom + 42, axis.title, Canvas::Anchor::centre);
}

void drawLeft(Canvas& canvas, const Rectangle& plot, const Axis& axis) {
  drawUpright(canvas, plot, axis, plot.x, -1, 68);
}

void drawRight(Canvas& canvas, const Rectangle& plot, const Axis& axis) {
  drawUpright(canvas, plot, axis, plot.x + plot.width, 1, 52);
}
