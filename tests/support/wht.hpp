// The exported Walsh-Hadamard entries as a table, and the procedure that defines their results.
#pragma once

#include "tfmgen.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tfmgen::test {

inline constexpr int kWhtOrders = 13;

template <class Real>
struct Wht;

template <>
struct Wht<float> {
  using Call = TfmStatus(const float*, float*, std::int32_t, std::uint8_t*);
  static constexpr const char* suffix = "_32f";
  static constexpr std::array<Call*, kWhtOrders> calls = {
      tfmgWHT_1_32f, tfmgWHT_2_32f, tfmgWHT_3_32f,  tfmgWHT_4_32f,  tfmgWHT_5_32f,  tfmgWHT_6_32f, tfmgWHT_7_32f,
      tfmgWHT_8_32f, tfmgWHT_9_32f, tfmgWHT_10_32f, tfmgWHT_11_32f, tfmgWHT_12_32f, tfmgWHT_13_32f};
  static constexpr auto general = tfmgWHT_32f;
  static constexpr auto bufferSize = tfmgWHTGetBufferSize_32f;
  static constexpr std::array<std::int32_t, kWhtOrders> bufferSizes = {0,    0,    0,    0,    0,     0,    0,
                                                                       1024, 2048, 4096, 8192, 18432, 34816};
};

template <>
struct Wht<double> {
  using Call = TfmStatus(const double*, double*, std::int32_t, std::uint8_t*);
  static constexpr const char* suffix = "_64f";
  static constexpr std::array<Call*, kWhtOrders> calls = {
      tfmgWHT_1_64f, tfmgWHT_2_64f, tfmgWHT_3_64f,  tfmgWHT_4_64f,  tfmgWHT_5_64f,  tfmgWHT_6_64f, tfmgWHT_7_64f,
      tfmgWHT_8_64f, tfmgWHT_9_64f, tfmgWHT_10_64f, tfmgWHT_11_64f, tfmgWHT_12_64f, tfmgWHT_13_64f};
  static constexpr auto general = tfmgWHT_64f;
  static constexpr auto bufferSize = tfmgWHTGetBufferSize_64f;
  static constexpr std::array<std::int32_t, kWhtOrders> bufferSizes = {0,    0,    0,    0,     0,     0,    0,
                                                                       2048, 4096, 8192, 18432, 34816, 73728};
};

template <class Real>
typename Wht<Real>::Call* whtCall(int order) {
  return Wht<Real>::calls.begin()[order - 1];
}

template <class Real>
std::int32_t whtBufferSize(int order) {
  return Wht<Real>::bufferSizes.begin()[order - 1];
}

template <class Real>
std::string whtName(int order) {
  return "tfmgWHT_" + std::to_string(order) + Wht<Real>::suffix;
}

// The factor of `flag` at length n, by division and square root.
template <class Real>
Real whtScale(std::int32_t flag, std::size_t n) {
  const auto length = static_cast<double>(n);
  const double factor = flag == TFM_NO_DIV ? 1.0 : 1.0 / (flag == TFM_DIV_BY_SQRTN ? std::sqrt(length) : length);
  return static_cast<Real>(factor);
}

template <class Real>
std::vector<Real> whtByDefinition(std::vector<Real> a, std::int32_t flag) {
  for (std::size_t h = 1; h < a.size(); h *= 2) {
    for (std::size_t j = 0; j < a.size(); ++j) {
      if ((j & h) == 0) {
        const Real set = a[j + h];
        a[j + h] = a[j] - set;
        a[j] = a[j] + set;
      }
    }
  }
  const Real scale = whtScale<Real>(flag, a.size());
  for (Real& x : a) {
    x = x * scale;
  }
  return a;
}

} // namespace tfmgen::test
