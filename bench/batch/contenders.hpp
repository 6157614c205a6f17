// Who takes part: single calls, batches at every width of the processor, FFTW's plans for many transforms.
#pragma once

#include "arena.hpp"

#include <functional>
#include <string>
#include <string_view>

namespace bench {

struct Contender {
  std::string name;
  std::function<void()> run; // all frames once
};

template <class T>
void addOurs(const CaseId& id, const Arena<T>& arena, std::vector<Contender>& contenders);

inline constexpr std::string_view kMeasured = "fftw-measured";
inline constexpr std::string_view kPatient = "fftw-patient";

struct Planning {
  bool isPatient = false; // with FFTW_PATIENT beside FFTW_MEASURE
  std::string plans;      // begins the names of files that keep what planning found for the next run; empty: none
};

template <class T>
void addFftw(const CaseId& id, const Arena<T>& arena, const Planning& planning, std::vector<Contender>& contenders);

} // namespace bench
