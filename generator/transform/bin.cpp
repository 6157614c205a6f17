#include "bin.hpp"

#include "number/modular.hpp"
#include "number/roots.hpp"

namespace tfmgen::transform {

namespace {

Bin quarterTurns(const Bin& z, int turns, Graph& g) {
  const Ref im = place(g, z.im);
  switch (turns) {
  case 1: return {im, -z.re};
  case 2: return {-z.re, -im};
  default: return {-im, z.re};
  }
}

} // namespace

Bin rotate(Graph& g, const Bin& z, long k, long n, SineProduct sine, EighthTurn eighth) {
  k = number::modulo(k, n);
  if (k == 0) {
    return z;
  }
  if (4 * k % n == 0) {
    return quarterTurns(z, static_cast<int>(4 * k / n), g);
  }
  const auto [c, s] = number::root(k, n);
  if (8 * k % n == 0) {
    const Ref im = place(g, z.im);
    if (eighth == EighthTurn::productsFirst) {
      return {g.add(g.multiply(c, z.re), g.multiply(s, im)), g.subtract(g.multiply(c, im), g.multiply(s, z.re))};
    }
    const Ref sum = g.add(z.re, im);
    const Ref difference = g.subtract(im, z.re);
    const bool sameSign = (c > 0) == (s > 0);
    return {g.multiply(c, sameSign ? sum : -difference), g.multiply(c, sameSign ? difference : sum)};
  }
  const Product im = sine == SineProduct::merged ? z.im : Product(place(g, z.im));
  return {g.sumOfProducts({{{c, z.re}, {s * im.factor, im.value}}}),
          Product(g.sumOfProducts({{{c * im.factor, im.value}, {-s, z.re}}}))};
}

} // namespace tfmgen::transform
