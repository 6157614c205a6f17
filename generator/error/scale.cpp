#include "scale.hpp"

#include <cmath>

namespace tfmgen::error {

namespace {

double inSampleType(double value, int sampleBits) {
  return sampleBits == 32 ? static_cast<double>(static_cast<float>(value)) : value;
}

} // namespace

Scale reciprocal(int length, int sampleBits) {
  return {"1/n", inSampleType(1.0 / length, sampleBits), number::Quad{1} / length};
}

// Rounded twice in double.
Scale reciprocalRoot(int length, int sampleBits) {
  const double nearest = 1 / std::sqrt(static_cast<double>(length));
  number::Quad exact = nearest;
  for (int step = 0; step < 2; ++step) { // of Newton's iteration
    exact = exact * (3 - length * exact * exact) / 2;
  }
  return {"1/sqrt(n)", inSampleType(nearest, sampleBits), exact};
}

} // namespace tfmgen::error
