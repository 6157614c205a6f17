// Prints a line for every export: its name and a hash of all its results on fixed data, through every flag, at several
// alignments. Builds that keep the promise of equal bits print the same text.
#include "families.hpp"
#include "random.hpp"
#include "wht.hpp"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

namespace tfmgen::test {
namespace {

class Hash { // FNV-1a
public:
  void add(const std::byte* bytes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      value_ = (value_ ^ std::to_integer<std::uint64_t>(bytes[i])) * 0x100000001B3U;
    }
  }
  [[nodiscard]] std::uint64_t value() const { return value_; }

private:
  std::uint64_t value_ = 0xCBF29CE484222325U;
};

// Calls transform(src, dst, flag) for every flag on random data at several alignments.
template <class Transform>
std::uint64_t digest(const Entry& entry, const Transform& transform) {
  constexpr std::size_t room = 1024 + 16;
  constexpr struct {
    std::size_t src;
    std::size_t dst;
  } displacements[] = {{0, 0}, {4, 8}, {0, 12}, {8, 0}};
  Hash hash;
  for (const Spread spread : {Spread::uniform, Spread::wide}) {
    const auto values = Random(9).bytesOfReals(entry.family.realBytes, entry.sourceReals(), spread);
    for (const auto& displacement : displacements) {
      for (const std::int32_t flag : kFlags) {
        alignas(16) std::byte source[room] = {};
        alignas(16) std::byte destination[room] = {};
        std::copy(values.begin(), values.end(), source + displacement.src);
        transform(source + displacement.src, destination + displacement.dst, flag);
        hash.add(destination + displacement.dst, entry.destinationBytes());
      }
    }
  }
  return hash.value();
}

void print(const std::string& name, std::uint64_t hash) {
  std::printf("%s %016" PRIx64 "\n", name.c_str(), hash);
}

// The same for the Walsh-Hadamard transform: the sizes of its buffers, and every order through both entries.
template <class Real>
void printWht() {
  constexpr struct {
    std::size_t src;
    std::size_t dst;
  } displacements[] = {{0, 0}, {1, 0}};
  const std::string suffix = Wht<Real>::suffix;
  Hash general;
  Hash sizes;
  for (int order = 1; order <= kWhtOrders; ++order) {
    const std::size_t n = std::size_t{1} << order;
    Hash hash;
    for (const auto& displacement : displacements) {
      for (const std::int32_t flag : kFlags) {
        std::vector<Real> x = Random(9).reals<Real>(n + 1, Spread::wide);
        std::vector<Real> y(n + 1);
        whtCall<Real>(order)(x.data() + displacement.src, y.data() + displacement.dst, flag, nullptr);
        hash.add(reinterpret_cast<const std::byte*>(y.data()), n * sizeof(Real));
        Wht<Real>::general(x.data(), y.data(), order, flag, nullptr);
        general.add(reinterpret_cast<const std::byte*>(y.data()), n * sizeof(Real));
      }
    }
    std::int32_t size = 0;
    Wht<Real>::bufferSize(order, &size);
    sizes.add(reinterpret_cast<const std::byte*>(&size), sizeof size);
    print(whtName<Real>(order), hash.value());
  }
  print("tfmgWHT" + suffix, general.value());
  print("tfmgWHTGetBufferSize" + suffix, sizes.value());
}

} // namespace
} // namespace tfmgen::test

int main() {
  using namespace tfmgen::test;
  for (const Family& family : families()) {
    std::uint64_t all = 0;
    for (int n = kShortest; n <= kLongest; ++n) {
      const Entry entry{family, n};
      print(entry.name(), digest(entry, [&](const void* src, void* dst, std::int32_t flag) { entry(src, dst, flag); }));
      all ^= digest(entry, [&](const void* src, void* dst, std::int32_t flag) { family.general(src, dst, n, flag); });
    }
    print(family.name, all);
  }
  printWht<float>();
  printWht<double>();
}
