// Takes a picture with a single-pixel camera: one light detector behind a mirror array that shows Hadamard patterns.
//
//   hadamard OUTPUT.png [SCENE.png [NOISE]]
//
// SCENE is what the camera looks at, its middle square; without it, a rendered scene. NOISE is the standard deviation
// of a detector reading in units of a white pixel's light, 0.2 when not given. OUTPUT shows, from left to right, the
// scene, a scan pixel by pixel, the scan with all 4096 patterns, and that with the coarsest 1024.

#include "camera.hpp"
#include "common/axis.hpp"
#include "common/canvas.hpp"
#include "common/parse_number.hpp"
#include "image.hpp"
#include "scene.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr double kDefaultNoise = 0.2;
constexpr double kZoom = 4;  // picture pixels a camera pixel, in either direction
constexpr double kLeft = 80; // room for titles and scales
constexpr double kTop = 70;
constexpr double kGap = 24;
constexpr PictureSize kPicture{1200, 390};

double parseNoise(const std::string& text) {
  const auto noise = parseNumber<double>(text);
  if (!noise || !(*noise >= 0 && *noise <= 1000)) {
    throw std::invalid_argument("not a noise from 0 to 1000: " + text);
  }
  return *noise;
}

std::string decibels(double ratio) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f dB", ratio);
  return text;
}

std::vector<Colour> greys(const std::vector<float>& pixels) {
  std::vector<Colour> colours(pixels.size());
  std::transform(pixels.begin(), pixels.end(), colours.begin(), [](float x) {
    const auto level = static_cast<std::uint8_t>(std::lround(255.0F * std::clamp(x, 0.0F, 1.0F)));
    return Colour{level, level, level};
  });
  return colours;
}

struct Shot {
  std::string title;
  std::size_t readings;
  std::vector<float> pixels;
};

// The pictures side by side, with scales in pixels of the camera.
void writeShots(const std::vector<Shot>& shots, const std::vector<float>& scene, const std::string& path) {
  Canvas canvas(kPicture);
  Rectangle place{kLeft, kTop, kSide * kZoom, kSide * kZoom};
  const Axis across{0, kSide, "pixels"};
  const Axis down{kSide, 0, "pixels"};
  drawLeft(canvas, place, down);
  for (const Shot& shot : shots) {
    const double middle = place.x + place.width / 2;
    canvas.text(middle, kTop - 40, shot.title, Canvas::Anchor::centre, {.size = 15, .bold = true});
    if (shot.readings != 0) {
      canvas.text(middle, kTop - 18, "peak signal to noise " + decibels(psnr(shot.pixels, scene)),
                  Canvas::Anchor::centre);
    }
    canvas.image(place, greys(shot.pixels), kSide);
    canvas.frame(place);
    drawBelow(canvas, place, across);
    place.x += place.width + kGap;
  }
  canvas.write(path);
}

void photograph(const std::string& output, const char* scenePath, double deviation) {
  std::error_code none;
  if (scenePath != nullptr && std::filesystem::equivalent(scenePath, output, none)) {
    throw std::invalid_argument("the output would replace the scene");
  }
  const Image scene = scenePath != nullptr ? squareOf(readPng(scenePath), kSide) : renderScene(kSide);
  const Noise noise{deviation, 1};
  const std::vector<Shot> shots = {{"scene", 0, scene.pixels},
                                   {"pixel by pixel", kPixels, scanByPixel(scene.pixels, noise)},
                                   {"all patterns", kPixels, scanByPattern(scene.pixels, kPixels, noise)},
                                   {"coarse patterns", kPixels / 4, scanByPattern(scene.pixels, kPixels / 4, noise)}};
  writeShots(shots, scene.pixels, output);

  std::printf("scene: %s, %zu x %zu pixels, detector noise %g\n", scenePath != nullptr ? scenePath : "rendered", kSide,
              kSide, deviation);
  for (const Shot& shot : shots) {
    if (shot.readings != 0) {
      std::printf("%zu readings, %-17s %5.1f dB\n", shot.readings, (shot.title + ":").c_str(),
                  psnr(shot.pixels, scene.pixels));
    }
  }
  std::printf("%s: %d x %d pixels\n", output.c_str(), kPicture.width, kPicture.height);
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 4) {
    std::cerr << "usage: hadamard OUTPUT.png [SCENE.png [NOISE]]\n";
    return 2;
  }
  try {
    photograph(argv[1], argc > 2 ? argv[2] : nullptr, argc > 3 ? parseNoise(argv[3]) : kDefaultNoise);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "hadamard: " << error.what() << '\n';
    return 1;
  }
}
