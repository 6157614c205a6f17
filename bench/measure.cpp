#include "measure.hpp"

#include "reference.hpp"

#include <iostream>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr double kBlockNanoseconds = 15000; // long against the clock's own cost, short against a time slice
constexpr std::int64_t kTrialCalls = 64;

} // namespace

template <class T>
Contest<T>::Contest(Family family, int n) : family_(family), n_(n) {
  std::mt19937_64 engine(static_cast<std::uint64_t>(n));
  numbers_ = randomNumbers<T>(numberCount(family, n), engine);
  for (Routine& routine : allRoutines(family, n, arrays_)) {
    if (!isRight(routine)) {
      continue;
    }
    const std::int64_t calls = callsOfBlock(routine);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    entrants_.push_back({std::move(routine), calls, infinity, infinity});
  }
}

template <class T>
bool Contest<T>::isRight(const Routine& routine) const {
  load(routine, n_, numbers_, arrays_);
  routine.repeat(1);
  const Reference<long double> reference(n_);
  const double error = relativeError(bench::result(routine, n_, arrays_), reference(family_, numbers_));
  if (error < 64 * static_cast<double>(std::numeric_limits<T>::epsilon())) {
    return true;
  }
  std::ostringstream message;
  message << routine.name << " does not compute " << shortName(family_) << '/' << kTypeName<T> << '/' << n_
          << ": relative error " << error;
  if (isOurs(routine)) {
    throw std::runtime_error(message.str());
  }
  std::cerr << "left out: " << message.str() << '\n';
  return false;
}

template <class T>
std::int64_t Contest<T>::callsOfBlock(const Routine& routine) const {
  load(routine, n_, numbers_, arrays_);
  routine.repeat(kTrialCalls);
  const std::uint64_t start = timeStamp();
  routine.repeat(kTrialCalls);
  const double perCall = static_cast<double>(timeStamp() - start) / ticksPerNanosecond() / kTrialCalls;
  return static_cast<std::int64_t>(kBlockNanoseconds / perCall) + 1;
}

template <class T>
void Contest<T>::round(const CoreCycles& counter) {
  for (Entrant& entrant : entrants_) {
    load(entrant.routine, n_, numbers_, arrays_); // some inverse transforms overwrite their source
    entrant.routine.repeat(kTrialCalls);          // code, branches and data back in the caches
    const std::uint64_t startCycles = counter.read();
    const std::uint64_t start = timeStamp();
    entrant.routine.repeat(entrant.calls);
    const std::uint64_t ticks = timeStamp() - start;
    const std::uint64_t cycles = counter.read() - startCycles;
    const auto calls = static_cast<double>(entrant.calls);
    entrant.ticks = std::min(entrant.ticks, static_cast<double>(ticks) / calls);
    entrant.cycles = std::min(entrant.cycles, static_cast<double>(cycles) / calls);
  }
}

template <class T>
Case Contest<T>::result() const {
  Case result{family_, std::string(kTypeName<T>), n_, {}, {}};
  for (const Entrant& entrant : entrants_) {
    auto& side = isOurs(entrant.routine) ? result.ours : result.peers;
    side.push_back(
        {entrant.routine.name, entrant.routine.library, entrant.ticks / ticksPerNanosecond(), entrant.cycles});
  }
  return result;
}

template class Contest<float>;
template class Contest<double>;

} // namespace bench
