// Every sine and cosine is computed by itself, in the precision of the samples: no recurrence, no later correction.
//
// The C library's functions are called by their C names. This file is compiled without the compiler's knowledge of
// them, since it would join the sine and the cosine of one angle into a call of another function.
#include "tables.hpp"

#include "factor.hpp"
#include "kernel/vector.hpp"
#include "merge_order.hpp"

#include <cmath>
#include <numbers>

namespace tfmgen::dct4 {
namespace {

// pi times a fraction: formed in double precision and rounded to the sample type.
template <class T>
T angleOf(T fraction) {
  return static_cast<T>(static_cast<double>(fraction) * std::numbers::pi);
}

Tfm32f tfmgCosPi(Tfm32f fraction) {
  return ::cosf(angleOf(fraction));
}
Tfm64f tfmgCosPi(Tfm64f fraction) {
  return ::cos(angleOf(fraction));
}
Tfm32f tfmgSinPi(Tfm32f fraction) {
  return ::sinf(angleOf(fraction));
}
Tfm64f tfmgSinPi(Tfm64f fraction) {
  return ::sin(angleOf(fraction));
}

// cos (even column) or sin (odd column) of pi (2a+1)(2b+1) / 4N at row a and column 2b or 2b+1.
template <class T>
T twiddleValue(const TfmgDCT4TwiddleSource<T>* source, std::int32_t row, std::int32_t column) {
  const std::int32_t index = row * source->rowStride + column;
  const std::int32_t a = index / 2 / source->factor;
  const std::int32_t b = index / 2 % source->factor;
  const std::int32_t numerator = 2 * (2 * a + 1) * (2 * b + 1);
  const T fraction = static_cast<T>(numerator) / static_cast<T>(source->eightLength);
  return index % 2 == 0 ? tfmgCosPi(fraction) : tfmgSinPi(fraction);
}

template <class T>
T laneValue(const TfmgDCT4LaneSource<T>* source, std::int32_t block, std::int32_t lane, std::int32_t column) {
  return source->source->head.value(source->source, block * kLanes<T> + lane, column);
}

// (2i+1) / 2r, the fraction of pi that row i of a split has in its subsequences of length r.
template <class T>
T angleValue(const TfmgOddAngleSource<T>* source, std::int32_t row) {
  const std::int32_t subLength = source->splitLength / source->subFactor;
  return (static_cast<T>(row) + static_cast<T>(0.5)) / static_cast<T>(subLength);
}

void releaseNothing(TfmgPlanItem* /*source*/) {}

// Writes a split table from front to back, every value repeated in all lanes.
template <class T>
class SplitTableWriter {
public:
  explicit SplitTableWriter(T* table) : next_(table) {}

  void pair(T fraction) {
    vector(tfmgCosPi(fraction));
    vector(tfmgSinPi(fraction));
  }

private:
  void vector(T value) {
    for (std::int32_t lane = 0; lane < kLanes<T>; ++lane) {
      *next_++ = value;
    }
  }

  T* next_;
};

// The rotations of one row in front of a transform of length g: fraction x of the row times 2k/g.
template <class T>
void writeRow(SplitTableWriter<T>& writer, std::int32_t g, T x) {
  for (std::int32_t k = 1; k < g; ++k) {
    writer.pair(x * (static_cast<T>(2 * k) / static_cast<T>(g)));
  }
}

// A transform of length 4 `sets` in two passes. The rotations between the passes come first in the table: three for
// each of the `sets` results v of the first pass. Those in front of the first pass follow.
template <class T>
void writeTwoPasses(SplitTableWriter<T>& writer, const TfmgOddSplitMerge<T>* merge, std::int32_t sets) {
  const auto value = [merge](std::int32_t row) { return merge->source->head.value(merge->source, row); };
  for (std::int32_t row = 0; row < merge->halfRows; ++row) {
    for (std::int32_t v = 0; v < sets; ++v) {
      const double x = static_cast<double>(value(row) + static_cast<T>(v)) / sets;
      for (std::int32_t k = 1; k <= 3; ++k) {
        writer.pair(static_cast<T>(x * (0.5 * k)));
      }
    }
  }
  for (std::int32_t row = 0; row < merge->halfRows; ++row) {
    writeRow(writer, sets, value(row));
  }
}

} // namespace

template <class T>
void fillTwiddleSource(TfmgDCT4TwiddleSource<T>* source, TfmgArena* arena, std::int32_t length, std::int32_t factor) {
  fillItem(source, arena, releaseNothing);
  source->head.value = twiddleValue<T>;
  source->twoFactor = 2 * factor;
  source->eightLength = static_cast<std::int32_t>(8U * static_cast<std::uint32_t>(length));
  source->rows = length / (2 * factor);
  source->factor = factor;
  source->rowStride = 2 * factor;
}

template <class T>
void fillLaneSource(TfmgDCT4LaneSource<T>* source, TfmgArena* arena, const TfmgDCT4TwiddleSource<T>* twiddles,
                    std::int32_t blocks) {
  fillItem(source, arena, releaseNothing);
  source->head.value = laneValue<T>;
  source->twoFactor = twiddles->twoFactor;
  source->blocks = blocks;
  source->source = twiddles;
}

template <class T>
void fillAngleSource(TfmgOddAngleSource<T>* source, TfmgArena* arena, std::int32_t splitLength,
                     std::int32_t subFactor) {
  fillItem(source, arena, releaseNothing);
  source->head.value = angleValue<T>;
  source->splitLength = splitLength;
  source->subFactor = subFactor;
}

template <class T>
void makeMergeTable(TfmgDCT4MergeLoop<T>* loop) {
  loop->table = takeSamples<T>(loop->head.arena, vectorBytes(loop->blocks, loop->twoFactor));
  T* vector = loop->table;
  for (std::int32_t block = 0; block < loop->blocks; ++block) {
    for (std::int32_t position = 0; position < loop->factor; ++position) {
      const std::int32_t column = 2 * mergeColumn(loop->factor, position);
      for (const std::int32_t part : {column, column + 1}) {
        for (std::int32_t lane = kLanes<T> - 1; lane >= 0; --lane) {
          vector[lane] = loop->source->head.value(loop->source, block, lane, part);
        }
        vector += kLanes<T>;
      }
    }
  }
}

template <class T>
void makeSplitTable(TfmgOddSplitMerge<T>* merge) {
  const std::int32_t g = merge->subFactor;
  merge->table = takeSamples<T>(merge->head.arena, vectorBytes(merge->halfRows, 2 * g - 2));
  SplitTableWriter<T> writer(merge->table);
  if (g > 8) {
    writeTwoPasses(writer, merge, g / 4);
    return;
  }
  for (std::int32_t row = 0; row < merge->halfRows; ++row) {
    writeRow(writer, g, merge->source->head.value(merge->source, row));
  }
}

#define TFMGEN_INSTANTIATE(T)                                                                                          \
  template void fillTwiddleSource(TfmgDCT4TwiddleSource<T>*, TfmgArena*, std::int32_t, std::int32_t);                  \
  template void fillLaneSource(TfmgDCT4LaneSource<T>*, TfmgArena*, const TfmgDCT4TwiddleSource<T>*, std::int32_t);     \
  template void fillAngleSource(TfmgOddAngleSource<T>*, TfmgArena*, std::int32_t, std::int32_t);                       \
  template void makeMergeTable(TfmgDCT4MergeLoop<T>*);                                                                 \
  template void makeSplitTable(TfmgOddSplitMerge<T>*);
TFMGEN_INSTANTIATE(Tfm32f)
TFMGEN_INSTANTIATE(Tfm64f)
#undef TFMGEN_INSTANTIATE

} // namespace tfmgen::dct4
