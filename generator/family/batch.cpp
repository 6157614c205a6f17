#include "batch.hpp"

#include "complex.hpp"
#include "lengths.hpp"
#include "lower/per_lane.hpp"
#include "print/batch.hpp"
#include "real.hpp"

namespace tfmgen::family {

namespace {

print::BatchComplex32 perLane(int length, transform::RootSign sign) {
  const print::ComplexKernel single = complex32(length, sign);
  const auto* vectors = std::get_if<lower::Kernel>(&single.kernel);
  return {vectors != nullptr ? lower::perLane(*vectors, {4, 32}) : std::get<lower::RealKernel>(single.kernel),
          vectors == nullptr, sign, length, single.plan};
}

} // namespace

std::vector<print::Piece> batchComplex32(int registers) {
  std::vector<print::Piece> pieces;
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    for (int n = kFirstLength; n <= kLastLength; ++n) {
      pieces.push_back(print::batchPiece(perLane(n, sign), registers));
    }
  }
  return pieces;
}

std::vector<print::Piece> batchComplex64(int registers) {
  std::vector<print::Piece> pieces;
  for (int n = kFirstLength; n <= kLastLength; ++n) {
    const print::ComplexKernel single = complex64(n, transform::RootSign::forward);
    pieces.push_back(print::batchComplex64Piece(std::get<lower::Kernel>(single.kernel), n, single.plan, registers));
  }
  return pieces;
}

std::vector<print::Piece> batchReal(int registers) {
  std::vector<print::Piece> pieces;
  for (const RealKernel& k : realKernels()) {
    pieces.push_back(print::batchRealPiece(k.kernel, k.transform, k.length, k.plan, registers));
  }
  return pieces;
}

} // namespace tfmgen::family
