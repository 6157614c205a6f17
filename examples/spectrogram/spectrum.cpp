#include "spectrum.hpp"

#include "common/progress.hpp"
#include "tfmbatch.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

namespace {

std::vector<float> hannWindow(int length) {
  std::vector<float> window(static_cast<std::size_t>(length));
  for (std::size_t i = 0; i < window.size(); ++i) {
    const double phase = 2 * std::numbers::pi * (static_cast<double>(i) + 0.5) / length;
    window[i] = static_cast<float>(0.5 - 0.5 * std::cos(phase));
  }
  return window;
}

// Everything that depends on which transform is used: frames, their spectra, and the power of a bin.
class Transform {
public:
  Transform(int length, std::size_t frames)
      : length_(static_cast<std::size_t>(length)), frames_(frames * length_), spectra_(frames_.size()) {}

  // The length is the first thing that is checked: to ask for it takes no arrays.
  static bool exists(int length) {
    return tfmgDFTFwd_RToPerm_32f(nullptr, nullptr, length, TFM_DIV_FWD_BY_N) != tfmStsBadSize;
  }

  void setSample(std::size_t frame, std::size_t i, float sample) { frames_[frame * length_ + i] = sample; }

  // All frames by one call.
  void applyInBatch() {
    const TfmbLayout layout{1, static_cast<std::int64_t>(length_)};
    tfmbDFTFwd_RToPerm_32f(frames_.data(), layout, spectra_.data(), layout, static_cast<int>(length_),
                           static_cast<std::int64_t>(frames_.size() / length_), TFM_DIV_FWD_BY_N);
  }

  // The same with a call for each frame.
  void applySingly() {
    for (std::size_t i = 0; i < frames_.size(); i += length_) {
      tfmgDFTFwd_RToPerm_32f(&frames_[i], &spectra_[i], static_cast<int>(length_), TFM_DIV_FWD_BY_N);
    }
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

// Nanoseconds that `work` takes.
template <class Work>
double timed(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

Spectrogram analyse(const std::vector<float>& samples, int length) {
  if (!Transform::exists(length)) {
    throw std::invalid_argument("there is no transform of length " + std::to_string(length) + ", only of 2 to 64");
  }
  const std::vector<float> window = hannWindow(length);
  const auto hop = static_cast<std::size_t>(std::max(1, length / 4));
  const std::size_t beyondFirst = samples.size() - std::min(samples.size(), window.size());
  Spectrogram result{length, static_cast<int>(hop), 1 + (beyondFirst + hop - 1) / hop, {}, {}};

  Transform transform(length, result.frames);
  Progress progress("windowing", result.frames);
  for (std::size_t frame = 0; frame < result.frames; ++frame) {
    progress.reach(frame);
    for (std::size_t i = 0; i < window.size(); ++i) {
      const std::size_t position = frame * hop + i;
      transform.setSample(frame, i, position < samples.size() ? window[i] * samples[position] : 0);
    }
  }
  const auto frames = static_cast<double>(result.frames);
  result.nanoseconds.singly = timed([&] { transform.applySingly(); }) / frames;
  result.nanoseconds.inBatch = timed([&] { transform.applyInBatch(); }) / frames;

  result.power.reserve(result.frames * result.bins());
  for (std::size_t frame = 0; frame < result.frames; ++frame) {
    for (std::size_t bin = 0; bin < result.bins(); ++bin) {
      result.power.push_back(transform.power(frame, bin));
    }
  }
  return result;
}
