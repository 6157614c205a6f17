#include "timing.hpp"

#include <linux/perf_event.h>
#include <sys/syscall.h>
#include <unistd.h>
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

CoreCycles::CoreCycles() {
  perf_event_attr attributes{};
  attributes.type = PERF_TYPE_HARDWARE;
  attributes.size = sizeof(attributes);
  attributes.config = PERF_COUNT_HW_CPU_CYCLES;
  attributes.exclude_kernel = 1;
  attributes.exclude_hv = 1;
  descriptor_ = static_cast<int>(syscall(SYS_perf_event_open, &attributes, 0, -1, -1, 0));
}

CoreCycles::~CoreCycles() {
  if (available()) {
    close(descriptor_);
  }
}

std::uint64_t CoreCycles::read() const {
  std::uint64_t cycles = 0;
  if (!available() || ::read(descriptor_, &cycles, sizeof(cycles)) != sizeof(cycles)) {
    return 0;
  }
  return cycles;
}

} // namespace bench
