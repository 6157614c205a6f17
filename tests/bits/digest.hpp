// What the digests of all families share.
#pragma once

#include "random.hpp"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace tfmgen::test {

class Hash { // FNV-1a
public:
  void add(const void* data, std::size_t count) {
    const auto* bytes = static_cast<const std::byte*>(data);
    for (std::size_t i = 0; i < count; ++i) {
      value_ = (value_ ^ std::to_integer<std::uint64_t>(bytes[i])) * 0x100000001B3U;
    }
  }
  [[nodiscard]] std::uint64_t value() const { return value_; }

private:
  std::uint64_t value_ = 0xCBF29CE484222325U;
};

inline void print(const std::string& name, const Hash& hash) {
  std::printf("%s %016" PRIx64 "\n", name.c_str(), hash.value());
}

// Zeroed bytes from a 64-byte boundary on.
class AlignedBytes {
public:
  explicit AlignedBytes(std::size_t count) : blocks_(count / sizeof(Block) + 1) {}
  std::byte* data() { return blocks_.front().bytes.data(); }

private:
  struct alignas(64) Block {
    std::array<std::byte, 64> bytes;
  };
  std::vector<Block> blocks_;
};

// Calls transform(src, dst) on random reals of both spreads, others at each of several displacements from a boundary,
// and adds what it writes to `hash`.
template <class Real, class Transform>
void addResults(Hash& hash, std::size_t sourceReals, std::size_t destinationReals, const Transform& transform) {
  struct Displacement {
    std::size_t src;
    std::size_t dst;
  };
  constexpr std::size_t room = 16;
  Random random(9);
  for (const Spread spread : {Spread::uniform, Spread::wide}) {
    for (const Displacement displacement : {Displacement{0, 0}, {4, 8}, {0, 12}, {8, 0}}) {
      const auto values = random.bytesOfReals(sizeof(Real), sourceReals, spread);
      AlignedBytes source(sourceReals * sizeof(Real) + room);
      AlignedBytes destination(destinationReals * sizeof(Real) + room);
      std::byte* const src = source.data() + displacement.src;
      std::byte* const dst = destination.data() + displacement.dst;
      std::copy(values.begin(), values.end(), src);
      transform(reinterpret_cast<const Real*>(src), reinterpret_cast<Real*>(dst));
      hash.add(dst, destinationReals * sizeof(Real));
    }
  }
}

void printBatches();
void printWht();
void printDct4();

} // namespace tfmgen::test
