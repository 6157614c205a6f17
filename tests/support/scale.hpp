// The factor that a flag stands for, in the sample type. tests/frame proves these numbers with exact arithmetic.
#pragma once

#include "families.hpp"

#include <cmath>
#include <type_traits>

namespace tfmgen::test {

template <class Real>
Real expectedReciprocalRoot(int n) {
  if constexpr (std::is_same_v<Real, double>) {
    return 1.0 / std::sqrt(static_cast<double>(n)); // two roundings
  } else {
    return static_cast<Real>(1.0L / std::sqrt(static_cast<long double>(n)));
  }
}

template <class Real>
Real expectedScale(const Family& family, int n, std::int32_t flag) {
  if (!family.divides(flag)) {
    return 1;
  }
  return flag == TFM_DIV_BY_SQRTN ? expectedReciprocalRoot<Real>(n) : static_cast<Real>(1.0L / n);
}

} // namespace tfmgen::test
