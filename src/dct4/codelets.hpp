// Straight-line DCT-IV of the shortest lengths: everything is read before anything is written, so that the arrays may
// be the same.
#pragma once

#include "tfmgen.h"

namespace tfmgen::dct4 {

// N samples each; no alignment is needed. Always tfmStsOk, so that the driver can hand over to it.
template <class T, int N>
TfmStatus codelet(const T* src, T* dst);

} // namespace tfmgen::dct4
