// Batches have the bits of single calls: all families, lengths, widths, layouts, tails and flags.
#include "cases.hpp"

namespace tfmgen::test {
namespace {

// Layouts of `count` frames in which no element belongs to two.
enum class Kind { frames, backwardFrames, rows, backwardRows, spaced, reversed, spacedRows, collidingRows };
constexpr int kKinds = 8;

TfmbLayout layoutOf(Kind kind, std::size_t length, std::int64_t count, std::size_t elementBytes, std::int64_t gap) {
  const auto elements = static_cast<std::int64_t>(length);
  switch (kind) {
  case Kind::frames: return {1, elements + gap};
  case Kind::backwardFrames: return {1, -elements - gap};
  case Kind::rows: return {count + gap, 1};
  case Kind::backwardRows: return {-count - gap, 1};
  case Kind::spaced: return {2, 2 * elements + gap};
  case Kind::reversed: return {-1, elements + gap};
  case Kind::spacedRows: return {3 * count + gap, 3};
  case Kind::collidingRows: break;
  }
  const auto collision = static_cast<std::int64_t>(4096 / elementBytes); // of rows that share a set of the cache
  return {(count + collision) / collision * collision, 1};
}

constexpr int kSourceKinds = kKinds + 5;

// For a source also layouts in which frames share elements.
TfmbLayout sourceLayout(int kind, std::size_t length, std::int64_t count, std::size_t elementBytes, std::int64_t gap) {
  constexpr TfmbLayout shared[] = {{1, 1}, {1, 0}, {0, 1}, {0, 0}, {2, 3}};
  return kind < kKinds ? layoutOf(static_cast<Kind>(kind), length, count, elementBytes, gap) : shared[kind - kKinds];
}

class Draw {
public:
  explicit Draw(std::uint64_t seed) : random_(seed) {}
  int below(int end) { return static_cast<int>(random_.bits() % static_cast<std::uint64_t>(end)); }

private:
  Random random_;
};

BatchCase drawCase(Draw& draw, const BatchFamily& family, int n, int kind, int frames) {
  const std::size_t elementBytes = family.single.elementBytes();
  const auto flag = kFlags[static_cast<std::size_t>(draw.below(4))];
  const auto numbers = static_cast<Numbers>(draw.below(5));
  const std::size_t destinationLength = family.destinationLength(n);
  if (kind == kSourceKinds) {
    const std::size_t room = std::max(family.sourceLength(n), destinationLength);
    const TfmbLayout both = layoutOf(static_cast<Kind>(draw.below(kKinds)), room, frames, elementBytes, draw.below(4));
    return {family, n, both, both, frames, flag, numbers, true};
  }
  const TfmbLayout src = sourceLayout(kind, family.sourceLength(n), frames, elementBytes, draw.below(4));
  const auto dst = static_cast<Kind>(draw.below(3) == 0 ? draw.below(kKinds) : kind % kKinds);
  return {family, n, src, layoutOf(dst, destinationLength, frames, elementBytes, draw.below(4)), frames, flag, numbers};
}

// Every length and width through every kind of layout, with a number of frames around those of one and two groups.
TEST(BatchBits, EveryLengthInEveryLayout) {
  Draw draw(1);
  for (const BatchFamily& family : batchFamilies()) {
    for (int n = kShortest; n <= kLongest; ++n) {
      for (const int bytes : widths()) {
        for (int kind = 0; kind <= kSourceKinds; ++kind) {
          for (int repetition = 0; repetition < 3; ++repetition) {
            const BatchCase c = drawCase(draw, family, n, kind, 1 + draw.below(bytes == 0 ? 4 : 40));
            ASSERT_TRUE(agrees(c, bytes, static_cast<std::uint64_t>(n)));
          }
        }
      }
    }
  }
}

// Every number of frames up to two groups of the widest registers and beyond, so that every tail is met.
TEST(BatchBits, EveryNumberOfFrames) {
  Draw draw(2);
  for (const BatchFamily& family : batchFamilies()) {
    for (const int n : {2, 3, 5, 16, 17, 64}) {
      for (const int bytes : widths()) {
        for (int frames = 1; frames <= 35; ++frames) {
          for (int kind = 0; kind <= kSourceKinds; ++kind) {
            ASSERT_TRUE(agrees(drawCase(draw, family, n, kind, frames), bytes, static_cast<std::uint64_t>(frames)));
          }
        }
      }
    }
  }
}

// Results under each flag, on each kind of numbers, in full groups of every width.
TEST(BatchBits, EveryFlagOnEveryKindOfNumbers) {
  for (const BatchFamily& family : batchFamilies()) {
    for (int n = kShortest; n <= kLongest; ++n) {
      for (const int bytes : widths()) {
        for (int numbers = 0; numbers < 5; ++numbers) {
          for (const std::int32_t flag : kFlags) {
            const auto in = static_cast<std::int64_t>(family.sourceLength(n));
            const BatchCase c{family, n, {1, in}, {16, 1}, 16, flag, static_cast<Numbers>(numbers)};
            ASSERT_TRUE(agrees(c, bytes, static_cast<std::uint64_t>(100 * n)));
          }
        }
      }
    }
  }
}

} // namespace
} // namespace tfmgen::test
