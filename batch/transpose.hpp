// Frames in memory to one register an element, a frame a lane, and back.
//
// An element is one lane, or a block of 16 bytes. A tile takes a few elements of as many frames as a register holds.
// Its rows are loaded by pieces, row r from frames r, r + columns, r + 2 * columns and so on, and transposed within the
// pieces. The last tile of a frame overlaps the one before: nothing outside a frame is touched, and an element that is
// moved twice is moved to the same place.
#pragma once

#include "kernel/access.hpp"

#include <cstddef>

namespace tfmgen::batch {

// Frame f of a group at first + f * distance.
template <class Element>
struct EvenFrames {
  Element* first;
  std::ptrdiff_t distance;

  TFMGEN_INLINE Element* operator()(int frame) const { return first + frame * distance; }
};

// Frames anywhere. One that stands there more than once is stored as often, with the same bits.
template <class Element, int count>
struct ListedFrames {
  Element* frames[count];

  TFMGEN_INLINE Element* operator()(int frame) const { return frames[frame]; }
};

// ---- Rows of a tile. `unit` is the lanes of an element.

// A register whose pieces of `columns` elements come from frames `frame`, frame + columns, ...
template <class V, int unit, int columns, class Frames>
TFMGEN_INLINE inline V loadPieces(const Frames& frames, int frame, int element) {
  if constexpr (kLanesOf<V> == unit * columns) {
    return loadUnaligned<V>(frames(frame) + unit * element);
  } else {
    using Half = Vector<Element<V>, sizeof(V) / 2>;
    return join(loadPieces<Half, unit, columns>(frames, frame, element),
                loadPieces<Half, unit, columns>(frames, frame + kLanesOf<Half> / unit, element));
  }
}

template <int unit, int columns, class V, class Frames>
TFMGEN_INLINE inline void storePieces(const Frames& frames, int frame, int element, V v) {
  if constexpr (kLanesOf<V> == unit * columns) {
    storeUnaligned(frames(frame) + unit * element, v);
  } else {
    storePieces<unit, columns>(frames, frame, element, lowHalf(v));
    storePieces<unit, columns>(frames, frame + kLanesOf<V> / 2 / unit, element, highHalf(v));
  }
}

// Tiles of two floats, which no piece of 16 bytes fits: frames 0, 1 of four in the first row, 2, 3 in the second.
template <class V, class Frames>
TFMGEN_INLINE inline V loadPairs(const Frames& frames, int frame, int element) {
  if constexpr (sizeof(V) == kBlockBytes) {
    return loadHalves(frames(frame) + element, frames(frame + 1) + element);
  } else {
    using Half = Vector<Element<V>, sizeof(V) / 2>;
    return join(loadPairs<Half>(frames, frame, element), loadPairs<Half>(frames, frame + kLanesOf<Half>, element));
  }
}

template <class V, class Frames>
TFMGEN_INLINE inline void storePairs(const Frames& frames, int frame, int element, V v) {
  if constexpr (sizeof(V) == kBlockBytes) {
    storeHalves(frames(frame) + element, frames(frame + 1) + element, v);
  } else {
    storePairs(frames, frame, element, lowHalf(v));
    storePairs(frames, frame + kLanesOf<V> / 2, element, highHalf(v));
  }
}

// The even or the odd lanes of every block of a, then of b.
template <int first, class V>
TFMGEN_INLINE inline V everyOther(V a, V b) {
  constexpr int lanes = kLanesOf<V>;
  constexpr int block = kLanes<Element<V>>;
  return withIndices<lanes>([&](auto... i) TFMGEN_INLINE {
    return shuffle<(i % block < block / 2 ? i / block * block + 2 * (i % block) + first
                                          : lanes + i / block * block + 2 * (i % block - block / 2) + first)...>(a, b);
  });
}

// ---- Tiles

template <int unit, class V, int columns>
TFMGEN_INLINE inline void transposeTile(V (&rows)[columns]) {
  if constexpr (unit == 1) {
    transpose(rows);
  } else {
    transposeBlocks<1>(rows);
  }
}

template <class V, int unit, int columns, class Frames>
TFMGEN_INLINE inline void loadTile(const Frames& frames, int element, V (&rows)[columns]) {
  if constexpr (unit * columns < kLanes<Element<V>>) {
    const V first = loadPairs<V>(frames, 0, element);
    const V second = loadPairs<V>(frames, 2, element);
    rows[0] = everyOther<0>(first, second);
    rows[1] = everyOther<1>(first, second);
  } else {
    unroll<columns>([&](auto row) TFMGEN_INLINE { rows[row] = loadPieces<V, unit, columns>(frames, row, element); });
    transposeTile<unit>(rows);
  }
}

template <class V, int unit, int columns, class Frames>
TFMGEN_INLINE inline void storeTile(const Frames& frames, int element, V (&rows)[columns]) {
  if constexpr (unit * columns < kLanes<Element<V>>) {
    storePairs(frames, 0, element, unpackLow(rows[0], rows[1]));
    storePairs(frames, 2, element, unpackHigh(rows[0], rows[1]));
  } else {
    transposeTile<unit>(rows);
    unroll<columns>([&](auto row) TFMGEN_INLINE { storePieces<unit, columns>(frames, row, element, rows[row]); });
  }
}

// What covers a rest of up to half a tile: narrower tiles, which move less, or a whole one that overlaps more.
enum class Rest { inNarrowTiles, inWholeTile };

// Calls tile(width, element) for tiles that cover elements `first` .. n - 1, widest ones first; n is at least the
// least width.
template <int width, int leastWidth, Rest rest, class Tile>
TFMGEN_INLINE inline void coverWithTiles(int first, int n, const Tile& tile) {
  for (; first + width <= n; first += width) {
    tile(Index<width>{}, first);
  }
  if (first == n) {
    return;
  }
  if constexpr (width == leastWidth) {
    tile(Index<width>{}, n - width);
  } else if (n >= width && (n - first > width / 2 || rest == Rest::inWholeTile)) {
    tile(Index<width>{}, n - width);
  } else {
    coverWithTiles<width / 2, leastWidth, rest>(first, n, tile);
  }
}

template <int widest, class V, int unit, Rest rest, class Tile>
TFMGEN_INLINE inline void coverFrame(int n, const Tile& tile) {
  constexpr int block = kLanes<Element<V>> / unit;
  if (block <= 2 || n >= block) {
    coverWithTiles<widest, block, rest>(0, n, tile);
  } else if constexpr (block > 2) {
    coverWithTiles<2, 2, rest>(0, n, tile);
  }
}

// Calls put(element, V) for elements 0 .. n - 1 of the frames.
template <class V, int unit, class Frames, class Put>
TFMGEN_INLINE inline void loadFrames(const Frames& frames, int n, const Put& put) {
  coverFrame<kLanesOf<V> / unit, V, unit, Rest::inNarrowTiles>(n, [&](auto columns, int element) TFMGEN_INLINE {
    V rows[columns];
    loadTile<V, unit>(frames, element, rows);
    unroll<columns>([&](auto row) TFMGEN_INLINE { put(element + row, rows[row]); });
  });
}

// Stores get(element) for elements 0 .. n - 1 to the frames.
template <class V, int unit, Rest rest = Rest::inNarrowTiles, class Frames, class Get>
TFMGEN_INLINE inline void storeFrames(const Frames& frames, int n, const Get& get) {
  coverFrame<kLanesOf<V> / unit, V, unit, rest>(n, [&](auto columns, int element) TFMGEN_INLINE {
    V rows[columns];
    unroll<columns>([&](auto row) TFMGEN_INLINE { rows[row] = get(element + row); });
    storeTile<V, unit>(frames, element, rows);
  });
}

} // namespace tfmgen::batch
