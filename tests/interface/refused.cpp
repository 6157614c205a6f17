// Calls that must not compile, one a case, each with the name of the concept that the compiler has to mention. Case 0
// holds what must compile.
#include <tfmgen.hpp>

#include <array>
#include <complex>
#include <list>
#include <vector>

using Complex32 = std::complex<float>;
using tfmgen::Format;

std::array<Complex32, 53> a53;
std::array<Complex32, 52> a52;
std::array<Complex32, 100> a100;
std::array<std::complex<double>, 53> d53;
const std::array<Complex32, 53> constant53{};
std::vector<Complex32> run;
std::list<Complex32> linked;
std::array<float, 16> r16;
std::array<float, 18> r18;
std::array<float, 256> r256;
std::array<Complex32, 9> c9;
std::vector<float> real;

int main() {
#if CASE == 0
  tfmgen::dft(constant53, a53);
  tfmgen::dft<53>(std::span(run).first<53>(), a53);
  tfmgen::dft(run, a53);
  tfmgen::realDft<Format::ccs>(r16, r18);
  tfmgen::inverseRealDft<Format::ccs, 16>(c9, r16);
#elif CASE == 1  // HasLength
  tfmgen::dft<53>(a53, a52);
#elif CASE == 2  // HasLength
  tfmgen::dft<53>(run, a53);
#elif CASE == 3  // SameLength
  tfmgen::dft(a53, a52);
#elif CASE == 4  // DftLength
  tfmgen::dft(a100, a100);
#elif CASE == 5  // DftLength
  tfmgen::inverseDft<1>(run, run);
#elif CASE == 6  // ResultOf
  tfmgen::dft(a53, constant53);
#elif CASE == 7  // ResultOf
  tfmgen::dft(a53, d53);
#elif CASE == 8  // Signal
  tfmgen::dft(linked, a53);
#elif CASE == 9  // ComplexSignal
  tfmgen::dft(r16, r16);
#elif CASE == 10 // SpectrumFits
  tfmgen::realDft<Format::pack>(r16, r18);
#elif CASE == 11 // HasSpectrumLength
  tfmgen::realDft<Format::ccs, 16>(r16, r16);
#elif CASE == 12 // SpectrumOf
  tfmgen::realDft<Format::perm>(r16, c9);
#elif CASE == 13 // NeedsNoBuffer
  tfmgen::walshHadamard(r256, r256);
#elif CASE == 14 // WalshHadamardLength
  tfmgen::walshHadamard(r18, r18);
#elif CASE == 15 // NeedsNoBuffer
  tfmgen::walshHadamard(real, real);
#elif CASE == 16 // Real
  tfmgen::Dct4<int> plan(8);
#elif CASE == 17 // nodiscard
  tfmgen::tryDft(a53, a53);
#elif CASE == 18 // deleted
  tfmgen::Dct4<float> plan(8);
  auto copy = plan;
#endif
}
