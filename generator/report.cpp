#include "report.hpp"

#ifdef TFMGEN_WITH_ERRORS
#include "error/table.hpp"
#endif
#include "family/complex.hpp"
#include "family/real.hpp"

#include <iostream>
#include <stdexcept>

namespace tfmgen {

namespace {

void printCounts(const std::string& name, const graph::Counts& c) {
  std::cout << name << ',' << c.multiplications << ',' << c.additions << ',' << c.shuffles << ',' << c.rotations
            << '\n';
}

void printPacking(const std::string& name, const std::string& level, const pack::Packed& packed) {
  const pack::CodeCounts counts = pack::count(packed.code);
  std::cout << name << ',' << level << ',' << packed.lanes << ',' << counts.operations << ',' << counts.moves << ','
            << packed.longestPath << '\n';
}

} // namespace

void printCounts() {
  for (const auto& kernels : {family::complex32(Level::baseline), family::complex64(Level::baseline)}) {
    for (const print::ComplexKernel& k : kernels) {
      printCounts(print::kernelName(k), print::counts(k));
    }
  }
  for (const family::RealKernel& k : family::realKernels()) {
    printCounts(print::kernelName(k.transform, k.length), transform::count(k.kernel.body));
  }
}

// The room of error bounds needs a library that a mere build does without.
void printErrors() {
#ifdef TFMGEN_WITH_ERRORS
  std::cout << error::tableTitles() << '\n';
  for (const auto& kernels : {family::complex32(Level::baseline), family::complex64(Level::baseline)}) {
    for (const print::ComplexKernel& k : kernels) {
      std::cout << error::tableLine(k) << std::flush;
    }
  }
  for (const family::RealKernel& k : family::realKernels()) {
    std::cout << error::tableLines(k.kernel, k.transform, k.length) << std::flush;
  }
#else
  throw std::runtime_error("--errors: built without Eigen");
#endif
}

void printPacking() {
  for (const auto& [name, level] : kLevels) {
    for (const print::ComplexKernel& k : family::complex64(level)) {
      if (k.packed) {
        printPacking(print::kernelName(k), name, *k.packed);
      }
    }
    for (const family::RealKernel& k : family::realKernels()) {
      for (const print::RealEntry& entry : family::entries(k, level)) {
        if (entry.packed) {
          printPacking(print::entryName(k.transform, entry.format, k.length, entry.sampleBits), name, *entry.packed);
        }
      }
    }
  }
}

} // namespace tfmgen
