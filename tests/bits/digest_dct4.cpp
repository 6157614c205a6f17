#include "dct4.hpp"
#include "digest.hpp"

namespace tfmgen::test {
namespace {

// A plan is full of addresses, so that what it computes stands for the functions that make it.
template <class Real>
void addPlan(Hash& hash, std::int32_t length, TfmgDCT4Plan* plan) {
  const auto reals = (static_cast<std::size_t>(length) + 1) / 2 * 2; // an odd length touches one real more
  addResults<Real>(hash, reals, reals, [&](const Real* src, Real* dst) { Dct4<Real>::run(src, dst, plan); });
}

template <class Real>
void printType() {
  Hash sizes;
  Hash inBuffer;
  Hash allocated;
  Hash freed;
  for (const std::int32_t length : {2, 4, 8, 16, 32, 33, 64, 128, 256, 512, 1024, 2048, 4096, 8192}) {
    std::int32_t size = 0;
    Dct4<Real>::getSize(length, &size);
    sizes.add(&size, sizeof size);

    AlignedBytes buffer(static_cast<std::size_t>(size));
    TfmgDCT4Plan* plan = nullptr;
    if (Dct4<Real>::init(&plan, length, buffer.data()) == tfmStsOk) {
      addPlan<Real>(inBuffer, length, plan);
    }
    if (Dct4<Real>::initAlloc(&plan, length) == tfmStsOk) {
      addPlan<Real>(allocated, length, plan);
      const TfmStatus status = Dct4<Real>::free(plan);
      freed.add(&status, sizeof status);
    }
  }
  const std::string suffix = Dct4<Real>::suffix;
  print("tfmgDCT4GetSize" + suffix, sizes);
  print("tfmgDCT4Init" + suffix, inBuffer);
  print("tfmgDCT4InitAlloc" + suffix, allocated);
  print("tfmgDCT4" + suffix, allocated);
  print("tfmgDCT4Free" + suffix, freed);
}

} // namespace

void printDct4() {
  printType<float>();
  printType<double>();
}

} // namespace tfmgen::test
