// Loads and stores of kernels with real and imaginary parts apart: four elements of the array, two to a register,
// become a register of real and one of imaginary parts, and the other way round.
#pragma once

#include "kernel.hpp"
#include "lanes.hpp"

namespace tfmgen::lower {

// Which elements one access takes.
enum class Grouping {
  pairs,   // two adjacent ones
  singles, // each by itself
};

class SplitLoads {
public:
  SplitLoads(Kernel& kernel, int length, Grouping grouping) : kernel_(kernel), length_(length), grouping_(grouping) {}

  // One to four elements in the lanes of one register. Lanes beyond three elements hold zero where the last is loaded
  // by itself.
  Complex lanes(std::span<const int> elements);
  // (re, im, 0, 0)
  Ref interleaved(int element) { return load({Access::Width::low, element}); }

private:
  // Two elements in a register, by the half that holds each.
  struct Pair {
    Ref value;
    int first;
    int second;
  };

  Pair pair(std::span<const int> elements);
  Ref load(const Access& from);
  Ref pairOf(int element); // the access that takes an element together with its neighbour

  Kernel& kernel_;
  int length_;
  Grouping grouping_;
};

class SplitStores {
public:
  SplitStores(Kernel& kernel, Grouping grouping) : kernel_(kernel), grouping_(grouping) {}

  void put(const Packed& bins);
  void put(Ref interleaved, const std::vector<int>& elements); // one or two
  // Scales and stores all elements 0 .. length-1. The pair that begins at `parted` is stored by its halves.
  void finish(int length, int parted);
  // The same where every register is a pair, in the order in which they were put.
  void finishAsPut();

private:
  struct Place {
    Ref value;
    int half;
  };
  struct Interleaved {
    Ref value;
    std::vector<int> elements;
  };

  void finishPairs(int length, int parted);

  Kernel& kernel_;
  Grouping grouping_;
  std::vector<Interleaved> registers_;
};

} // namespace tfmgen::lower
