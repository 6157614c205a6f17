// Goes through the C++ header; the result is known.
#include <tfmgen.hpp>

#include <array>
#include <complex>

int main() {
  const std::array<float, 4> x{1, 2, 3, 4};
  std::array<std::complex<float>, 3> bins;
  tfmgen::realDft<tfmgen::Format::ccs>(x, bins);
  tfmgen::Dct4<double> plan(64);
  return bins[0] == 10.0F && bins[1] == std::complex<float>(-2, 2) && bins[2] == -2.0F && plan.length() == 64 ? 0 : 1;
}
