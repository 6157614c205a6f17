// Prints a line for every export: its name and a hash of all its results on fixed data, through every flag, at several
// alignments. Builds that keep the promise of equal bits print the same text.
#include "digest.hpp"

#include "families.hpp"
#include "processor_level.hpp"

#include <cstdio>

namespace tfmgen::test {
namespace {

template <class Real>
void printFamily(const Family& family) {
  Hash general;
  for (int n = kShortest; n <= kLongest; ++n) {
    const Entry entry{family, n};
    Hash fixed;
    for (const std::int32_t flag : kFlags) {
      addResults<Real>(fixed, entry.sourceReals(), entry.destinationReals(),
                       [&](const Real* src, Real* dst) { entry(src, dst, flag); });
      addResults<Real>(general, entry.sourceReals(), entry.destinationReals(),
                       [&](const Real* src, Real* dst) { family.general(src, dst, n, flag); });
    }
    print(entry.name(), fixed);
  }
  print(family.name, general);
}

} // namespace
} // namespace tfmgen::test

int main() {
  using namespace tfmgen::test;
  constexpr int kCannotRun = 77;
  if (const std::string level = loadedLevel(); !level.empty() && !processorHas(level)) {
    std::fprintf(stderr, "this processor has no %s\n", level.c_str());
    return kCannotRun;
  }
  for (const Family& family : families()) {
    family.realBytes == sizeof(float) ? printFamily<float>(family) : printFamily<double>(family);
  }
  printBatches();
  printWht();
  printDct4();
}
