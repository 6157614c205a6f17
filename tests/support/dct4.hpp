// The exported functions of the DCT-IV by sample type.
#pragma once

#include "tfmgen.h"

namespace tfmgen::test {

template <class Real>
struct Dct4;

template <>
struct Dct4<float> {
  static constexpr const char* suffix = "_32f";
  static constexpr auto getSize = tfmgDCT4GetSize_32f;
  static constexpr auto init = tfmgDCT4Init_32f;
  static constexpr auto initAlloc = tfmgDCT4InitAlloc_32f;
  static constexpr auto free = tfmgDCT4Free_32f;
  static constexpr auto run = tfmgDCT4_32f;
};

template <>
struct Dct4<double> {
  static constexpr const char* suffix = "_64f";
  static constexpr auto getSize = tfmgDCT4GetSize_64f;
  static constexpr auto init = tfmgDCT4Init_64f;
  static constexpr auto initAlloc = tfmgDCT4InitAlloc_64f;
  static constexpr auto free = tfmgDCT4Free_64f;
  static constexpr auto run = tfmgDCT4_64f;
};

} // namespace tfmgen::test
