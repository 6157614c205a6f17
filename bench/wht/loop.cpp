#include "loop.hpp"

#include <algorithm>

namespace {

template <class Real>
void transform(const Real* src, Real* dst, int order) {
  const int n = 1 << order;
  std::copy(src, src + n, dst);
  for (int h = 1; h < n; h *= 2) {
    for (int i = 0; i < n; i += 2 * h) {
      for (int j = i; j < i + h; ++j) {
        const Real clear = dst[j];
        const Real set = dst[j + h];
        dst[j] = clear + set;
        dst[j + h] = clear - set;
      }
    }
  }
}

} // namespace

void loopWht(const float* src, float* dst, int order) {
  transform(src, dst, order);
}

void loopWht(const double* src, double* dst, int order) {
  transform(src, dst, order);
}
