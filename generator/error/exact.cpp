#include "exact.hpp"

#include "number/roots.hpp"

#include <cmath>
#include <cstddef>

namespace tfmgen::error {

namespace {

QuadMatrix square(std::size_t order) {
  QuadMatrix zeros(order, std::vector<Quad>(order));
  return zeros;
}

// The bin of a number of a half spectrum.
long binOf(long number) {
  return (number + 1) / 2;
}

// exp(-2 pi i n k / N), of which a number of a half spectrum takes its part.
Quad forwardPart(long number, long n, long length) {
  const number::Complex w = number::root(-n * binOf(number), length);
  return number == 0 || number % 2 != 0 ? w.re : w.im;
}

} // namespace

// The matrix of the DFT is a unitary one times the root of its order.
Exact exactComplex(int length, transform::RootSign sign) {
  const auto order = static_cast<std::size_t>(length);
  Exact exact{square(2 * order), std::sqrt(static_cast<double>(length))};
  for (std::size_t k = 0; k < order; ++k) {
    for (std::size_t n = 0; n < order; ++n) {
      const number::Complex w = number::root(static_cast<long>(factor(sign)) * static_cast<long>(k * n), length);
      exact.matrix[2 * k][2 * n] = w.re;
      exact.matrix[2 * k][2 * n + 1] = -w.im;
      exact.matrix[2 * k + 1][2 * n] = w.im;
      exact.matrix[2 * k + 1][2 * n + 1] = w.re;
    }
  }
  return exact;
}

// Rows and columns are orthogonal. The longest are those of bin 0, of square length N, but for the columns of inner
// bins in the way back: these count twice, so that theirs is 2N.
Exact exactReal(int length, lower::Transform transform) {
  const auto order = static_cast<std::size_t>(length);
  const bool countsTwice = transform == lower::Transform::inverse && length > 2;
  Exact exact{square(order), std::sqrt(static_cast<double>(countsTwice ? 2 * length : length))};
  for (std::size_t i = 0; i < order; ++i) {
    for (std::size_t j = 0; j < order; ++j) {
      const auto row = static_cast<long>(i);
      const auto column = static_cast<long>(j);
      Quad& entry = exact.matrix[i][j];
      switch (transform) {
      case lower::Transform::forward: entry = forwardPart(row, column, length); break;
      case lower::Transform::inverse: {
        const bool isInner = 2 * binOf(column) % length != 0;
        entry = (isInner ? 2 : 1) * forwardPart(column, row, length);
        break;
      }
      case lower::Transform::hartley: {
        const number::Complex w = number::root(row * column, length);
        entry = w.re + w.im;
        break;
      }
      }
    }
  }
  return exact;
}

} // namespace tfmgen::error
