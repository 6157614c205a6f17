// Who takes part: single calls, batches at every width of the processor, FFTW's plans for many transforms.
#pragma once

#include "arena.hpp"

#include <functional>
#include <string>

namespace bench {

struct Contender {
  std::string name;
  std::function<void()> run; // all frames once
};

template <class T>
void addOurs(const CaseId& id, const Arena<T>& arena, std::vector<Contender>& contenders);

// Plans with FFTW_MEASURE and, where asked for, with FFTW_PATIENT.
template <class T>
void addFftw(const CaseId& id, const Arena<T>& arena, bool isPatient, std::vector<Contender>& contenders);

} // namespace bench
