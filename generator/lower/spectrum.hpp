// Where the elements of a half spectrum lie in memory.
#pragma once

#include <vector>

namespace tfmgen::lower {

enum class Format {
  plain, // no spectrum: samples by their index
  ccs,   // pairs (re, im) of bins 0 .. n/2
  pack,  // in bin order, without the imaginary parts that are zero
  perm,  // as pack for odd n; for even n, bin n/2 comes behind bin 0
};

// The element that holds number i of R(0), R(1), I(1), R(2), I(2) and so on.
int elementOf(Format format, int i, int length);

// How many elements an array of n samples' spectrum has.
int elementCount(Format format, int length);

// The imaginary parts of bins 0 and n/2, where the format has a place for them.
std::vector<int> zeroElements(Format format, int length);

} // namespace tfmgen::lower
