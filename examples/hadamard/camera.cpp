#include "camera.hpp"

#include "tfmgen.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <stdexcept>

namespace {

void addNoise(std::vector<float>& readings, Noise noise) {
  std::mt19937_64 generator(noise.seed);
  std::normal_distribution<double> normal(0, noise.deviation);
  for (float& reading : readings) {
    reading += static_cast<float>(normal(generator));
  }
}

std::vector<float> transform(const std::vector<float>& x, std::int32_t flag) {
  std::vector<float> y(x.size());
  if (tfmgWHT_12_32f(x.data(), y.data(), flag, nullptr) != tfmStsOk) {
    throw std::runtime_error("the transform has failed");
  }
  return y;
}

// Number of sign changes along row u of the matrix of 64 points: the bits of u in reverse, as a Gray code.
std::size_t signChanges(std::size_t u) {
  std::size_t changes = 0;
  std::size_t bit = 0;
  for (std::size_t k = 1; k < kSide; k *= 2) {
    bit ^= (u & k) != 0 ? 1U : 0U;
    changes = 2 * changes + bit;
  }
  return changes;
}

// Numbers of the patterns, coarse ones first. Row u of the matrix is the product of a row along x, the lower half of
// u's bits, and one along y.
std::vector<std::size_t> fromCoarseToFine() {
  const auto frequency = [](std::size_t u) {
    const std::size_t x = signChanges(u % kSide);
    const std::size_t y = signChanges(u / kSide);
    return x * x + y * y;
  };
  std::vector<std::size_t> order(kPixels);
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return frequency(a) < frequency(b); });
  return order;
}

} // namespace

std::vector<float> scanByPixel(const std::vector<float>& scene, Noise noise) {
  std::vector<float> readings = scene;
  addNoise(readings, noise);
  return readings;
}

std::vector<float> scanByPattern(const std::vector<float>& scene, std::size_t patterns, Noise noise) {
  // What the optics do: each reading is the sum of all pixels, each with the sign that the pattern has there.
  std::vector<float> readings = transform(scene, TFM_NO_DIV);
  addNoise(readings, noise);
  const std::vector<std::size_t> order = fromCoarseToFine();
  for (std::size_t i = patterns; i < order.size(); ++i) {
    readings[order[i]] = 0;
  }
  return transform(readings, TFM_DIV_FWD_BY_N);
}

double psnr(const std::vector<float>& picture, const std::vector<float>& scene) {
  double sum = 0;
  for (std::size_t i = 0; i < scene.size(); ++i) {
    sum += std::pow(static_cast<double>(std::clamp(picture[i], 0.0F, 1.0F)) - static_cast<double>(scene[i]), 2);
  }
  return -10 * std::log10(sum / static_cast<double>(scene.size()));
}
