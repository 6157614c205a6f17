// A registry of every exported DFT and Hartley entry, made from the public header's list of lengths, so that a test
// says once what holds for all of them.
#pragma once

#include "tfmgen.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tfmgen::test {

inline constexpr int kShortest = 2;
inline constexpr int kLongest = 64;
inline constexpr std::array<std::int32_t, 4> kFlags = {TFM_DIV_FWD_BY_N, TFM_DIV_INV_BY_N, TFM_DIV_BY_SQRTN,
                                                       TFM_NO_DIV};

enum class Kind { complexForward, complexInverse, realForward, realInverse, hartley };

// Where the half spectrum of a real signal lies; `plain` for families without one.
enum class Format { plain, ccs, pack, perm };

// One transform in one sample type at all lengths. Arrays are untyped, so that they may stand at any address; their
// unit is the real number of the sample type, of which a complex element has two.
struct Family {
  using Call = TfmStatus (*)(const void* src, void* dst, std::int32_t flag);
  using GeneralCall = TfmStatus (*)(const void* src, void* dst, std::int32_t len, std::int32_t flag);

  std::string name; // the exported name of the general entry
  Kind kind;
  Format format;
  std::size_t realBytes;
  GeneralCall general;
  std::array<Call, kLongest - kShortest + 1> calls;

  [[nodiscard]] bool isComplex() const { return kind == Kind::complexForward || kind == Kind::complexInverse; }
  [[nodiscard]] std::size_t elementBytes() const { return isComplex() ? 2 * realBytes : realBytes; }
  // Whether `flag` divides at all.
  [[nodiscard]] bool divides(std::int32_t flag) const;
  // Whether every output under a dividing flag is the rounded product of the output under TFM_NO_DIV and the factor.
  // The exception is forward real kernels of 32-bit samples that end in a product by a constant: that assignment is in
  // double, takes the factor in and is rounded once.
  [[nodiscard]] bool scalesByProduct(int n) const;
};

// One exported routine.
struct Entry {
  const Family& family;
  int n;

  [[nodiscard]] std::string name() const;
  [[nodiscard]] std::size_t sourceReals() const;
  [[nodiscard]] std::size_t destinationReals() const;
  [[nodiscard]] std::size_t sourceBytes() const { return sourceReals() * family.realBytes; }
  [[nodiscard]] std::size_t destinationBytes() const { return destinationReals() * family.realBytes; }
  TfmStatus operator()(const void* src, void* dst, std::int32_t flag) const {
    return family.calls.begin()[n - kShortest](src, dst, flag);
  }
};

[[nodiscard]] const std::vector<Family>& families();

// Index of the real and the imaginary part of bin k = 0 .. n/2 in a packed spectrum; -1 for a part that is not stored.
struct Slot {
  int re;
  int im;
};
[[nodiscard]] Slot spectrumSlot(Format format, int n, int k);

// Runs check(entry) for every entry. A check should assert, so that each faulty entry reports once.
template <class Check>
void forEachEntry(const Check& check) {
  for (const Family& family : families()) {
    for (int n = kShortest; n <= kLongest; ++n) {
      const Entry entry{family, n};
      SCOPED_TRACE(entry.name());
      check(entry);
    }
  }
}

// Runs check.operator()<Real>(entry) with the real type of the entry's samples.
template <class Check>
void forEachTypedEntry(const Check& check) {
  forEachEntry([&](const Entry& entry) {
    if (entry.family.realBytes == sizeof(float)) {
      check.template operator()<float>(entry);
    } else {
      check.template operator()<double>(entry);
    }
  });
}

} // namespace tfmgen::test
