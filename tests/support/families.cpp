#include "families.hpp"

#include <algorithm>
#include <type_traits>

namespace tfmgen::test {
namespace {

template <class Sample, TfmStatus (*routine)(const Sample*, Sample*, std::int32_t)>
TfmStatus call(const void* src, void* dst, std::int32_t flag) {
  return routine(static_cast<const Sample*>(src), static_cast<Sample*>(dst), flag);
}

template <class Sample, TfmStatus (*routine)(const Sample*, Sample*, std::int32_t, std::int32_t)>
TfmStatus callGeneral(const void* src, void* dst, std::int32_t len, std::int32_t flag) {
  return routine(static_cast<const Sample*>(src), static_cast<Sample*>(dst), len, flag);
}

template <class Sample>
inline constexpr std::size_t kRealBytes = std::is_floating_point_v<Sample> ? sizeof(Sample) : sizeof(Sample) / 2;

#define TFMGEN_TEST_CALL(N, family, suffix, Sample) call<Sample, tfmg##family##_##N##_##suffix>,
#define TFMGEN_TEST_FAMILY(family, suffix, Sample, kind, format)                                                       \
  Family {                                                                                                             \
    "tfmg" #family "_" #suffix, Kind::kind, Format::format, kRealBytes<Sample>,                                        \
        callGeneral<Sample, tfmg##family##_##suffix>, {                                                                \
      TFMGEN_FOR_EACH_LENGTH(TFMGEN_TEST_CALL, family, suffix, Sample)                                                 \
    }                                                                                                                  \
  }

const std::vector<Family> kFamilies = {
    TFMGEN_TEST_FAMILY(DFTFwd_CToC, 32fc, Tfm32fc, complexForward, plain),
    TFMGEN_TEST_FAMILY(DFTFwd_CToC, 64fc, Tfm64fc, complexForward, plain),
    TFMGEN_TEST_FAMILY(DFTInv_CToC, 32fc, Tfm32fc, complexInverse, plain),
    TFMGEN_TEST_FAMILY(DFTInv_CToC, 64fc, Tfm64fc, complexInverse, plain),
    TFMGEN_TEST_FAMILY(DFTFwd_RToCCS, 32f, Tfm32f, realForward, ccs),
    TFMGEN_TEST_FAMILY(DFTFwd_RToCCS, 64f, Tfm64f, realForward, ccs),
    TFMGEN_TEST_FAMILY(DFTFwd_RToPack, 32f, Tfm32f, realForward, pack),
    TFMGEN_TEST_FAMILY(DFTFwd_RToPack, 64f, Tfm64f, realForward, pack),
    TFMGEN_TEST_FAMILY(DFTFwd_RToPerm, 32f, Tfm32f, realForward, perm),
    TFMGEN_TEST_FAMILY(DFTFwd_RToPerm, 64f, Tfm64f, realForward, perm),
    TFMGEN_TEST_FAMILY(DFTInv_CCSToR, 32f, Tfm32f, realInverse, ccs),
    TFMGEN_TEST_FAMILY(DFTInv_CCSToR, 64f, Tfm64f, realInverse, ccs),
    TFMGEN_TEST_FAMILY(DFTInv_PackToR, 32f, Tfm32f, realInverse, pack),
    TFMGEN_TEST_FAMILY(DFTInv_PackToR, 64f, Tfm64f, realInverse, pack),
    TFMGEN_TEST_FAMILY(DFTInv_PermToR, 32f, Tfm32f, realInverse, perm),
    TFMGEN_TEST_FAMILY(DFTInv_PermToR, 64f, Tfm64f, realInverse, perm),
    TFMGEN_TEST_FAMILY(Hartley, 32f, Tfm32f, hartley, plain),
    TFMGEN_TEST_FAMILY(Hartley, 64f, Tfm64f, hartley, plain),
};

// 32-bit forward real kernels of these lengths have outputs that end in a product by a constant.
constexpr int kScaledInDouble[] = {3,  5,  7,  9,  11, 12, 14, 15, 17, 18, 21, 22, 25, 27,
                                   28, 33, 34, 35, 39, 40, 45, 48, 49, 51, 54, 55, 57, 63};

// The reals of one side of a routine.
std::size_t realsOf(const Family& family, int n, bool isHalfSpectrum) {
  const bool isCcs = isHalfSpectrum && family.format == Format::ccs;
  return (family.isComplex() ? 2 : 1) * static_cast<std::size_t>(isCcs ? 2 * (n / 2 + 1) : n);
}

} // namespace

const std::vector<Family>& families() {
  return kFamilies;
}

bool Family::divides(std::int32_t flag) const {
  switch (flag) {
  case TFM_DIV_FWD_BY_N: return kind != Kind::complexInverse && kind != Kind::realInverse;
  case TFM_DIV_INV_BY_N: return kind != Kind::complexForward && kind != Kind::realForward;
  default: return flag == TFM_DIV_BY_SQRTN;
  }
}

bool Family::scalesByProduct(int n) const {
  return kind != Kind::realForward || realBytes == sizeof(double) ||
         std::find(std::begin(kScaledInDouble), std::end(kScaledInDouble), n) == std::end(kScaledInDouble);
}

std::string Entry::name() const {
  const std::size_t suffix = family.name.rfind('_');
  return family.name.substr(0, suffix) + '_' + std::to_string(n) + family.name.substr(suffix);
}

std::size_t Entry::sourceReals() const {
  return realsOf(family, n, family.kind == Kind::realInverse);
}

std::size_t Entry::destinationReals() const {
  return realsOf(family, n, family.kind == Kind::realForward);
}

Slot spectrumSlot(Format format, int n, int k) {
  if (format == Format::ccs) {
    return {2 * k, 2 * k + 1};
  }
  const bool nyquistSecond = format == Format::perm && n % 2 == 0;
  if (k == 0) {
    return {0, -1};
  }
  if (2 * k == n) {
    return {nyquistSecond ? 1 : n - 1, -1};
  }
  return nyquistSecond ? Slot{2 * k, 2 * k + 1} : Slot{2 * k - 1, 2 * k};
}

} // namespace tfmgen::test
