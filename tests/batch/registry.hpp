// The eighteen exports with the single calls that they promise the bits of.
#pragma once

#include "batch.hpp"
#include "families.hpp"
#include "tfmbatch.h"

#include <string>
#include <vector>

namespace tfmgen::test {

struct BatchFamily {
  using Export = TfmStatus (*)(const void* src, TfmbLayout srcLayout, void* dst, TfmbLayout dstLayout, std::int32_t len,
                               std::int64_t count, std::int32_t flag);

  std::string name;
  const batch::Family& internal;
  Export call;
  const Family& single;

  [[nodiscard]] std::size_t sourceLength(int n) const { return Entry{single, n}.sourceBytes() / single.elementBytes(); }
  [[nodiscard]] std::size_t destinationLength(int n) const {
    return Entry{single, n}.destinationBytes() / single.elementBytes();
  }
};

const std::vector<BatchFamily>& batchFamilies();

} // namespace tfmgen::test
