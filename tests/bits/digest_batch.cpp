#include "digest.hpp"
#include "registry.hpp"

namespace tfmgen::test {
namespace {

struct Layouts {
  TfmbLayout src;
  TfmbLayout dst;
};

constexpr std::int64_t kFrames = 29; // full groups of every width, and a rest

template <class Real>
void printFamily(const BatchFamily& family) {
  const std::size_t reals = family.single.elementBytes() / sizeof(Real);
  Hash hash;
  for (int n = kShortest; n <= kLongest; ++n) {
    const std::size_t in = family.sourceLength(n);
    const std::size_t out = family.destinationLength(n);
    const TfmbLayout frames{1, static_cast<std::int64_t>(in)};
    const TfmbLayout results{1, static_cast<std::int64_t>(out)};
    const TfmbLayout rows{kFrames, 1};
    for (const Layouts& layouts : {Layouts{frames, results}, {frames, rows}, {rows, results}, {rows, rows}}) {
      for (const std::int32_t flag : kFlags) {
        addResults<Real>(hash, in * kFrames * reals, out * kFrames * reals, [&](const Real* src, Real* dst) {
          family.call(src, layouts.src, dst, layouts.dst, n, kFrames, flag);
        });
      }
    }
  }
  print(family.name, hash);
}

} // namespace

void printBatches() {
  for (const BatchFamily& family : batchFamilies()) {
    family.single.realBytes == sizeof(float) ? printFamily<float>(family) : printFamily<double>(family);
  }
}

} // namespace tfmgen::test
