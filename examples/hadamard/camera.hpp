// A camera with a single light detector. A mirror array shows one pattern of the Hadamard matrix after the other, and
// the detector tells how much light of the scene the pattern lets through; the transform turns the readings into a
// picture.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// The camera has 64 x 64 pixels: a transform of order 12.
inline constexpr std::size_t kSide = 64;
inline constexpr std::size_t kPixels = kSide * kSide;

// What the detector adds to a reading, whatever light falls on it.
struct Noise {
  double deviation; // in units of a white pixel's light
  std::uint64_t seed;
};

// Opens one mirror at a time. A pixel is one reading, with all its noise.
std::vector<float> scanByPixel(const std::vector<float>& scene, Noise noise);

// Shows the first `patterns` patterns, from coarse to fine, and recovers the scene. A pattern has half of the mirrors
// in one position and half in the other, with a detector at either side: a reading is the difference. Patterns not
// shown count as zero.
std::vector<float> scanByPattern(const std::vector<float>& scene, std::size_t patterns, Noise noise);

// Peak signal-to-noise ratio in decibels.
double psnr(const std::vector<float>& picture, const std::vector<float>& scene);
