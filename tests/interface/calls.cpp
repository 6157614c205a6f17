// Calls whose machine code is looked at: `bare...` are nothing but the call of the C function, `checked...` test the
// status that it returns.
#include <tfmgen.hpp>

#include <array>
#include <complex>
#include <span>

using tfmgen::Format;
using tfmgen::Scale;
using tfmgen::Status;
using Complex32 = std::complex<float>;
using Complex64 = std::complex<double>;

extern "C" {

Status bareDft(const std::array<Complex32, 53>& in, std::array<Complex32, 53>& out, Scale scale) noexcept {
  return tfmgen::tryDft(in, out, scale); // tfmgDFTFwd_CToC_53_32fc
}

Status bareInverseDft(const Complex64 (&in)[7], Complex64 (&out)[7], Scale scale) noexcept {
  return tfmgen::tryInverseDft<7>(in, out, scale); // tfmgDFTInv_CToC_7_64fc
}

Status bareRealDft(const std::array<float, 16>& in, std::array<Complex32, 9>& out, Scale scale) noexcept {
  return tfmgen::tryRealDft<Format::ccs>(in, out, scale); // tfmgDFTFwd_RToCCS_16_32f
}

Status bareInverseRealDft(const std::array<double, 31>& in, std::array<double, 31>& out, Scale scale) noexcept {
  return tfmgen::tryInverseRealDft<Format::perm, 31>(in, out, scale); // tfmgDFTInv_PermToR_31_64f
}

Status bareHartley(const std::array<float, 64>& in, std::array<float, 64>& out, Scale scale) noexcept {
  return tfmgen::tryHartley(in, out, scale); // tfmgHartley_64_32f
}

Status bareWalshHadamard(const std::array<double, 128>& in, std::array<double, 128>& out, Scale scale) noexcept {
  return tfmgen::tryWalshHadamard(in, out, scale); // tfmgWHT_7_64f
}

Status bareWalshHadamardWithBuffer(const std::array<float, 8192>& in, std::array<float, 8192>& out,
                                   tfmgen::WalshHadamardBuffer& buffer, Scale scale) noexcept {
  return tfmgen::tryWalshHadamard(in, out, buffer, scale); // tfmgWHT_13_32f
}

void checkedDft(const std::array<Complex32, 53>& in, std::array<Complex32, 53>& out, Scale scale) {
  tfmgen::dft(in, out, scale); // tfmgDFTFwd_CToC_53_32fc
}

void checkedRealDft(std::span<const double> in, std::array<double, 12>& out) {
  tfmgen::realDft<Format::pack, 12>(in.first<12>(), out, Scale::forwardByN); // tfmgDFTFwd_RToPack_12_64f
}

void checkedWalshHadamard(const std::array<float, 512>& in, std::array<float, 512>& out,
                          tfmgen::WalshHadamardBuffer& buffer) {
  tfmgen::walshHadamard(in, out, buffer); // tfmgWHT_9_32f
}
}
