#include "timing.hpp"

#include <x86intrin.h>

#include <chrono>

namespace bench {

std::uint64_t timeStamp() {
  _mm_lfence();
  const std::uint64_t ticks = __rdtsc();
  _mm_lfence();
  return ticks;
}

double ticksPerNanosecond() {
  static const double rate = [] {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const std::uint64_t startTicks = timeStamp();
    auto now = start;
    while (now - start < std::chrono::milliseconds(200)) {
      now = Clock::now();
    }
    const std::uint64_t ticks = timeStamp() - startTicks;
    return static_cast<double>(ticks) / std::chrono::duration<double, std::nano>(now - start).count();
  }();
  return rate;
}

} // namespace bench
