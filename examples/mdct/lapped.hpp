// The modified discrete cosine transform on the DCT-IV: blocks of 2N windowed samples, N apart, become N coefficients
// each.
#pragma once

#include "tfmgen.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// Analysis and synthesis of one frame length N, an even one that has a DCT-IV plan.
class LappedTransform {
public:
  // A length that is no power of two or has no plan throws std::invalid_argument.
  explicit LappedTransform(std::int32_t frameLength);
  ~LappedTransform();
  LappedTransform(const LappedTransform&) = delete;
  LappedTransform& operator=(const LappedTransform&) = delete;

  // 2N samples to N coefficients, scaled such that coefficients and samples have the same energy on the average.
  void analyse(const double* samples, double* coefficients);

  // N coefficients, added to 2N samples. The sum over all frames, N apart, gives the samples back: what a frame folds
  // over itself is cancelled by its neighbours.
  void synthesise(const double* coefficients, double* samples);

private:
  std::size_t n_;
  double scale_;
  std::vector<double> window_; // a half period of a sine: the squares N apart add up to 1
  std::vector<double> folded_;
  TfmgDCT4Plan* plan_ = nullptr;
};
