// Values of a spectrum.
#pragma once

#include "graph/graph.hpp"
#include "number/index.hpp"

#include <vector>

namespace tfmgen::transform {

using graph::Graph;
using graph::Quad;
using graph::Ref;
using number::at;

using Samples = std::vector<Ref>;

// A product that is not formed yet, so that a rotation behind it may take its factor into constants of its own.
struct Product {
  Quad factor = 1;
  Ref value;

  Product() = default;
  Product(Ref v) : value(v) {} // NOLINT(google-explicit-constructor): every value is a product by 1
  Product(Quad f, Ref v) : factor(f), value(v) {}
  Product operator-() const { return {-factor, value}; }
  [[nodiscard]] bool isZero() const { return value.isZero(); }
};

inline Ref place(Graph& g, const Product& p) {
  return g.multiply(p.factor, p.value);
}

// re + i * im.
struct Bin {
  Ref re;
  Product im;
};

using Bins = std::vector<Bin>;

inline Bin conjugate(const Bin& z) {
  return {z.re, -z.im};
}

inline Bin add(Graph& g, const Bin& a, const Bin& b) {
  return {g.add(a.re, b.re), g.add(place(g, a.im), place(g, b.im))};
}

inline Bin subtract(Graph& g, const Bin& a, const Bin& b) {
  return {g.subtract(a.re, b.re), g.subtract(place(g, a.im), place(g, b.im))};
}

// a + i * b.
inline Bin addTimesI(Graph& g, const Bin& a, const Bin& b) {
  return {g.subtract(a.re, place(g, b.im)), g.add(place(g, a.im), b.re)};
}

enum class SineProduct : bool { placed, merged };

// Both parts of a rotation by an odd eighth are sums of the same two products. Products and sums may change places; a
// transposed graph has them the other way round.
enum class EighthTurn : bool { productsFirst, sumsFirst };

// z * exp(-2*pi*i*k/n): free at quarter turns, two products at odd eighths, else four. A pending product in the
// imaginary part is merged into the constants where told, which saves it.
Bin rotate(Graph& g, const Bin& z, long k, long n, SineProduct sine = SineProduct::placed,
           EighthTurn eighth = EighthTurn::productsFirst);

} // namespace tfmgen::transform
