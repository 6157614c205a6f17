#include "lapped.hpp"

#include <bit>
#include <cmath>
#include <new>
#include <numbers>
#include <stdexcept>
#include <string>

LappedTransform::LappedTransform(std::int32_t frameLength)
    : n_(static_cast<std::size_t>(frameLength)), scale_(std::sqrt(2.0 / frameLength)) {
  std::int32_t size = 0;
  // Some lengths above a power of two have a size too, but no transform.
  if (frameLength < 2 || !std::has_single_bit(static_cast<std::uint32_t>(frameLength)) || frameLength > 1 << 20 ||
      tfmgDCT4GetSize_64f(frameLength, &size) != tfmStsOk) {
    throw std::invalid_argument("frame length " + std::to_string(frameLength) +
                                ": it must be a power of two from 2 to 1048576");
  }
  window_.resize(2 * n_);
  for (std::size_t i = 0; i < window_.size(); ++i) {
    window_[i] = std::sin(std::numbers::pi * (static_cast<double>(i) + 0.5) / static_cast<double>(2 * n_));
  }
  folded_.resize(n_);
  if (tfmgDCT4InitAlloc_64f(&plan_, frameLength) != tfmStsOk) {
    throw std::bad_alloc();
  }
}

LappedTransform::~LappedTransform() {
  tfmgDCT4Free_64f(plan_);
}

// With the block's quarters a, b, c, d and r for a reversal, the DCT-IV takes (-c_r - d, a - b_r).
void LappedTransform::analyse(const double* samples, double* coefficients) {
  const auto windowed = [&](std::size_t i) { return samples[i] * window_[i]; };
  const std::size_t half = n_ / 2;
  for (std::size_t i = 0; i < half; ++i) {
    folded_[i] = -windowed(3 * half - 1 - i) - windowed(3 * half + i);
    folded_[half + i] = windowed(i) - windowed(n_ - 1 - i);
  }
  tfmgDCT4_64f(folded_.data(), coefficients, plan_);
  for (std::size_t k = 0; k < n_; ++k) {
    coefficients[k] *= scale_;
  }
}

// The DCT-IV is its own inverse up to scale; its halves (u, v) unfold to (v, -v_r, -u_r, -u).
void LappedTransform::synthesise(const double* coefficients, double* samples) {
  tfmgDCT4_64f(coefficients, folded_.data(), plan_);
  const auto add = [&](std::size_t i, double value) { samples[i] += scale_ * value * window_[i]; };
  const std::size_t half = n_ / 2;
  for (std::size_t i = 0; i < half; ++i) {
    add(i, folded_[half + i]);
    add(half + i, -folded_[n_ - 1 - i]);
    add(n_ + i, -folded_[half - 1 - i]);
    add(n_ + half + i, -folded_[i]);
  }
}
