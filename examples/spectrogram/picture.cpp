#include "picture.hpp"

#include "common/axis.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace {

constexpr double kDecibels = 80;
constexpr Rectangle kBar{1090, kPlot.y, 24, kPlot.height}; // of colours and their decibels

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

// columns x bins() colours, top row first; the strongest has the last of the map.
std::vector<Colour> colours(const Spectrogram& spectrogram, std::size_t columns, const ColourMap& map) {
  std::vector<double> power;
  for (std::size_t bin = spectrogram.bins(); bin-- > 0;) {
    for (std::size_t column = 0; column < columns; ++column) {
      power.push_back(columnPower(spectrogram, column, columns, bin));
    }
  }
  const double strongest = *std::max_element(power.begin(), power.end());
  std::vector<Colour> result(power.size());
  std::transform(power.begin(), power.end(), result.begin(), [&](double p) {
    const double level = p > 0 ? 1 + 10 * std::log10(p / strongest) / kDecibels : 0;
    return map[static_cast<std::size_t>(std::lround(255 * std::max(level, 0.0)))];
  });
  return result;
}

// A frame and a bin stand for the time and the frequency in the middle of their blocks.
Axis timeAxis(const Spectrogram& spectrogram, double sampleRate) {
  const double first = 0.5 * (spectrogram.length - spectrogram.hop) / sampleRate;
  return {first, first + static_cast<double>(spectrogram.frames) * spectrogram.hop / sampleRate, "time in s"};
}

Axis frequencyAxis(const Spectrogram& spectrogram, double sampleRate) {
  const double binWidth = sampleRate / spectrogram.length;
  return {-0.5 * binWidth, (static_cast<double>(spectrogram.bins()) - 0.5) * binWidth, "frequency in Hz"};
}

} // namespace

void writePicture(const Spectrogram& spectrogram, int sampleRate, const std::string& title, const std::string& path) {
  const ColourMap map = colourMap();
  const std::size_t columns = std::min(spectrogram.frames, static_cast<std::size_t>(kPlot.width));
  Canvas canvas(kPicture);
  canvas.text(kPlot.x, kPlot.y / 2, title, Canvas::Anchor::left, {.size = 16, .bold = true});
  canvas.image(kPlot, colours(spectrogram, columns, map), columns);
  canvas.frame(kPlot);
  drawBelow(canvas, kPlot, timeAxis(spectrogram, sampleRate));
  drawLeft(canvas, kPlot, frequencyAxis(spectrogram, sampleRate));
  const std::vector<Colour> bar(map.rbegin(), map.rend());
  canvas.image(kBar, bar, 1);
  canvas.frame(kBar);
  drawRight(canvas, kBar, {-kDecibels, 0, "power in dB, 0 dB is the strongest"});
  canvas.write(path);
}
