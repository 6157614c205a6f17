// The Walsh-Hadamard transform: stages from the lowest index bit to the highest, the element whose bit is clear first.
#include "wht.hpp"

#include "families.hpp"
#include "forms.hpp"

#include <algorithm>

namespace tfmgen::test {
namespace {

template <class Real>
void compareOrders() {
  for (int order = 1; order <= 8; ++order) { // from 8 on in several passes, with memory of its own
    SCOPED_TRACE(whtName<Real>(order));
    const std::size_t n = std::size_t{1} << order;
    expectForm<Real>(n, n, kFlags, whtByDefinition<Real>,
                     [&](const std::vector<Real>& x, const Places<Real>& at, std::int32_t flag) {
                       std::ranges::copy(x, at.source);
                       return whtCall<Real>(order)(at.source, at.result, flag, nullptr);
                     });
  }
}

TEST(ExactForms, WalshHadamard) {
  compareOrders<float>();
  compareOrders<double>();
}

} // namespace
} // namespace tfmgen::test
