// Clocks for stretches of microseconds.
#pragma once

#include <cstdint>

namespace bench {

// Time stamp counter, read after everything before it has finished. It runs at a constant rate, whatever the clock of
// the core does.
std::uint64_t timeStamp();

// Ticks of the time stamp counter in a nanosecond, measured against the steady clock at the first call.
double ticksPerNanosecond();

// Cycles of the core that this thread spent outside the kernel. Most virtual machines have no such counter.
class CoreCycles {
public:
  CoreCycles();
  ~CoreCycles();
  CoreCycles(const CoreCycles&) = delete;
  CoreCycles& operator=(const CoreCycles&) = delete;

  [[nodiscard]] bool available() const { return descriptor_ >= 0; }
  [[nodiscard]] std::uint64_t read() const; // 0 when not available

private:
  int descriptor_;
};

} // namespace bench
