// Complex powers of two in 32-bit samples: an inner transform, products by the vectors of twiddles with all their
// lanes, an outer transform.
#include "complex_forms.hpp"

#include <numbers>

namespace tfmgen::test {
namespace {

using Element = std::complex<float>;

// exp(sign*2*pi*i*k/n) with exact quarters and zeros of plus sign.
Element root(std::size_t k, std::size_t n, int sign) {
  const auto quadrant = static_cast<int>(4 * (k % n) / n);
  const auto angle =
      2 * std::numbers::pi_v<long double> * static_cast<long double>(k % n) / static_cast<long double>(n);
  if (4 * k % n != 0) {
    return {static_cast<float>(std::cos(angle)), static_cast<float>(static_cast<long double>(sign) * std::sin(angle))};
  }
  constexpr std::array<int, 5> kCosines{1, 0, -1, 0, 1};
  const int sine = kCosines[static_cast<std::size_t>(quadrant + 3) % 4];
  return {static_cast<float>(kCosines[static_cast<std::size_t>(quadrant)]), static_cast<float>(sine * sign)};
}

Element product(const Element& z, const Element& w) {
  return {z.real() * w.real() - z.imag() * w.imag(), z.real() * w.imag() + z.imag() * w.real()};
}

Vector<float> every(const Vector<float>& x, std::size_t first, std::size_t step) {
  Vector<float> out;
  for (std::size_t i = first; i < x.size(); i += step) {
    out.push_back(x[i]);
  }
  return out;
}

constexpr float c = 0.70710677F;

// z * exp(sign*2*pi*i/8): one product a part, behind the sum or difference.
Element turnedByEighth(const Element& z, int sign) {
  const float sum = z.real() + z.imag();
  return sign < 0 ? Element(sum * c, (z.imag() - z.real()) * c) : Element((z.real() - z.imag()) * c, sum * c);
}

// The same for the third power of the root; the sum has the minus.
Element turnedByThreeEighths(const Element& z, int sign) {
  const float sum = z.real() + z.imag();
  return sign < 0 ? Element((z.imag() - z.real()) * c, sum * -c) : Element(sum * -c, (z.real() - z.imag()) * c);
}

// Butterflies of 2 between r and r+4, of 2 between r and r+2 with a quarter turn, and of 2 between both halves.
Vector<float> outerEight(const Vector<float>& x, int sign) {
  const Vector<float> even = four<float>({x[0], x[2], x[4], x[6]}, sign);
  const Vector<float> odd = four<float>({x[1], x[3], x[5], x[7]}, sign);
  const Vector<float> turnedOdd = {odd[0], turnedByEighth(odd[1], sign), turned(odd[2], sign),
                                   turnedByThreeEighths(odd[3], sign)};
  Vector<float> out(8);
  for (std::size_t k = 0; k < 4; ++k) {
    out[k] = even[k] + turnedOdd[k];
    out[k + 4] = even[k] - turnedOdd[k];
  }
  return out;
}

// Inner transforms of the subsequences x[r + outer*m], twiddles of all r but 0, outer transforms over r.
template <class Inner, class Outer>
Vector<float> cooleyTukey(const Vector<float>& x, std::size_t inner, int sign, const Inner& innerForm,
                          const Outer& outerForm) {
  const std::size_t n = x.size();
  const std::size_t outer = n / inner;
  std::vector<Vector<float>> y;
  for (std::size_t r = 0; r < outer; ++r) {
    y.push_back(innerForm(every(x, r, outer), sign));
  }
  Vector<float> out(n);
  for (std::size_t k1 = 0; k1 < inner; ++k1) {
    Vector<float> column;
    for (std::size_t r = 0; r < outer; ++r) {
      column.push_back(r == 0 ? y[r][k1] : product(y[r][k1], root(r * k1, n, sign)));
    }
    const Vector<float> z = outerForm(column, sign);
    for (std::size_t k2 = 0; k2 < outer; ++k2) {
      out[k1 + inner * k2] = z[k2];
    }
  }
  return out;
}

Vector<float> outerTwo(const Vector<float>& x, int /*sign*/) {
  return two(x);
}

Vector<float> expected(const Vector<float>& x, int sign) {
  switch (x.size()) {
  case 8: return cooleyTukey(x, 4, sign, four<float>, outerTwo);
  case 16: return cooleyTukey(x, 4, sign, four<float>, four<float>);
  case 32: return cooleyTukey(x, 4, sign, four<float>, outerEight);
  default: return cooleyTukey(x, 8, sign, outerEight, outerEight);
  }
}

TEST(ExactForms, ComplexPowersOfTwoOf32Bits) {
  forEachEntry([](const Entry& entry) {
    if (entry.family.isComplex() && entry.family.realBytes == sizeof(float) && entry.n >= 8 &&
        (entry.n & (entry.n - 1)) == 0) {
      expectComplexForm<float>(entry, expected);
    }
  });
}

} // namespace
} // namespace tfmgen::test
