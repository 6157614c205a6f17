// Compiled once for each width, TFMGEN_VECTOR_BYTES.
#include "moves.hpp"

#include "kernel/access.hpp"
#include "kernel/masked.hpp"

namespace tfmgen::test {
namespace {

template <class V, class Real>
void moveHalves(Moves<Real>& m) {
  constexpr int half = kLanesOf<V> / 2;
  storeUnaligned(m.gathered, gather<V>(m.memory, 2));
  storeUnaligned(m.scattered, loadUnaligned<V>(m.b));
  scatter(m.scattered + 2 * (kLanesOf<V> - 1), -2, loadUnaligned<V>(m.a));
  storeUnaligned(m.halves, loadHalves(m.b, m.a));
  storeUnaligned(m.low, loadLow(m.a));
  storeHalves(m.apart + half, m.apart, loadUnaligned<V>(m.a));
}

template <class V, class Real>
void moveFirst([[maybe_unused]] Moves<Real>& m) {
#ifdef __AVX2__
  if constexpr (sizeof(V) > kBlockBytes) {
    for (int count = 0; count <= kLanesOf<V>; ++count) {
      storeUnaligned(m.first[count], loadFirst<V>(m.memory, count));
      storeUnaligned(m.kept[count], loadUnaligned<V>(m.b));
      storeFirst(m.kept[count], loadUnaligned<V>(m.a), count);
    }
  }
#endif
}

template <class V, class Real>
void moveAll(Moves<Real>& m) {
  using Access = UnalignedAccess<sizeof(V)>;
  constexpr int lanes = kLanesOf<V>;
  const V a = loadUnaligned<V>(m.a);
  const V b = loadUnaligned<V>(m.b);
  storeUnaligned(m.broadcast, broadcast<V>(m.a[1]));
  storeUnaligned(m.sum, a + b);
  storeUnaligned(m.flipped,
                 flipSigns(a, withIndices<lanes>([&](auto... i) { return V{(m.b[i] < 0 ? Real(-0.0) : 0)...}; })));
  withIndices<lanes>([&](auto... i) { storeUnaligned(m.everyOther, shuffle<(2 * i)...>(a, b)); });
  storeUnaligned(m.reversed, reverse(a));
  storeUnaligned(m.unpackedLow, unpackLow(a, b));
  storeUnaligned(m.unpackedHigh, unpackHigh(a, b));
  storeUnaligned(m.rejoined, join(highHalf(a), lowHalf(b)));
  if constexpr (sizeof(Real) == sizeof(double)) {
    storeUnaligned(m.rounded, convert<double>(convert<float>(a)));
  }

  V rows[lanes];
  for (int row = 0; row < lanes; ++row) {
    rows[row] = loadUnaligned<V>(m.matrix + row * lanes);
  }
  transpose(rows);
  for (int row = 0; row < lanes; ++row) {
    storeUnaligned(m.transposed + row * lanes, rows[row]);
  }
  Access::store(m.stored + 1, Access::load(m.memory + 1));
  if constexpr (sizeof(V) == kBlockBytes) {
    moveHalves<V>(m);
  }
  moveFirst<V>(m);
}

} // namespace

template <int bytes>
void Registers<bytes>::move(Moves<float>& m) {
  moveAll<Vector<float, bytes>>(m);
}

template <int bytes>
void Registers<bytes>::move(Moves<double>& m) {
  moveAll<Vector<double, bytes>>(m);
}

template struct Registers<TFMGEN_VECTOR_BYTES>;

} // namespace tfmgen::test
