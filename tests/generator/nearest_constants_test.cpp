// Every constant of every kernel is the nearest number to its closed form, which is computed here by itself.
#include "lower/complex32.hpp"
#include "lower/complex64.hpp"
#include "number/modular.hpp"
#include "number/roots.hpp"
#include "plan/complex32.hpp"
#include "plan/complex64.hpp"
#include "plan/real.hpp"
#include "print/numbers.hpp"
#include "quadmath.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace tfmgen {
namespace {

using number::Complex;
using number::Quad;

constexpr int kLast = 64;

// exp(2 pi i k / n)
Complex turn(long k, long n) {
  static const Quad pi = acosq(-1);
  const Quad angle = 2 * pi * static_cast<Quad>(number::modulo(k, n)) / static_cast<Quad>(n);
  return {cosq(angle), sinq(angle)};
}

// What the constants of kernels are made of, without sign and in ascending order.
class ClosedForms {
public:
  ClosedForms() {
    for (int n = 1; n <= 2 * kLast; ++n) { // twiddles, and a chirp of half steps
      for (int k = 0; k < n; ++k) {
        putWithSine(turn(k, n));
      }
    }
    for (const int p : {5, 7, 11, 13, 17, 19, 23, 29, 31, 37, 41, 43, 47, 53, 59, 61}) {
      putConvolution(p);
    }
    putChirp(47, 96);
    putChirp(59, 128);
    std::ranges::sort(values_);
  }

  [[nodiscard]] const Quad* find(Quad value) const {
    const Quad magnitude = number::magnitude(value);
    const Quad tolerance = magnitude * Quad{1e-28};
    const auto found = std::ranges::lower_bound(values_, magnitude - tolerance);
    return found != values_.end() && *found < magnitude + tolerance ? &*found : nullptr;
  }

private:
  void put(Quad value) {
    if (number::magnitude(value) > Quad{1e-28}) {
      values_.push_back(number::magnitude(value));
      values_.push_back(2 * number::magnitude(value)); // of two bins, or of a mirrored one
    }
  }

  // Also with the sine of a butterfly of 3.
  void putWithSine(const Complex& z) {
    for (const Quad factor : {Quad{1}, turn(1, 3).im}) {
      put(factor * z.re);
      put(factor * z.im);
    }
  }

  // Gauss sums over p-1: the spectrum of the p-th roots in the order of the powers of a primitive root, which may begin
  // at any of them.
  void putConvolution(int p) {
    const int q = p - 1;
    const int g = number::primitiveRoot(p);
    for (int m = 0; m < q; ++m) {
      Complex sum{0, 0};
      for (int i = 0; i < q; ++i) {
        sum = sum + turn(number::powerModulo(g, i, p), p) * turn(static_cast<long>(i) * m, q);
      }
      for (int first = 0; first < q; ++first) {
        putWithSine(Quad{1} / q * (sum * turn(static_cast<long>(first) * m, q)));
      }
    }
  }

  // The spectrum, of length m, of exp(i pi k^2 / n) for k between -n and n.
  void putChirp(int n, int m) {
    for (int bin = 0; bin < m; ++bin) {
      Complex sum{0, 0};
      for (int k = 1 - n; k < n; ++k) {
        sum = sum + turn(static_cast<long>(k) * (k + n), 2L * n) * turn(static_cast<long>(k) * bin, m);
      }
      put(sum.re / m);
      put(sum.im / m);
    }
  }

  std::vector<Quad> values_;
};

class NearestConstants : public testing::Test {
protected:
  // Two constants of real kernels are one unit in the last place beside theirs.
  static bool isPrinted(Quad value) {
    const auto magnitude = static_cast<double>(number::magnitude(value));
    return magnitude == 0.3004626062886657 || magnitude == 0.33166247903554;
  }

  template <class Real>
  void expectNearest(const graph::Graph& g, std::span<const graph::Ref> outputs, bool isReal) {
    constexpr bool isSingle = sizeof(Real) == sizeof(float);
    const graph::NodeMap<bool> needed = g.reachable(outputs);
    for (graph::NodeId i; i != g.end(); ++i) {
      if (!needed[i] || g.node(i).op != graph::Op::multiply) {
        continue;
      }
      for (const Quad constant : g.constant(g.node(i))) {
        if (constant == 0 || (isReal && isPrinted(constant))) {
          continue;
        }
        const Quad* const form = forms().find(constant);
        ASSERT_NE(form, nullptr) << static_cast<double>(constant) << " has no closed form";
        const std::string text =
            print::literal(constant, isSingle ? print::Precision::single : print::Precision::twofold);
        const Real printed = isSingle ? static_cast<Real>(std::strtof(text.c_str(), nullptr))
                                      : static_cast<Real>(std::strtod(text.c_str(), nullptr));
        ASSERT_EQ(printed, static_cast<Real>(constant < 0 ? -*form : *form)) << text;
      }
    }
  }

  static const ClosedForms& forms() {
    static const ClosedForms forms;
    return forms;
  }
};

TEST_F(NearestConstants, OfComplexKernels) {
  for (int n = 2; n <= kLast; ++n) {
    SCOPED_TRACE(n);
    for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
      const lower::Kernel twofold = lower::complex64(*plan::complex64(n), sign);
      expectNearest<double>(twofold.graph, twofold.outputs(), false);
      if (n <= 5) { // on scalars, with constants in double
        const lower::RealKernel scalars = lower::complexScalars(*plan::complex32(n), sign);
        expectNearest<double>(scalars.body.graph, scalars.body.results, false);
      } else {
        const lower::Kernel single = lower::complex32(*plan::complex32(n), sign);
        expectNearest<float>(single.graph, single.outputs(), false);
      }
    }
  }
}

TEST_F(NearestConstants, OfRealKernels) {
  for (int n = 2; n <= kLast; ++n) {
    SCOPED_TRACE(n);
    const plan::RealPlans& plans = plan::realPlans(n);
    for (const transform::RealKernel& kernel :
         {transform::forwardReal(*plans.forward), transform::inverseReal(*plans.inverse),
          transform::hartley(*plans.hartley)}) {
      expectNearest<double>(kernel.graph, kernel.results, true);
    }
  }
}

} // namespace
} // namespace tfmgen
