// The last step of a split of m samples into g subsequences: for each row i of the subsequences' results, a rotation of
// all but the first and a complex transform of length g give rows i, i + r, i + 2r, .. of the column, r = m / g. A row
// from m/2 on is stored at its mirror image m-1-row, conjugated.
#include "butterfly.hpp"
#include "factor.hpp"
#include "runs.hpp"
#include "stages.hpp"

namespace tfmgen::dct4 {
namespace {

// A transform of length g takes two passes from 16 on, the second of length 4.
constexpr bool inTwoPasses(int g) {
  return g > 8;
}

// Row i of the columns of V; distances in samples.
template <class V>
struct SplitRow {
  using T = Element<V>;
  using Value = Complex<V>;

  const T* scratch;          // row i of subsequence 0
  std::ptrdiff_t partStep;   // from one subsequence to the next
  std::ptrdiff_t imaginary;  // from the real part to the imaginary part of a subsequence
  T* up;                     // row i of the result
  T* down;                   // row m-1-i
  std::ptrdiff_t resultStep; // r rows of the result
  std::ptrdiff_t rowStride;  // from the real part to the imaginary part of the result

  // The same of the columns behind the first `lane` ones.
  [[nodiscard]] TFMGEN_INLINE SplitRow from(std::ptrdiff_t lane) const {
    return {scratch + lane, partStep, imaginary, up + lane, down + lane, resultStep, rowStride};
  }

  [[nodiscard]] TFMGEN_INLINE Value load(int s) const {
    const T* from = scratch + s * partStep;
    return {loadAligned<V>(from), loadAligned<V>(from + imaginary)};
  }

  // Result l of g, conjugated in the second half.
  template <int g, int l>
  TFMGEN_INLINE void store(const Value& z) const {
    T* to = 2 * l < g ? up + l * resultStep : down - l * resultStep;
    storeAligned(to, z.re);
    storeAligned(to + rowStride, z.im);
  }
};

// z rotated by entry k = 1, 2, .. of a row of the table; z itself for k = 0, which has no entry.
template <int k, class V>
TFMGEN_INLINE inline Complex<V> rotateByTable(const Complex<V>& z, const Element<V>* row) {
  if constexpr (k == 0) {
    return z;
  } else {
    constexpr int lanes = kLanes<Element<V>>;
    const auto* entry = row + 2 * lanes * (k - 1);
    return rotate(z, {loadRepeated<V>(entry), loadRepeated<V>(entry + lanes)});
  }
}

template <int g, class V>
TFMGEN_INLINE inline void transformRow(const SplitRow<V>& row, const Element<V>* entries) {
  shortTransform<g, Conjugate::secondHalfOut>(
      [&](auto s) TFMGEN_INLINE { return rotateByTable<s>(row.load(s), entries); },
      [&](auto l, const auto& z) TFMGEN_INLINE { row.template store<g, l>(z); });
}

// s = k + 4u and l = v + w g/4: length g/4 over u for each k, then length 4 over k for each v.
template <int g, class V>
TFMGEN_INLINE inline void transformRowInTwoPasses(const SplitRow<V>& row, const Element<V>* firstEntries,
                                                  const Element<V>* secondEntries) {
  constexpr int quarter = g / 4;
  Complex<V> between[quarter][4];
  unroll<4>([&](auto k) TFMGEN_INLINE {
    shortTransform<quarter, Conjugate::none>(
        [&](auto u) TFMGEN_INLINE { return rotateByTable<u>(row.load(k + 4 * u), firstEntries); },
        [&](auto v, const auto& z) TFMGEN_INLINE { between[v][k] = z; });
  });
  unroll<quarter>([&](auto v) TFMGEN_INLINE {
    const auto* entries = secondEntries + v * (3 * 2 * kLanes<Element<V>>);
    shortTransform<4, Conjugate::secondHalfOut>(
        [&](auto k) TFMGEN_INLINE { return rotateByTable<k>(between[v][k], entries); },
        [&](auto w, const auto& z) TFMGEN_INLINE { row.template store<g, v + quarter * w>(z); });
  });
}

// The row's vectors of a group one after the other. The entries of the first pass are there from g = 16 on.
template <int g, class V>
TFMGEN_INLINE inline void transformParts(const SplitRow<V>& row, [[maybe_unused]] const Element<V>* firstEntries,
                                         const Element<V>* entries) {
  unroll<kParts<V>>([&](auto part) TFMGEN_INLINE {
    const SplitRow<V> columns = row.from(part * kLanesOf<V>);
    if constexpr (inTwoPasses(g)) {
      transformRowInTwoPasses<g>(columns, firstEntries, entries);
    } else {
      transformRow<g>(columns, entries);
    }
  });
}

template <int g, class V, class T>
[[gnu::noinline]] void mergeRows(const TfmgOddSplitMerge<T>& merge, T* out, const T* scratch, std::ptrdiff_t column) {
  constexpr std::ptrdiff_t entryStep = 2 * kLanes<T>;
  constexpr std::ptrdiff_t quarter = g / 4;
  const std::ptrdiff_t f = merge.factor;
  const bool packed = isPacked<V>(merge.subLength);
  const std::ptrdiff_t partStep = packed ? kGroupLanes<V> : f;
  SplitRow<V> row{.scratch = packed ? scratch : scratch + column,
                  .partStep = partStep,
                  .imaginary = g * partStep,
                  .up = out + column,
                  .down = out + column + 2 * f * merge.lastIndex,
                  .resultStep = 2 * f * merge.subLength,
                  .rowStride = f};
  const T* entries = merge.table;
  // The rotations in front of the first pass stand behind those between the passes.
  const T* firstEntries = merge.table + merge.halfRows * (3 * quarter * entryStep);
  for (std::int32_t i = 0; i < merge.halfRows; ++i) {
    transformParts<g>(row, firstEntries, entries);
    if constexpr (inTwoPasses(g)) {
      firstEntries += (quarter - 1) * entryStep;
      entries += 3 * quarter * entryStep;
    } else {
      entries += (g - 1) * entryStep;
    }
    row.scratch += packed ? 2 * g * kGroupLanes<V> : merge.stride2;
    row.up += 2 * f;
    row.down -= 2 * f;
  }
}

} // namespace

template <class V>
TfmStatus runSplitMerge(const TfmgOddSplitMerge<Element<V>>& merge, Element<V>* out, const Element<V>* scratch,
                        std::ptrdiff_t column) {
  switch (merge.kind) {
  case 1: mergeRows<2, V>(merge, out, scratch, column); break;
  case 2: mergeRows<4, V>(merge, out, scratch, column); break;
  case 3: mergeRows<8, V>(merge, out, scratch, column); break;
  case 4: mergeRows<16, V>(merge, out, scratch, column); break;
  case 5: mergeRows<32, V>(merge, out, scratch, column); break;
  default: return tfmStsBadArg;
  }
  return tfmStsOk;
}

template TfmStatus runSplitMerge<WidestVector<Tfm32f>>(const TfmgOddSplitMerge<Tfm32f>&, Tfm32f*, const Tfm32f*,
                                                       std::ptrdiff_t);
template TfmStatus runSplitMerge<WidestVector<Tfm64f>>(const TfmgOddSplitMerge<Tfm64f>&, Tfm64f*, const Tfm64f*,
                                                       std::ptrdiff_t);

} // namespace tfmgen::dct4
