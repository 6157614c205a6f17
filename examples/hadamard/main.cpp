// Takes a picture with a single-pixel camera: one light detector behind a mirror array that shows Hadamard patterns.
//
//   hadamard OUTPUT.png [SCENE.png [NOISE]]
//
// SCENE is what the camera looks at, its middle square; without it, a rendered scene. NOISE is the standard deviation
// of a detector reading in units of a white pixel's light, 0.2 when not given. OUTPUT shows, from left to right, the
// scene, a scan pixel by pixel, the scan with all 4096 patterns, and that with the coarsest 1024.

#include "camera.hpp"
#include "common/parse_number.hpp"
#include "image.hpp"
#include "scene.hpp"

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr double kDefaultNoise = 0.2;
constexpr std::size_t kZoom = 4; // picture pixels a camera pixel, in either direction
constexpr std::size_t kGap = 8;  // white pixels between pictures

double parseNoise(const std::string& text) {
  const auto noise = parseNumber<double>(text);
  if (!noise || !(*noise >= 0 && *noise <= 1000)) {
    throw std::invalid_argument("not a noise from 0 to 1000: " + text);
  }
  return *noise;
}

Image sideBySide(const std::vector<std::vector<float>>& pictures) {
  Image all{pictures.size() * (kSide * kZoom + kGap) - kGap, kSide * kZoom, {}};
  all.pixels.assign(all.width * all.height, 1.0F);
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    for (std::size_t y = 0; y < all.height; ++y) {
      for (std::size_t x = 0; x < kSide * kZoom; ++x) {
        all.pixels[y * all.width + i * (kSide * kZoom + kGap) + x] = pictures[i][y / kZoom * kSide + x / kZoom];
      }
    }
  }
  return all;
}

void photograph(const std::string& output, const char* scenePath, double deviation) {
  std::error_code none;
  if (scenePath != nullptr && std::filesystem::equivalent(scenePath, output, none)) {
    throw std::invalid_argument("the output would replace the scene");
  }
  const Image scene = scenePath != nullptr ? squareOf(readPng(scenePath), kSide) : renderScene(kSide);
  const Noise noise{deviation, 1};
  const std::vector<std::vector<float>> pictures = {scene.pixels, scanByPixel(scene.pixels, noise),
                                                    scanByPattern(scene.pixels, kPixels, noise),
                                                    scanByPattern(scene.pixels, kPixels / 4, noise)};
  const Image result = sideBySide(pictures);
  writePng(result, output);

  std::printf("scene: %s, %zu x %zu pixels, detector noise %g\n", scenePath != nullptr ? scenePath : "rendered", kSide,
              kSide, deviation);
  std::printf("%zu readings, pixel by pixel:   %5.1f dB\n", kPixels, psnr(pictures[1], scene.pixels));
  std::printf("%zu readings, all patterns:     %5.1f dB\n", kPixels, psnr(pictures[2], scene.pixels));
  std::printf("%zu readings, coarse patterns:  %5.1f dB\n", kPixels / 4, psnr(pictures[3], scene.pixels));
  std::printf("%s: %zu x %zu pixels\n", output.c_str(), result.width, result.height);
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
