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
    if constexpr (length >= kShortest && isInRegisters<bytes, transform, format, Real>(length)) {
      return InFrames<bytes, transform, storedAs(format, length), Real, length>::run;
    } else {
      return nullptr;
    }
  };
  return RoutineTable<FramesRoutine<Real>>{{routine(n)...}};
});

template <int bytes>
inline constexpr auto kInPieces = withIndices<kLongest + 1>([](auto... n) {
  const auto routine = [](auto length) -> PiecesRoutine* {
    if constexpr (isInPieces<bytes>(length)) {
      return InPieces<bytes, length>::run;
    } else {
      return nullptr;
    }
  };
  return RoutineTable<PiecesRoutine>{{routine(n)...}};
});

// ---- Groups

// Frames to a table of rows in memory, one an element, and back. `row` is the lanes of a row.
template <class V, int unit, int row, class Frames>
[[gnu::noinline]] inline void framesToTable(Frames frames, int length, Element<V>* table) {
  loadFrames<V, unit>(frames, length, [&](int element, V v) TFMGEN_INLINE { storeAligned(table + element * row, v); });
}

template <class V, int unit, int row, class Frames>
[[gnu::noinline]] inline void tableToFrames(const Element<V>* table, int length, Frames frames) {
  storeFrames<V, unit>(frames, length,
                       [&](int element) TFMGEN_INLINE { return loadAligned<V>(table + element * row); });
}

// Frames in one piece at 16 bytes: where a transposition costs more than the kernel gains, single calls are faster, as
// measured.
template <Transform transform, class Real>
constexpr bool isSlowInNarrowFrames(int n) {
  if (isComplex(transform)) {
    if (isInBlocks<transform, Real>) {
      return false;
    }
    constexpr int fast[] = {22, 23, 25, 26, 31, 34, 38, 47};
    for (const int length : fast) {
      if (n == length) {
        return false;
      }
    }
    return n > 17;
  }
  const bool isSlow = n == 20 || n == 24 || (transform == Transform::realForward && n == 32);
  return sizeof(Real) == sizeof(double) && isSlow;
}

inline constexpr std::ptrdiff_t kLine = 64;              // bytes of a cache line
inline constexpr std::ptrdiff_t kCollidingStride = 4096; // rows that far apart share one set of the first-level cache

// Bytes of every row that are copied at once where rows collide: many lines, so that a row is read as a stream, but so
// few that all rows together stay in the first-level cache.
inline constexpr std::ptrdiff_t kStripBytes = 512;

template <int bytes, Transform transform, class Real>
class Groups {
public:
  // Frames in one piece that have a routine of their own need to know nothing of what other paths ask.
  [[nodiscard]] TFMGEN_INLINE static std::int64_t transformAll(const Batch& batch) {
    const bool areFrames = pathOf(batch.src) == Path::frames && pathOf(batch.dst) == Path::frames;
    if (bytes == kBlockBytes && areFrames && isSlowInNarrowFrames<transform, Real>(batch.length)) {
      return 0;
    }
    if (auto* const routine = areFrames ? routineInFrames(batch) : nullptr) {
      const std::int64_t done = runInRegisters(batch, *routine);
      return done == batch.count ? done : done + Groups(batch).rest(done, areFrames);
    }
    const Groups groups(batch);
    const std::int64_t done = groups.run();
    return done + groups.rest(done, areFrames);
  }

private:
  // What is moved as one: a real sample, or both parts of a complex one, which are two lanes where they are doubles.
  static constexpr bool areBlocks = isInBlocks<transform, Real>;
  using Unit = std::conditional_t<areBlocks, Tfm64fc, std::conditional_t<isComplex(transform), double, Real>>;
  using Lane = std::conditional_t<isComplex(transform), double, Real>;
  using V = Vector<Lane, bytes>;
  static constexpr int kLanesOfUnit = areBlocks ? 2 : 1;
  static constexpr int kUnits = bytes / sizeof(Unit);                                   // of a register
  static constexpr int kFrames = (isComplex(transform) && !areBlocks ? 2 : 1) * kUnits; // of a group
  static constexpr int kStrip = kStripBytes / sizeof(Unit);
  static constexpr int kRows = kLongest + 2;
  static constexpr int kShortestStreamed = areBlocks && bytes < kLine ? 8 : 17; // as measured

  enum class Path { rows, frames, scattered };

  template <class Byte>
  TFMGEN_INLINE static Path pathOf(const Side<Byte>& s) {
    return s.distance == 1 ? Path::rows : s.step == 1 ? Path::frames : Path::scattered;
  }

  template <class Element>
  struct PathSide {
    Element* first;
    std::ptrdiff_t step;
    std::ptrdiff_t distance;
    int length; // elements of a frame
    Path path;
    bool collides; // rows lie so that the first-level cache holds few of them
  };

  template <class Element, class Byte>
  TFMGEN_INLINE static PathSide<Element> side(const Side<Byte>& s, int length) {
    const std::ptrdiff_t stride = inBytes(s.step);
    const bool isWorthACopy = bytes < kLine || length >= kShortestStreamed; // a line is loaded by one access
    const bool collides = s.distance == 1 && stride != 0 && stride % kCollidingStride == 0 && isWorthACopy;
    return {reinterpret_cast<Element*>(s.first), s.step, s.distance, length, pathOf(s), collides};
  }

  TFMGEN_INLINE explicit Groups(const Batch& batch)
      : batch_(batch), n_(batch.length), format_(batch.family->format),
        src_(side<const Unit>(batch.src, sourceLength(transform, format_, n_))),
        dst_(side<Unit>(batch.dst, destinationLength(transform, format_, n_))) {}

  [[nodiscard]] TFMGEN_INLINE static FramesRoutine<Real>* routineInFrames(const Batch& batch) {
    const int n = batch.length;
    if constexpr (transform == Transform::realForward || transform == Transform::realInverse) {
      const Format format = batch.family->format;
      return format == Format::ccs    ? kInFrames<bytes, transform, Format::ccs, Real>.of[n]
             : format == Format::pack ? kInFrames<bytes, transform, Format::pack, Real>.of[n]
                                      : kInFrames<bytes, transform, Format::perm, Real>.of[n];
    } else {
      return kInFrames<bytes, transform, Format::plain, Real>.of[n];
    }
  }

  [[nodiscard, gnu::noinline]] static std::int64_t runInRegisters(const Batch& batch, FramesRoutine<Real>& routine) {
    const auto* x = reinterpret_cast<const Unit*>(batch.src.first);
    auto* y = reinterpret_cast<Unit*>(batch.dst.first);
    const std::int64_t groups = batch.count / kFrames;
    for (std::int64_t group = 0; group < groups; ++group) {
      routine(samples(x), batch.src.distance, samples(y), batch.dst.distance, static_cast<Real>(batch.scale));
      x += kFrames * batch.src.distance;
      y += kFrames * batch.dst.distance;
    }
    return groups * kFrames;
  }

  [[nodiscard]] TFMGEN_INLINE std::int64_t run() const {
    const bool areRows = src_.path == Path::rows && dst_.path == Path::rows;
    if (areBlocks && !areRows && kInPieces<bytes>.of[n_] != nullptr) {
      return runInPieces();
    }
    if (src_.collides || dst_.collides) {
      return runInTables<kStrip>(0, n_ < kShortestStreamed ? kLine / sizeof(Unit) : kStrip);
    }
    return isDirect<kFrames>(src_) && isDirect<kFrames>(dst_) ? runInRows() : runInTables<kFrames>(0, kFrames);
  }

  [[nodiscard, gnu::noinline]] std::int64_t runInPieces() const {
    std::int64_t f = 0;
    if constexpr (areBlocks) {
      const Spread from{inBytes(src_.step), inBytes(src_.distance)};
      const Spread to{kIsBackward ? -inBytes(dst_.step) : inBytes(dst_.step), inBytes(dst_.distance)};
      for (; f + kFrames <= batch_.count; f += kFrames) {
        kInPieces<bytes>.of[n_](samples(src_.first + f * src_.distance), from, samples(dst_.first + f * dst_.distance),
                                to, others(inBytes(dst_.step)), batch_.scale);
      }
    }
    return f;
  }

  // A row of `row` frames for each element.
  template <int row>
  struct alignas(kLine) Table {
    Unit units[kRows * row];
  };

  // Whether kernels use rows where they are. A group of one frame is rows in any layout.
  template <int row, class Element>
  TFMGEN_INLINE static bool isDirect(const PathSide<Element>& side) {
    return row > kFrames ? side.path == Path::rows && !side.collides : side.path == Path::rows || kFrames == 1;
  }

  // Kernels on rows where they are.
  [[nodiscard, gnu::noinline]] std::int64_t runInRows() const {
    const RowsCall call = rowsCall(src_.step, dst_.step);
    const std::int64_t groups = batch_.count / kFrames;
    const Unit* x = src_.first;
    Unit* y = dst_.first;
    for (std::int64_t group = 0; group < groups; ++group) {
      transformRows(call, x, y);
      x += kFrames * src_.distance;
      y += kFrames * dst_.distance;
    }
    return groups * kFrames;
  }

  // Groups from `first` on, as many at once as `most` frames, at most a row of the table. They go through the table
  // where rows are not used in place; both sides may share it, since kernels load everything before they store.
  template <int row>
  [[nodiscard, gnu::noinline]] std::int64_t runInTables(std::int64_t first, int most) const {
    Table<row> table;
    const bool isDirectSource = isDirect<row>(src_);
    const bool isDirectDestination = isDirect<row>(dst_);
    const RowsCall call = rowsCall(isDirectSource ? src_.step : row, isDirectDestination ? dst_.step : row);
    std::int64_t f = first;
    for (std::int64_t left = batch_.count - f; left >= kFrames; left = batch_.count - f) {
      const int frames = left >= most ? most : static_cast<int>(left) / kFrames * kFrames;
      const Unit* const src = src_.first + f * src_.distance;
      Unit* const dst = dst_.first + f * dst_.distance;
      if (!isDirectSource) {
        fill<row>(src, frames, table.units);
      }
      for (int i = 0; i < frames; i += kFrames) {
        transformRows(call, (isDirectSource ? src : table.units) + i, (isDirectDestination ? dst : table.units) + i);
      }
      if (!isDirectDestination) {
        empty<row>(table.units, frames, dst);
      }
      f += frames;
    }
    return f;
  }

  // ---- Kernels on rows

  // In blocks, the inverse transform is the forward one with its results from 1 on in descending order.
  static constexpr Transform kKernel = areBlocks ? Transform::complexForward : transform;
  static constexpr bool kIsBackward = areBlocks && transform == Transform::complexInverse;

  [[nodiscard]] TFMGEN_INLINE std::ptrdiff_t others(std::ptrdiff_t step) const { return kIsBackward ? n_ * step : 0; }

  [[nodiscard]] TFMGEN_INLINE static std::ptrdiff_t inBytes(std::ptrdiff_t units) {
    return units * static_cast<std::ptrdiff_t>(sizeof(Unit));
  }

  // All of a call but the rows.
  struct RowsCall {
    RowsRoutine<Real>* routine;
    std::ptrdiff_t sx;
    std::ptrdiff_t sy;
    RowOffsets offsets;
    Real scale;
  };

  // Steps in units.
  [[nodiscard]] TFMGEN_INLINE RowsCall rowsCall(std::ptrdiff_t srcStep, std::ptrdiff_t dstStep) const {
    const std::ptrdiff_t sx = inBytes(srcStep);
    const std::ptrdiff_t sy = inBytes(dstStep);
    const bool isCcs = format_ == Format::ccs;
    const bool pairsAreEven = isCcs || storedAs(format_, n_) == Format::perm;
    const std::ptrdiff_t middle = isCcs ? n_ : pairsAreEven ? 1 : n_ - 1;
    const std::ptrdiff_t step = transform == Transform::realInverse ? sx : sy;
    const RowOffsets offsets{middle * step, isComplex(transform) ? others(sy) : pairsAreEven ? 0 : -step};
    return {kInRows<bytes, kKernel, Real>.of[n_], sx, kIsBackward ? -sy : sy, offsets, static_cast<Real>(batch_.scale)};
  }

  TFMGEN_INLINE void transformRows(const RowsCall& call, const Unit* x, Unit* y) const {
    call.routine(samples(x), call.sx, samples(y), call.sy, call.offsets, call.scale);
    clearZeros(y, call.sy / static_cast<std::ptrdiff_t>(sizeof(Unit)));
  }

  // The parts of a half spectrum that are zero by definition.
  TFMGEN_INLINE void clearZeros(Unit* y, std::ptrdiff_t step) const {
    if (transform == Transform::realForward && format_ == Format::ccs) {
      storeUnaligned(lanes(y + step), V{});
      if (n_ % 2 == 0) {
        storeUnaligned(lanes(y + (n_ + 1) * step), V{});
      }
    }
  }

  // ---- Between the caller's layout and a table

  // Frames from number `begin` on.
  template <class Element>
  TFMGEN_INLINE static auto evenFrames(Element* first, std::ptrdiff_t distance, int begin) {
    auto* const frame = lanes(first + begin * distance);
    return EvenFrames<std::remove_pointer_t<decltype(frame)>>{frame, kLanesOfUnit * distance};
  }

  template <int row>
  TFMGEN_INLINE void fill(const Unit* src, int frames, Unit* table) const {
    switch (src_.path) {
    case Path::rows:
      for (int e = 0; e < src_.length; ++e) {
        moveRow(src + e * src_.step, frames, table + e * row);
      }
      break;
    case Path::frames:
      for (int i = 0; i < frames; i += kUnits) {
        framesToTable<V, kLanesOfUnit, kLanesOfUnit * row>(evenFrames(src, src_.distance, i), src_.length,
                                                           lanes(table + i));
      }
      break;
    case Path::scattered:
      for (int e = 0; e < src_.length; ++e) {
        loadScattered(src + e * src_.step, frames, table + e * row);
      }
      break;
    }
  }

  template <int row>
  TFMGEN_INLINE void empty(const Unit* table, int frames, Unit* dst) const {
    switch (dst_.path) {
    case Path::rows:
      for (int e = 0; e < dst_.length; ++e) {
        moveRow(table + e * row, frames, dst + e * dst_.step);
      }
      break;
    case Path::frames:
      for (int i = 0; i < frames; i += kUnits) {
        tableToFrames<V, kLanesOfUnit, kLanesOfUnit * row>(lanes(table + i), dst_.length,
                                                           evenFrames(dst, dst_.distance, i));
      }
      break;
    case Path::scattered:
      for (int e = 0; e < dst_.length; ++e) {
        storeScattered(table + e * row, frames, dst + e * dst_.step);
      }
      break;
    }
  }

  // One element of frames anywhere. Blocks go by registers, as kernels will load and have stored them.
  TFMGEN_INLINE void loadScattered(const Unit* src, int frames, Unit* row) const {
    if constexpr (areBlocks) {
      for (int i = 0; i < frames; i += kUnits) {
        storeAligned(lanes(row + i), loadPieces<V, kLanesOfUnit, 1>(evenFrames(src, src_.distance, i), 0, 0));
      }
    } else {
      for (int i = 0; i < frames; ++i) {
        row[i] = loadElement(src + i * src_.distance);
      }
    }
  }

  TFMGEN_INLINE void storeScattered(const Unit* row, int frames, Unit* dst) const {
    if constexpr (areBlocks) {
      for (int i = 0; i < frames; i += kUnits) {
        storePieces<kLanesOfUnit, 1>(evenFrames(dst, dst_.distance, i), 0, 0, loadAligned<V>(lanes(row + i)));
      }
    } else {
      for (int i = 0; i < frames; ++i) {
        storeElement(dst + i * dst_.distance, row[i]);
      }
    }
  }

  TFMGEN_INLINE static void moveRow(const Unit* from, int frames, Unit* to) {
    for (int i = 0; i < frames; i += kUnits) {
      storeUnaligned(lanes(to + i), loadUnaligned<V>(lanes(from + i)));
    }
  }

  // ---- Frames that fill no group

  // A group may do frames that are done already once more, where their source is still there. Frames in one piece may
  // also stand in several lanes.
  [[nodiscard]] TFMGEN_INLINE std::int64_t rest(std::int64_t done, bool areFrames) const {
    const std::int64_t frames = batch_.count - done;
    const bool hasEarlier = !batch_.isInPlace && batch_.count >= kFrames;
    if (areFrames && frames <= 3 && n_ <= longestSingly(transform)) {
      return 0;
    }
    if (frames > kFrames / 2 && areFrames) {
      repeatLast(done, frames);
    } else if (frames > kFrames / 8 && hasEarlier && !areFrames) {
      static_cast<void>(runInTables<kFrames>(batch_.count - kFrames, kFrames));
    } else {
      return 0;
    }
    return frames;
  }

  [[gnu::noinline]] void repeatLast(std::int64_t first, std::int64_t frames) const {
    constexpr int row = kLanesOfUnit * kFrames;
    Table<kFrames> table;
    for (int i = 0; i < kFrames; i += kUnits) {
      framesToTable<V, kLanesOfUnit, row>(listed<const Lane>(src_, first, frames, i), src_.length,
                                          lanes(table.units + i));
    }
    transformRows(rowsCall(kFrames, kFrames), table.units, table.units);
    for (int i = 0; i < kFrames; i += kUnits) {
      tableToFrames<V, kLanesOfUnit, row>(lanes(table.units + i), dst_.length, listed<Lane>(dst_, first, frames, i));
    }
  }

  template <class Element, class Side>
  TFMGEN_INLINE static ListedFrames<Element, kUnits> listed(const Side& side, std::int64_t first, std::int64_t frames,
                                                            int begin) {
    ListedFrames<Element, kUnits> list;
    for (int i = 0; i < kUnits; ++i) {
      const std::int64_t frame = begin + i < frames ? begin + i : frames - 1;
      list.frames[i] = lanes(side.first + (first + frame) * side.distance);
    }
    return list;
  }

  TFMGEN_INLINE static const Real* samples(const Unit* units) { return reinterpret_cast<const Real*>(units); }
  TFMGEN_INLINE static Real* samples(Unit* units) { return reinterpret_cast<Real*>(units); }
  TFMGEN_INLINE static const Lane* lanes(const Unit* units) { return reinterpret_cast<const Lane*>(units); }
  TFMGEN_INLINE static Lane* lanes(Unit* units) { return reinterpret_cast<Lane*>(units); }

  const Batch& batch_;
  int n_;
  Format format_;
  PathSide<const Unit> src_;
  PathSide<Unit> dst_;
};

// ---- All families

template <int bytes>
std::int64_t transformGroups(const Batch& batch) {
  const auto run = [&]<Transform transform>() TFMGEN_INLINE {
    return batch.family->isDouble ? Groups<bytes, transform, Tfm64f>::transformAll(batch)
                                  : Groups<bytes, transform, Tfm32f>::transformAll(batch);
  };
  switch (batch.family->transform) {
  case Transform::complexForward: return run.template operator()<Transform::complexForward>();
  case Transform::complexInverse: return run.template operator()<Transform::complexInverse>();
  case Transform::realForward: return run.template operator()<Transform::realForward>();
  case Transform::realInverse: return run.template operator()<Transform::realInverse>();
  case Transform::hartley: break;
  }
  return run.template operator()<Transform::hartley>();
}

} // namespace tfmgen::batch
