// Complex transforms over registers of four lanes, real and imaginary parts apart.
//
// The lanes of a register hold the same position of up to four inner transforms; between the stages a transposition
// brings the bins of one inner transform into the lanes, so that the outer transforms lie side by side as well.
#pragma once

#include "lanes.hpp"

#include <functional>

namespace tfmgen::lower {

// The register with the samples of these indices in its lanes.
using Source = std::function<Complex(std::span<const int> indices)>;

// All bins by a plan of two factors.
std::vector<Packed> transformLanes(Graph& g, const plan::Plan& plan, const Source& source, transform::RootSign sign);

// Bins 1 .. p-1 of a prime length, and bin 0 by itself.
struct RaderBins {
  std::vector<Packed> bins;
  Ref first; // interleaved, (re, im, ..)
};

// `sample0` is interleaved, (re, im, 0, 0): its zeros are added to bins.
RaderBins transformRader(Graph& g, const plan::Rader& form, const Source& source, Ref sample0,
                         transform::RootSign sign);

// All bins by a convolution with a chirp. Lanes of `source` beyond the last sample are zero.
std::vector<Packed> transformChirp(Graph& g, const plan::Chirp& form, const Source& source, transform::RootSign sign);

} // namespace tfmgen::lower
