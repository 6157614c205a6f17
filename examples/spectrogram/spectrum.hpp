#pragma once

#include <cstddef>
#include <vector>

// Nanoseconds of one transform, the mean over all frames.
struct TransformTimes {
  double singly;  // a call for each frame
  double inBatch; // one call for all
};

struct Spectrogram {
  int length; // samples of a frame
  int hop;    // samples from one frame to the next
  std::size_t frames;
  std::vector<float> power; // frames x bins(), frame by frame
  TransformTimes nanoseconds;

  [[nodiscard]] std::size_t bins() const { return static_cast<std::size_t>(length) / 2 + 1; }
};

// Hann-windowed frames that overlap by three quarters; the last one is filled up with silence. Throws
// std::invalid_argument when the library has no transform of this length.
Spectrogram analyse(const std::vector<float>& samples, int length);
