#include "digest.hpp"
#include "families.hpp"
#include "wht.hpp"

namespace tfmgen::test {
namespace {

template <class Real>
void printType() {
  const std::string suffix = Wht<Real>::suffix;
  Hash general;
  Hash sizes;
  for (int order = 1; order <= kWhtOrders; ++order) {
    const std::size_t n = std::size_t{1} << order;
    Hash fixed;
    for (const std::int32_t flag : kFlags) {
      addResults<Real>(fixed, n, n, [&](const Real* src, Real* dst) { whtCall<Real>(order)(src, dst, flag, nullptr); });
      addResults<Real>(general, n, n,
                       [&](const Real* src, Real* dst) { Wht<Real>::general(src, dst, order, flag, nullptr); });
    }
    std::int32_t size = 0;
    Wht<Real>::bufferSize(order, &size);
    sizes.add(&size, sizeof size);
    print(whtName<Real>(order), fixed);
  }
  print("tfmgWHT" + suffix, general);
  print("tfmgWHTGetBufferSize" + suffix, sizes);
}

} // namespace

void printWht() {
  printType<float>();
  printType<double>();
}

} // namespace tfmgen::test
