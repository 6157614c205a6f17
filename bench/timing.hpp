// Clocks for stretches of microseconds.
#pragma once

#include <cstdint>

namespace bench {

// Time stamp counter, read after everything before it has finished. It runs at a constant rate, whatever the clock of
// the core does.
std::uint64_t timeStamp();

// Ticks of the time stamp counter in a nanosecond, measured against the steady clock at the first call.
double ticksPerNanosecond();

} // namespace bench
