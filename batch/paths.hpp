// From the layout of a batch to calls of compiled routines.
#pragma once

#include "batch.hpp"
#include "routines.hpp"
#include "transpose.hpp"

#include <type_traits>

namespace tfmgen::batch {

// ---- Tables of the routines by length

template <class Routine>
struct RoutineTable {
  Routine* of[kLongest + 1];
};

template <int bytes, Transform transform, class Real>
inline constexpr auto kInRows = withIndices<kLongest + 1>([](auto... n) {
  const auto routine = [](auto length) -> RowsRoutine<Real>* {
    if constexpr (length >= kShortest) {
      return InRows<bytes, transform, Real, length>::run;
    } else {
      return nullptr;
    }
  };
  return RoutineTable<RowsRoutine<Real>>{{routine(n)...}};
});

template <int bytes, Transform transform, Format format, class Real>
inline constexpr auto kInFrames = withIndices<kLongest + 1>([](auto... n) {
  const auto routine = [](auto length) -> FramesRoutine<Real>* {
    if constexpr (length >= kShortest && length <= longestInRegisters(format)) {
      return InFrames<bytes, transform, storedAs(format, length), Real, length>::run;
    } else {
      return nullptr;
    }
  };
  return RoutineTable<FramesRoutine<Real>>{{routine(n)...}};
});

// ---- A frame a lane

// Frames to a block of memory that holds `width` of each element in a row, and back.
template <class V, int width, class Frames>
[[gnu::noinline]] inline void framesToBlock(Frames frames, int length, Element<V>* block) {
  loadFrames<V>(frames, length, [&](int element, V v) TFMGEN_INLINE { storeAligned(block + element * width, v); });
}

template <class V, int width, class Frames>
[[gnu::noinline]] inline void blockToFrames(const Element<V>* block, int length, Frames frames) {
  storeFrames<V>(frames, length, [&](int element) TFMGEN_INLINE { return loadAligned<V>(block + element * width); });
}

// Complex 32-bit frames at 16 bytes: where a transposition costs more than the kernel gains, single calls are faster.
constexpr bool isSlowInNarrowFrames(int n) {
  constexpr int fast[] = {22, 23, 25, 26, 31, 34, 38, 47}; // as measured
  for (const int length : fast) {
    if (length == n) {
      return false;
    }
  }
  return n > 17;
}

inline constexpr std::ptrdiff_t kLine = 64;              // bytes of a cache line
inline constexpr std::ptrdiff_t kCollidingStride = 4096; // rows that far apart share one set of the first-level cache

// Bytes of every row that are copied at once where rows collide: whole lines, more than a register.
template <int bytes>
inline constexpr std::ptrdiff_t kStripBytes = bytes < kLine ? kLine : 2 * kLine;

template <int bytes>
TFMGEN_INLINE inline bool rowsCollide(std::ptrdiff_t stepBytes, int length) {
  constexpr int shortest = bytes < kLine ? 0 : 40; // a register that is a line itself needs no second look at it
  return stepBytes != 0 && stepBytes % kCollidingStride == 0 && length >= shortest;
}

template <int bytes, Transform transform, class Real>
class LaneGroups {
public:
  TFMGEN_INLINE explicit LaneGroups(const Batch& batch)
      : batch_(batch), n_(batch.length), format_(batch.family->format), src_(side<const Unit>(batch.src)),
        dst_(side<Unit>(batch.dst)) {}

  TFMGEN_INLINE std::int64_t run() const {
    const bool areFrames = src_.path == Path::frames && dst_.path == Path::frames;
    if (bytes == kBlockBytes && isComplex(transform) && areFrames && isSlowInNarrowFrames(n_)) {
      return 0;
    }
    std::int64_t done = 0;
    if (areFrames && n_ <= longestInRegisters(format_)) {
      done = runInRegisters();
    } else {
      if (src_.collides || dst_.collides) {
        done = runBlocks<kStrip>(0);
      }
      if (batch_.count - done >= kFrames) {
        done = runBlocks<kFrames>(done);
      }
    }
    return done + rest(done, areFrames);
  }

private:
  // What is moved as one: a real sample, or both parts of a complex one.
  using Unit = std::conditional_t<isComplex(transform), double, Real>;
  using V = Vector<Unit, bytes>;
  static constexpr int kFrames = (isComplex(transform) ? 2 : 1) * kLanesOf<V>; // of a group
  static constexpr int kStrip = kStripBytes<bytes> / sizeof(Unit);
  static constexpr int kRows = kLongest + 2;

  enum class Path { rows, frames, scattered };

  template <class Element>
  struct PathSide {
    Element* first;
    std::ptrdiff_t step;
    std::ptrdiff_t distance;
    int length;
    Path path;
    bool collides; // rows lie so that the first-level cache holds few of them
  };

  template <class Element, class Byte>
  TFMGEN_INLINE static PathSide<Element> side(const Side<Byte>& s) {
    const Path path = s.distance == 1 ? Path::rows : s.step == 1 ? Path::frames : Path::scattered;
    const bool collides = kStrip > kFrames && path == Path::rows &&
                          rowsCollide<bytes>(s.step * static_cast<std::ptrdiff_t>(sizeof(Unit)), s.length);
    return {reinterpret_cast<Element*>(s.first), s.step, s.distance, s.length, path, collides};
  }

  TFMGEN_INLINE FramesRoutine<Real>* routineInFrames() const {
    if constexpr (transform == Transform::realForward || transform == Transform::realInverse) {
      return format_ == Format::ccs    ? kInFrames<bytes, transform, Format::ccs, Real>.of[n_]
             : format_ == Format::pack ? kInFrames<bytes, transform, Format::pack, Real>.of[n_]
                                       : kInFrames<bytes, transform, Format::perm, Real>.of[n_];
    } else {
      return kInFrames<bytes, transform, Format::plain, Real>.of[n_];
    }
  }

  [[gnu::noinline]] std::int64_t runInRegisters() const {
    auto* const routine = routineInFrames();
    std::int64_t f = 0;
    for (; f + kFrames <= batch_.count; f += kFrames) {
      routine(samples(src_.first + f * src_.distance), src_.distance, samples(dst_.first + f * dst_.distance),
              dst_.distance, static_cast<Real>(batch_.scale));
    }
    return f;
  }

  // Elements of a group of frames, `width` to a row.
  template <int width>
  struct alignas(kLine) Space {
    Unit units[kRows * width];
  };

  template <int width>
  [[gnu::noinline]] std::int64_t runBlocks(std::int64_t first) const {
    Space<width> in;
    Space<width> out;
    for (int lane = 0; lane < width; lane += kFrames) {
      clearZeros(out.units + lane, width);
    }
    std::int64_t f = first;
    for (; f + width <= batch_.count; f += width) {
      group<width>(f, in.units, out.units);
    }
    return f;
  }

  template <int width>
  TFMGEN_INLINE void group(std::int64_t f, Unit* in, Unit* out) const {
    const bool isDirectSource = src_.path == Path::rows && !(width > kFrames && src_.collides);
    const bool isDirectDestination = dst_.path == Path::rows && !(width > kFrames && dst_.collides);
    const Unit* const src = src_.first + f * src_.distance;
    Unit* const dst = dst_.first + f * dst_.distance;
    if (!isDirectSource) {
      fill<width>(src, in);
    }
    const Unit* const x = isDirectSource ? src : in;
    const std::ptrdiff_t sx = isDirectSource ? src_.step : width;
    Unit* const y = isDirectDestination ? dst : out;
    const std::ptrdiff_t sy = isDirectDestination ? dst_.step : width;
    for (int lane = 0; lane < width; lane += kFrames) {
      transformRows(x + lane, sx, y + lane, sy);
      if (isDirectDestination) {
        clearZeros(y + lane, sy);
      }
    }
    if (!isDirectDestination) {
      empty<width>(out, dst);
    }
  }

  TFMGEN_INLINE void transformRows(const Unit* x, std::ptrdiff_t sx, Unit* y, std::ptrdiff_t sy) const {
    const std::ptrdiff_t step = transform == Transform::realInverse ? sx : sy;
    const bool isCcs = format_ == Format::ccs;
    const bool pairsAreEven = isCcs || storedAs(format_, n_) == Format::perm;
    const std::ptrdiff_t middle = isCcs ? n_ : pairsAreEven ? 1 : n_ - 1;
    kInRows<bytes, transform, Real>.of[n_](samples(x), sx, samples(y), sy, {middle * step, pairsAreEven ? 0 : -step},
                                           static_cast<Real>(batch_.scale));
  }

  // The parts of a half spectrum that are zero by definition.
  TFMGEN_INLINE void clearZeros(Unit* y, std::ptrdiff_t step) const {
    if (transform == Transform::realForward && format_ == Format::ccs) {
      storeUnaligned(y + step, V{});
      if (n_ % 2 == 0) {
        storeUnaligned(y + (n_ + 1) * step, V{});
      }
    }
  }

  // ---- Between the caller's layout and a block

  template <int width>
  TFMGEN_INLINE void fill(const Unit* src, Unit* block) const {
    switch (src_.path) {
    case Path::rows:
      for (int e = 0; e < src_.length; ++e) {
        moveRow<width>(src + e * src_.step, block + e * width);
      }
      break;
    case Path::frames:
      for (int lane = 0; lane < width; lane += kLanesOf<V>) {
        framesToBlock<V, width>(EvenFrames<const Unit>{src + lane * src_.distance, src_.distance}, src_.length,
                                block + lane);
      }
      break;
    case Path::scattered:
      for (int e = 0; e < src_.length; ++e) {
        for (int lane = 0; lane < width; ++lane) {
          block[e * width + lane] = loadElement(src + e * src_.step + lane * src_.distance);
        }
      }
      break;
    }
  }

  template <int width>
  TFMGEN_INLINE void empty(const Unit* block, Unit* dst) const {
    switch (dst_.path) {
    case Path::rows:
      for (int e = 0; e < dst_.length; ++e) {
        moveRow<width>(block + e * width, dst + e * dst_.step);
      }
      break;
    case Path::frames:
      for (int lane = 0; lane < width; lane += kLanesOf<V>) {
        blockToFrames<V, width>(block + lane, dst_.length, EvenFrames<Unit>{dst + lane * dst_.distance, dst_.distance});
      }
      break;
    case Path::scattered:
      for (int e = 0; e < dst_.length; ++e) {
        for (int lane = 0; lane < width; ++lane) {
          storeElement(dst + e * dst_.step + lane * dst_.distance, block[e * width + lane]);
        }
      }
      break;
    }
  }

  template <int width>
  TFMGEN_INLINE static void moveRow(const Unit* from, Unit* to) {
    unroll<width / kLanesOf<V>>(
        [&](auto i) TFMGEN_INLINE { storeUnaligned(to + i * kLanesOf<V>, loadUnaligned<V>(from + i * kLanesOf<V>)); });
  }

  // ---- Frames that fill no group

  // A group may do frames that are done already once more, where their source is still there. Frames in one piece may
  // also stand in several lanes.
  TFMGEN_INLINE std::int64_t rest(std::int64_t done, bool areFrames) const {
    const std::int64_t frames = batch_.count - done;
    const bool hasEarlier = !batch_.isInPlace && batch_.count >= kFrames;
    if (frames > kFrames / 2 && areFrames) {
      repeatLast(done, frames);
    } else if (frames > kFrames / 8 && hasEarlier && !areFrames) {
      runBlocks<kFrames>(batch_.count - kFrames);
    } else {
      return 0;
    }
    return frames;
  }

  [[gnu::noinline]] void repeatLast(std::int64_t first, std::int64_t frames) const {
    Space<kFrames> in;
    Space<kFrames> out;
    clearZeros(out.units, kFrames);
    for (int lane = 0; lane < kFrames; lane += kLanesOf<V>) {
      framesToBlock<V, kFrames>(listed(src_, first, frames, lane), src_.length, in.units + lane);
    }
    transformRows(in.units, kFrames, out.units, kFrames);
    for (int lane = 0; lane < kFrames; lane += kLanesOf<V>) {
      blockToFrames<V, kFrames>(out.units + lane, dst_.length, listed(dst_, first, frames, lane));
    }
  }

  template <class Element>
  TFMGEN_INLINE static ListedFrames<Element, kLanesOf<V>> listed(const PathSide<Element>& side, std::int64_t first,
                                                                 std::int64_t frames, int lane) {
    ListedFrames<Element, kLanesOf<V>> list;
    for (int i = 0; i < kLanesOf<V>; ++i) {
      const std::int64_t frame = lane + i < frames ? lane + i : frames - 1;
      list.frames[i] = side.first + (first + frame) * side.distance;
    }
    return list;
  }

  TFMGEN_INLINE static const Real* samples(const Unit* units) { return reinterpret_cast<const Real*>(units); }
  TFMGEN_INLINE static Real* samples(Unit* units) { return reinterpret_cast<Real*>(units); }

  const Batch& batch_;
  int n_;
  Format format_;
  PathSide<const Unit> src_;
  PathSide<Unit> dst_;
};

// ---- A frame in every 16 bytes

template <int bytes>
struct BlockRoutines {
  decltype(&InBlocks<bytes, kShortest>::run) run;
  decltype(&InBlocks<bytes, kShortest>::runRows) runRows;
};

template <int bytes>
struct BlockRoutineTable {
  BlockRoutines<bytes> of[kLongest + 1];
};

template <int bytes>
inline constexpr auto kInBlocks = withIndices<kLongest + 1>([](auto... n) {
  const auto routines = [](auto length) -> BlockRoutines<bytes> {
    if constexpr (length >= kShortest) {
      return {InBlocks<bytes, length>::run, InBlocks<bytes, length>::runRows};
    } else {
      return {nullptr, nullptr};
    }
  };
  return BlockRoutineTable<bytes>{{routines(n)...}};
});

// The inverse transform is the forward one with its results in the order 0, n-1, n-2 .. 1: the operations of a kernel
// are the same, and only the last of them, a sum or a difference, tells the two apart.
template <int bytes>
class BlockGroups {
public:
  TFMGEN_INLINE explicit BlockGroups(const Batch& batch)
      : batch_(batch), routines_(kInBlocks<bytes>.of[batch.length]),
        src_(reinterpret_cast<const Tfm64f*>(batch.src.first)), dst_(reinterpret_cast<Tfm64f*>(batch.dst.first)),
        from_{2 * batch.src.step, 2 * batch.src.distance}, to_{2 * batch.dst.step, 2 * batch.dst.distance} {}

  TFMGEN_INLINE std::int64_t run() const {
    const bool areRows = batch_.src.distance == 1 && batch_.dst.distance == 1;
    std::int64_t f = areRows && (collides(from_) || collides(to_)) ? runStrips() : 0;
    for (; f + kFrames <= batch_.count; f += kFrames) {
      if (areRows) {
        transformRows(src_ + 2 * f, from_.step, dst_ + 2 * f, to_.step);
      } else {
        const BlockLayout to{results(to_.step), to_.distance};
        routines_.run(src_ + f * from_.distance, from_, dst_ + f * to_.distance, to, others(to_.step), batch_.scale);
      }
    }
    return f;
  }

private:
  static constexpr int kFrames = bytes / kBlockBytes; // of a group
  static constexpr int kStrip = kStripBytes<bytes> / kBlockBytes;
  static constexpr std::ptrdiff_t kRow = 2 * kStrip; // doubles of a strip in a row

  // The inverse transform is the forward one with its results in the order 0, n-1, n-2 .. 1: the operations of a kernel
  // are the same, and only the last of them, a sum or a difference, tells the two apart.
  [[nodiscard]] TFMGEN_INLINE bool isInverse() const { return batch_.family->transform == Transform::complexInverse; }
  [[nodiscard]] TFMGEN_INLINE std::ptrdiff_t results(std::ptrdiff_t step) const { return isInverse() ? -step : step; }
  [[nodiscard]] TFMGEN_INLINE std::ptrdiff_t others(std::ptrdiff_t step) const {
    return isInverse() ? batch_.length * step : 0;
  }

  [[nodiscard]] TFMGEN_INLINE bool collides(const BlockLayout& rows) const {
    return rowsCollide<bytes>(rows.step * static_cast<std::ptrdiff_t>(sizeof(Tfm64f)), batch_.length);
  }

  TFMGEN_INLINE void transformRows(const Tfm64f* x, std::ptrdiff_t sx, Tfm64f* y, std::ptrdiff_t sy) const {
    routines_.runRows(x, sx, y, results(sy), others(sy), batch_.scale);
  }

  [[gnu::noinline]] std::int64_t runStrips() const {
    alignas(kLine) Tfm64f in[kLongest * kRow];
    alignas(kLine) Tfm64f out[kLongest * kRow];
    std::int64_t f = 0;
    for (; f + kStrip <= batch_.count; f += kStrip) {
      const Tfm64f* const src = src_ + 2 * f;
      Tfm64f* const dst = dst_ + 2 * f;
      moveRows(src, from_.step, in, kRow);
      for (int i = 0; i < kRow; i += 2 * kFrames) {
        transformRows(in + i, kRow, out + i, kRow);
      }
      moveRows(out, kRow, dst, to_.step);
    }
    return f;
  }

  TFMGEN_INLINE void moveRows(const Tfm64f* from, std::ptrdiff_t fromStep, Tfm64f* to, std::ptrdiff_t toStep) const {
    using V = Vector<Tfm64f, bytes>;
    for (int e = 0; e < batch_.length; ++e) {
      unroll<kRow / kLanesOf<V>>([&](auto i) TFMGEN_INLINE {
        const V v = loadUnaligned<V>(from + e * fromStep + i * kLanesOf<V>);
        storeUnaligned(to + e * toStep + i * kLanesOf<V>, v);
      });
    }
  }

  const Batch& batch_;
  const BlockRoutines<bytes>& routines_;
  const Tfm64f* src_;
  Tfm64f* dst_;
  BlockLayout from_;
  BlockLayout to_;
};

// ---- All families

template <int bytes, Transform transform>
TFMGEN_INLINE inline std::int64_t transformLaneGroups(const Batch& batch) {
  if constexpr (isComplex(transform)) {
    return LaneGroups<bytes, transform, Tfm32f>(batch).run();
  } else {
    return batch.family->elementBytes == sizeof(Tfm32f) ? LaneGroups<bytes, transform, Tfm32f>(batch).run()
                                                        : LaneGroups<bytes, transform, Tfm64f>(batch).run();
  }
}

template <int bytes>
std::int64_t transformGroups(const Batch& batch) {
  switch (batch.family->transform) {
  case Transform::complexForward:
  case Transform::complexInverse:
    if (batch.family->elementBytes == sizeof(Tfm64fc)) {
      return BlockGroups<bytes>(batch).run();
    }
    return batch.family->transform == Transform::complexForward
               ? transformLaneGroups<bytes, Transform::complexForward>(batch)
               : transformLaneGroups<bytes, Transform::complexInverse>(batch);
  case Transform::realForward: return transformLaneGroups<bytes, Transform::realForward>(batch);
  case Transform::realInverse: return transformLaneGroups<bytes, Transform::realInverse>(batch);
  case Transform::hartley: break;
  }
  return transformLaneGroups<bytes, Transform::hartley>(batch);
}

} // namespace tfmgen::batch
