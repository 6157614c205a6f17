// What the moves of vectors make of numbers, for a test that is itself compiled for every processor.
#pragma once

namespace tfmgen::test {

inline constexpr int kMostLanes = 16;

template <class Real>
struct Moves {
  using Lanes = Real[kMostLanes];

  // Given
  Lanes a;
  Lanes b;
  Real memory[2 * kMostLanes + 1]; // starts at any address
  Real matrix[kMostLanes * kMostLanes];

  // Found
  Lanes broadcast;
  Lanes sum;
  Lanes flipped; // a with the signs of b changed
  Lanes reversed;
  Lanes everyOther; // of a, then of b
  Lanes unpackedLow;
  Lanes unpackedHigh;
  Lanes rejoined; // upper half of a, lower half of b
  Lanes rounded;  // doubles a to floats and back
  Real transposed[kMostLanes * kMostLanes];
  Real stored[2 * kMostLanes + 1]; // from element 1 on, what memory has there
  Lanes first[kMostLanes + 1];     // loads of the first lanes from memory, by their number
  Lanes kept[kMostLanes + 1];      // stores of the first lanes of a over b
  // 16 bytes only
  Lanes gathered;  // every second element of memory
  Lanes scattered; // b with every second element, from the last one down, from a
  Lanes halves;    // the first 8 bytes of b below those of a
  Lanes low;       // the first 8 bytes of a
  Lanes apart;     // a with its halves exchanged by their addresses
};

// Fills in what is found by vectors of `bytes` bytes; made for processors that have them.
template <int bytes>
struct Registers {
  static void move(Moves<float>& m);
  static void move(Moves<double>& m);
};

} // namespace tfmgen::test
