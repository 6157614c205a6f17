// The transforms by their definitions on numbers in a fixed order: re and im of each element; samples; or R(0), R(1),
// I(1), R(2) and so on of a half spectrum. Made to be called very often: sums and differences of mirrored elements
// leave a quarter of the products.
#pragma once

#include "families.hpp"
#include "quad.hpp"

#include <cstddef>
#include <vector>

namespace tfmgen::test {

// Wide has 11 bits more than the samples at least, so that a thousandth of an error of theirs is its own.
template <class Wide>
class Definition {
public:
  Definition(Kind kind, int n) : kind_(kind), n_(static_cast<std::size_t>(n)), count_(n_ / 2 + 1) {
    for (std::size_t k = 0; k < count_; ++k) {
      for (std::size_t j = 0; j < count_; ++j) {
        const Root& w = roots(n)[j * k % n_];
        cosines_.push_back(static_cast<Wide>(w.re));
        sines_.push_back(static_cast<Wide>(w.im));
      }
    }
  }

  template <class Real>
  void operator()(const std::vector<Real>& numbers, std::vector<Wide>& result) const {
    result.resize(numbers.size());
    switch (kind_) {
    case Kind::complexForward:
    case Kind::complexInverse: complexBins(numbers, kind_ == Kind::complexForward ? 1 : -1, result); break;
    case Kind::realForward:
      bins(parts(numbers, 1, 0), [&](std::size_t k, Wide even, Wide odd) {
        result[k == 0 ? 0 : 2 * k - 1] = even;
        if (isInner(k)) {
          result[2 * k] = -odd;
        }
      });
      break;
    case Kind::hartley:
      bins(parts(numbers, 1, 0), [&](std::size_t k, Wide even, Wide odd) { mirrored(result, k, even, odd); });
      break;
    case Kind::realInverse:
      bins(spectrum(numbers), [&](std::size_t k, Wide even, Wide odd) { mirrored(result, k, even, -odd); });
      break;
    }
  }

private:
  // Sums and differences of the elements j and n-j.
  struct Parts {
    std::vector<Wide> even;
    std::vector<Wide> odd;
  };

  [[nodiscard]] bool isInner(std::size_t k) const { return k != 0 && 2 * k != n_; }

  template <class Real>
  [[nodiscard]] Parts parts(const std::vector<Real>& numbers, std::size_t stride, std::size_t offset) const {
    Parts p{std::vector<Wide>(count_), std::vector<Wide>(count_)};
    for (std::size_t j = 0; j < count_; ++j) {
      const Wide lower = numbers[stride * j + offset];
      const Wide upper = isInner(j) ? numbers[stride * (n_ - j) + offset] : 0;
      p.even[j] = lower + upper;
      p.odd[j] = isInner(j) ? lower - upper : 0;
    }
    return p;
  }

  template <class Real>
  [[nodiscard]] Parts spectrum(const std::vector<Real>& numbers) const {
    Parts p{std::vector<Wide>(count_), std::vector<Wide>(count_)};
    for (std::size_t k = 0; k < count_; ++k) {
      const Wide re = numbers[k == 0 ? 0 : 2 * k - 1];
      p.even[k] = isInner(k) ? 2 * re : re;
      p.odd[k] = isInner(k) ? 2 * static_cast<Wide>(numbers[2 * k]) : 0;
    }
    return p;
  }

  static Wide sum(const Wide* factors, const std::vector<Wide>& values) {
    Wide total = 0;
    for (std::size_t j = 0; j < values.size(); ++j) {
      total += factors[j] * values[j];
    }
    return total;
  }

  // put(k, sum of the even part with cosines, sum of the odd part with sines)
  template <class Put>
  void bins(const Parts& p, const Put& put) const {
    for (std::size_t k = 0; k < count_; ++k) {
      put(k, sum(&cosines_[k * count_], p.even), sum(&sines_[k * count_], p.odd));
    }
  }

  void mirrored(std::vector<Wide>& result, std::size_t k, Wide even, Wide odd) const {
    result[k] = even + odd;
    if (isInner(k)) {
      result[n_ - k] = even - odd;
    }
  }

  template <class Real>
  void complexBins(const std::vector<Real>& numbers, int sign, std::vector<Wide>& result) const {
    bins(parts(numbers, 2, 0), [&](std::size_t k, Wide even, Wide odd) {
      result[2 * k] = even;
      result[2 * k + 1] = -sign * odd;
      if (isInner(k)) {
        result[2 * (n_ - k)] = even;
        result[2 * (n_ - k) + 1] = sign * odd;
      }
    });
    bins(parts(numbers, 2, 1), [&](std::size_t k, Wide even, Wide odd) {
      result[2 * k] += sign * odd;
      result[2 * k + 1] += even;
      if (isInner(k)) {
        result[2 * (n_ - k)] -= sign * odd;
        result[2 * (n_ - k) + 1] += even;
      }
    });
  }

  Kind kind_;
  std::size_t n_;
  std::size_t count_;
  std::vector<Wide> cosines_;
  std::vector<Wide> sines_;
};

} // namespace tfmgen::test
