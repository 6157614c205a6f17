// Single results that follow from a plan alone.
#include "tfmgen.h"

#include <gtest/gtest.h>

#include <array>

namespace tfmgen {
namespace {

// The convolution rounds on the way, in an order that begins with its factor 3: the sum comes out just below 1.
TEST(WorkedFigures, ChirpOfLength47RoundsAnImpulse) {
  std::array<Tfm32fc, 47> x{};
  std::array<Tfm32fc, 47> y{};
  x[0].re = 1;
  ASSERT_EQ(tfmgDFTFwd_CToC_47_32fc(x.data(), y.data(), TFM_DIV_FWD_BY_N), tfmStsOk);
  EXPECT_EQ(static_cast<double>(y[0].re), 0.02127659320831299);
  ASSERT_EQ(tfmgDFTInv_CToC_47_32fc(x.data(), y.data(), TFM_DIV_INV_BY_N), tfmStsOk);
  EXPECT_EQ(static_cast<double>(y[0].re), 0.02127659320831299);
}

// No value changes on its way through the index maps of coprime factors.
template <class Sample, class Transform>
void expectAlternatingSigns(Transform& transform) {
  std::array<Sample, 10> x{};
  std::array<Sample, 10> y{};
  x[5].re = 1;
  ASSERT_EQ(transform(x.data(), y.data(), TFM_NO_DIV), tfmStsOk);
  for (std::size_t k = 0; k < y.size(); ++k) {
    EXPECT_EQ(y[k].re, k % 2 == 0 ? 1 : -1);
    EXPECT_EQ(y[k].im, 0);
  }
}

TEST(WorkedFigures, ImpulseInTheMiddleOfLength10Alternates) {
  expectAlternatingSigns<Tfm32fc>(tfmgDFTFwd_CToC_10_32fc);
  expectAlternatingSigns<Tfm32fc>(tfmgDFTInv_CToC_10_32fc);
  expectAlternatingSigns<Tfm64fc>(tfmgDFTFwd_CToC_10_64fc);
  expectAlternatingSigns<Tfm64fc>(tfmgDFTInv_CToC_10_64fc);
}

} // namespace
} // namespace tfmgen
