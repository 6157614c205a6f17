// Zeros of plus sign, at every length: all sums of them, all differences and all products by constants of plus sign are
// zeros of plus sign, and so is 0 - v where an output is negated.
#include "families.hpp"
#include "forms.hpp"

namespace tfmgen::test {
namespace {

// In 32-bit complex kernels a product by a negative twiddle is a minus zero, and a chirp ends in one.
bool hasSignedProducts(const Entry& entry) {
  return entry.family.isComplex() && entry.family.realBytes == sizeof(float);
}

TEST(ExactForms, ZerosOfPlusSignStayZerosOfPlusSign) {
  forEachTypedEntry([]<class Real>(const Entry& entry) {
    if (hasSignedProducts(entry)) {
      return;
    }
    const std::vector<Real> x(entry.sourceReals());
    for (const std::int32_t flag : kFlags) {
      std::vector<Real> y(entry.destinationReals(), -1);
      ASSERT_EQ(entry(x.data(), y.data(), flag), tfmStsOk);
      ASSERT_TRUE(sameNumbers<Real>(std::vector<Real>(y.size()), y));
    }
  });
}

} // namespace
} // namespace tfmgen::test
