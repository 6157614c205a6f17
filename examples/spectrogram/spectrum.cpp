#include "spectrum.hpp"

#include "common/progress.hpp"
#include "tfmgen.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

namespace {

// Frames that are windowed, transformed and evaluated together, so that a clock sees nothing but transforms.
constexpr std::size_t kBatch = 256;

std::vector<float> hannWindow(int length) {
  std::vector<float> window(static_cast<std::size_t>(length));
  for (std::size_t i = 0; i < window.size(); ++i) {
    const double phase = 2 * std::numbers::pi * (static_cast<double>(i) + 0.5) / length;
    window[i] = static_cast<float>(0.5 - 0.5 * std::cos(phase));
  }
  return window;
}

// Everything that depends on which transform is used: a batch of frames, their spectra, and the power of a bin.
class Transform {
public:
  explicit Transform(int length)
      : length_(static_cast<std::size_t>(length)), frames_(kBatch * length_), spectra_(frames_.size()) {}

  // The length is the first thing that is checked: to ask for it takes no arrays.
  static bool exists(int length) {
    return tfmgDFTFwd_RToPerm_32f(nullptr, nullptr, length, TFM_DIV_FWD_BY_N) != tfmStsBadSize;
  }

  void setSample(std::size_t frame, std::size_t i, float sample) { frames_[frame * length_ + i] = sample; }

  void apply(std::size_t frame) {
    tfmgDFTFwd_RToPerm_32f(&frames_[frame * length_], &spectra_[frame * length_], static_cast<int>(length_),
                           TFM_DIV_FWD_BY_N);
  }

  // Bin 0 and, of even lengths, the last bin are real: elements 0 and 1. Pairs of re and im follow.
  [[nodiscard]] float power(std::size_t frame, std::size_t bin) const {
    const float* spectrum = &spectra_[frame * length_];
    const bool isReal = bin == 0 || 2 * bin == length_;
    const std::size_t re = isReal ? (bin == 0 ? 0 : 1) : 2 * bin - length_ % 2;
    const float im = isReal ? 0 : spectrum[re + 1];
    return spectrum[re] * spectrum[re] + im * im;
  }

private:
  std::size_t length_;
  std::vector<Tfm32f> frames_;
  std::vector<Tfm32f> spectra_;
};

} // namespace

Spectrogram analyse(const std::vector<float>& samples, int length) {
  if (!Transform::exists(length)) {
    throw std::invalid_argument("there is no transform of length " + std::to_string(length) + ", only of 2 to 64");
  }
  Transform transform(length);
  const std::vector<float> window = hannWindow(length);
  const auto hop = static_cast<std::size_t>(std::max(1, length / 4));
  const std::size_t beyondFirst = samples.size() - std::min(samples.size(), window.size());
  Spectrogram result{length, static_cast<int>(hop), 1 + (beyondFirst + hop - 1) / hop, {}, 0};
  result.power.reserve(result.frames * result.bins());

  std::chrono::duration<double, std::nano> elapsed{0};
  Progress progress("transforming", result.frames);
  for (std::size_t first = 0; first < result.frames; first += kBatch) {
    progress.reach(first);
    const std::size_t count = std::min(kBatch, result.frames - first);
    for (std::size_t frame = 0; frame < count; ++frame) {
      for (std::size_t i = 0; i < window.size(); ++i) {
        const std::size_t position = (first + frame) * hop + i;
        transform.setSample(frame, i, position < samples.size() ? window[i] * samples[position] : 0);
      }
    }
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t frame = 0; frame < count; ++frame) {
      transform.apply(frame);
    }
    elapsed += std::chrono::steady_clock::now() - start;
    for (std::size_t frame = 0; frame < count; ++frame) {
      for (std::size_t bin = 0; bin < result.bins(); ++bin) {
        result.power.push_back(transform.power(frame, bin));
      }
    }
  }
  result.nanoseconds = elapsed.count() / static_cast<double>(result.frames);
  return result;
}
