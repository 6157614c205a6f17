#include "complex.hpp"

#include "number/modular.hpp"

#include <cstdlib>

namespace tfmgen::transform {

namespace {

Ref signedBy(Quad factor, Ref value) {
  return factor < 0 ? -value : value;
}

Values directTwo(Graph& g, const Values& z) {
  return {add(g, z[0], z[1]), subtract(g, z[0], z[1])};
}

Values directFour(Graph& g, const Values& z, RootSign sign) {
  const Complex b = add(g, z[0], z[2]);
  const Complex c = subtract(g, z[0], z[2]);
  const Complex a = add(g, z[1], z[3]);
  const Complex d = quarterTurns(subtract(g, z[1], z[3]), factor(sign));
  return {add(g, b, a), add(g, c, d), subtract(g, b, a), subtract(g, c, d)};
}

// One part of all bins of an odd prime length: the cosines act on that part of the samples, the sines on the other.
// Sums t[j] = z[j] + z[p-j] and differences e[j] = z[j] - z[p-j] halve the products:
//   X[k], X[p-k] = A[k] +- turn*B[k],  A[k] = x[0] + sum of cos(2 pi j k / p) t[j],  B[k] = sum of sin(..) e[j].
void directOddPart(Graph& g, const Values& z, Ref Complex::*part, Ref Complex::*other, int turn, Values& out) {
  const std::size_t p = z.size();
  const std::size_t half = (p - 1) / 2;
  std::vector<Ref> sums;
  std::vector<Ref> differences;
  for (std::size_t j = 1; j <= half; ++j) {
    sums.push_back(g.add(z[j].*part, z[p - j].*part));
    differences.push_back(g.subtract(z[j].*other, z[p - j].*other));
  }
  out[0].*part = g.add(z[0].*part, g.sum(sums));
  for (std::size_t k = 1; k <= half; ++k) {
    std::vector<graph::Term> cosines;
    std::vector<graph::Term> sines;
    for (std::size_t j = 1; j <= half; ++j) {
      const auto [c, s] = number::root(static_cast<long>(j * k), static_cast<long>(p));
      cosines.push_back({c, sums[j - 1]});
      sines.push_back({s, differences[j - 1]});
    }
    cosines.insert(cosines.begin() + (cosines[0].factor > 0 ? 1 : 0), {1, z[0].*part});
    const Ref a = g.sumOfProducts(cosines);
    const Ref b = g.sumOfProducts(sines);
    out[k].*part = g.add(a, turn < 0 ? -b : b);
    out[p - k].*part = g.subtract(a, turn < 0 ? -b : b);
  }
}

Values directOdd(Graph& g, const Values& z, RootSign sign) {
  Values out(z.size());
  directOddPart(g, z, &Complex::re, &Complex::im, -factor(sign), out);
  directOddPart(g, z, &Complex::im, &Complex::re, factor(sign), out);
  return out;
}

class Transform {
public:
  Transform(Graph& g, const Values& z, RootSign sign) : g_(g), z_(z), sign_(sign) {}

  Values operator()(const plan::Direct& form) const {
    return form.length == 2 ? directTwo(g_, z_) : directOdd(g_, z_, sign_);
  }

  // Decimation in time by 2 down to length 4.
  Values operator()(const plan::PowerOfTwo& form) const {
    if (form.length == 2) {
      return directTwo(g_, z_);
    }
    if (form.length == 4) {
      return directFour(g_, z_, sign_);
    }
    return (*this)(plan::CooleyTukey{plan::powerOfTwo(form.length / 2), plan::direct(2), plan::Merge::no});
  }

  Values operator()(const plan::GoodThomas& form) const { return twoFactors(form, 0); }
  Values operator()(const plan::CooleyTukey& form) const { return twoFactors(form, factor(sign_)); }

  // The bins of the permuted samples times their factors, back through a transform of the conjugate root. Sample 0 goes
  // into bin 0, from where the way back adds it to every output.
  Values operator()(const plan::Rader& form) const {
    const int p = form.length;
    Values permuted;
    for (int i = 0; i < p - 1; ++i) {
      permuted.push_back(at(z_, number::powerModulo(form.primitiveRoot, i, p)));
    }
    Values bins = transformComplex(g_, *form.analysis, permuted, sign_);
    Values out(z_.size());
    out[0] = add(g_, z_[0], bins[0]);
    const std::vector<number::Complex> factors = raderMultipliers(p, form.primitiveRoot, sign_);
    for (std::size_t m = 0; m < bins.size(); ++m) {
      bins[m] = multiply(g_, factors[m], bins[m]);
    }
    bins[0] = add(g_, z_[0], bins[0]);
    const Values back = transformComplex(g_, *form.synthesis, bins, opposite(sign_));
    const int inverseRoot = number::inverseModulo(form.primitiveRoot, p);
    for (int j = 0; j < p - 1; ++j) {
      at(out, number::powerModulo(inverseRoot, j, p)) = at(back, j);
    }
    return out;
  }

  // The forms of real samples, and the chirp, which needs lanes of its own.
  Values operator()(const auto& /*form*/) const { std::abort(); }

private:
  // `twiddleSign` is 0 where there are no twiddles.
  template <class Form>
  [[nodiscard]] Values twoFactors(const Form& form, int twiddleSign) const {
    const int first = plan::length(*form.first);
    const int second = plan::length(*form.second);
    const long order = static_cast<long>(first) * second;
    std::vector<Values> inner;
    for (int r = 0; r < second; ++r) {
      Values samples;
      for (int m = 0; m < first; ++m) {
        samples.push_back(at(z_, sampleIndex(form, first, second, r, m)));
      }
      inner.push_back(transformComplex(g_, *form.first, samples, sign_));
    }
    Values out(z_.size());
    for (int k1 = 0; k1 < first; ++k1) {
      Values column;
      for (int r = 0; r < second; ++r) {
        const Complex& bin = at(at(inner, r), k1);
        column.push_back(multiplyByRoot(g_, bin, static_cast<long>(twiddleSign) * r * k1, order));
      }
      const Values bins = transformComplex(g_, *form.second, column, sign_);
      for (int k2 = 0; k2 < second; ++k2) {
        at(out, binIndex(form, first, second, k1, k2)) = at(bins, k2);
      }
    }
    return out;
  }

  Graph& g_;
  const Values& z_;
  RootSign sign_;
};

} // namespace

Complex multiply(Graph& g, const LaneFactors& factors, const Complex& z) {
  const auto& [c, s] = factors;
  const Ref re = g.subtract(g.multiplyAsStated(c, z.re), g.multiplyAsStated(s, z.im));
  return {re, g.add(g.multiplyAsStated(s, z.re), g.multiplyAsStated(c, z.im))};
}

Complex multiply(Graph& g, number::Complex factor, const Complex& z) {
  const auto [c, s] = factor;
  return multiply(g, {{c, c, c, c}, {s, s, s, s}}, z);
}

Complex multiplyByRoot(Graph& g, const Complex& z, long k, long n) {
  k = number::modulo(k, n);
  if (4 * k % n == 0) {
    return quarterTurns(z, static_cast<int>(4 * k / n));
  }
  const number::Complex root = number::root(k, n);
  if (8 * k % n != 0) {
    return multiply(g, root, z);
  }
  const Ref re = g.subtract(signedBy(root.re, z.re), signedBy(root.im, z.im));
  const Ref im = g.add(signedBy(root.re, z.im), signedBy(root.im, z.re));
  const Quad c = number::cosine(1, 8);
  return {g.multiply(c, re), g.multiply(c, im)};
}

Values transformComplex(Graph& g, const plan::Plan& plan, const Values& z, RootSign sign) {
  return std::visit(Transform(g, z, sign), plan.form);
}

std::vector<number::Complex> raderMultipliers(int p, int primitiveRoot, RootSign sign) {
  const int q = p - 1;
  const int inverseRoot = number::inverseModulo(primitiveRoot, p);
  std::vector<number::Complex> factors;
  for (int m = 0; m < q; ++m) {
    number::Complex sum{0, 0};
    for (int i = 0; i < q; ++i) {
      sum = sum + number::root(static_cast<long>(factor(sign)) * number::powerModulo(inverseRoot, i, p), p) *
                      number::root(static_cast<long>(factor(sign)) * i * m, q);
    }
    factors.push_back(Quad{1} / q * number::withExactZeros(sum));
  }
  return factors;
}

int binIndex(const plan::GoodThomas& /*form*/, int first, int second, int k1, int k2) {
  return number::chineseRemainder(k1, first, k2, second);
}

int binIndex(const plan::CooleyTukey& /*form*/, int first, int /*second*/, int k1, int k2) {
  return k1 + first * k2;
}

} // namespace tfmgen::transform
