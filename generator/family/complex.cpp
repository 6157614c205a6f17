#include "complex.hpp"

#include "lengths.hpp"
#include "lower/complex32.hpp"
#include "lower/complex64.hpp"
#include "pack/packed.hpp"
#include "plan/complex32.hpp"
#include "plan/complex64.hpp"
#include "seeds.hpp"
#include "slower.hpp"
#include "wide/pairs.hpp"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <utility>

namespace tfmgen::family {

namespace {

// Lengths whose kernels on 512 bits are 5 to 23 percent faster than on 256 bits, measured on a Zen 5 core. Elsewhere
// the moves between halves cost more than the arithmetic gains.
constexpr std::array kFasterInPairs{45, 48, 50, 54, 56, 60, 64};

// The same on the registers of a level: the arithmetic of each lane is that of the baseline's kernel.
print::ComplexKernel wideComplex32(int length, transform::RootSign sign, Level level) {
  constexpr int kFirstWideLength = 6;
  print::ComplexKernel kernel = complex32(length, sign);
  if (level == Level::baseline || length < kFirstWideLength) {
    return kernel;
  }
  const bool isInPairs = level == Level::v4 && std::ranges::find(kFasterInPairs, length) != kFasterInPairs.end();
  const wide::Graph graph = wide::interleaved(std::get<lower::Kernel>(kernel.kernel));
  kernel.kernel =
      print::WideKernel{wide::program(isInPairs ? wide::inPairs(graph) : graph), level == Level::v4 ? 32 : 16};
  kernel.bodies = print::Bodies::one;
  return kernel;
}

std::vector<print::ComplexKernel>
complexKernels(const std::function<print::ComplexKernel(int, transform::RootSign)>& make) {
  std::vector<print::ComplexKernel> kernels;
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    for (int n = kFirstLength; n <= kLastLength; ++n) {
      kernels.push_back(make(n, sign));
    }
  }
  return kernels;
}

} // namespace

// Short kernels of 32-bit samples move single numbers, so alignment does not matter to them.
print::ComplexKernel complex32(int length, transform::RootSign sign) {
  constexpr int kLastScalarLength = 5;
  const plan::PlanPtr plan = plan::complex32(length);
  const std::string text = plan::describe(*plan);
  if (length <= kLastScalarLength) {
    return {lower::complexScalars(*plan, sign), sign, length, 32, text, print::Bodies::one};
  }
  return {lower::complex32(*plan, sign), sign, length, 32, text, print::Bodies::inTwoFunctions};
}

// Short kernels hold both bodies in one function: a second function would be longer than what it saves.
print::ComplexKernel complex64(int length, transform::RootSign sign) {
  const plan::PlanPtr plan = plan::complex64(length);
  return {lower::complex64(*plan, sign),
          sign,
          length,
          64,
          plan::describe(*plan),
          length <= 4 ? print::Bodies::inOneFunction : print::Bodies::inTwoFunctions};
}

std::vector<print::ComplexKernel> complex32(Level level) {
  return complexKernels([level](int length, transform::RootSign sign) { return wideComplex32(length, sign, level); });
}

// Both directions differ in signs only.
std::vector<print::ComplexKernel> complex64(Level level, std::optional<std::uint64_t> seed) {
  std::vector<print::ComplexKernel> kernels =
      complexKernels([](int length, transform::RootSign sign) { return complex64(length, sign); });
  if (level == Level::baseline) {
    return kernels;
  }
  std::map<int, pack::Packer> packers;
  for (print::ComplexKernel& k : kernels) {
    const pack::Program program = pack::program(std::get<lower::Kernel>(k.kernel), k.length);
    const std::string name = print::kernelName(k);
    const auto packer = packers
                            .try_emplace(k.length, pack::machine(level, 64, program.numbersInUnit),
                                         seed.value_or(measuredSeed(level, name)))
                            .first;
    pack::Packed packed = packer->second.pack(program);
    if (packed.isFaster && (seed || !isMeasuredSlower(level, name))) {
      k.packed = std::move(packed);
    }
  }
  return kernels;
}

bool isOfLevel(const print::ComplexKernel& kernel) {
  return kernel.packed || std::holds_alternative<print::WideKernel>(kernel.kernel);
}

} // namespace tfmgen::family
