// Times the Walsh-Hadamard transform of every order, in the library of every level, beside FFTW, whose real transform
// of rank m and length 2 in every direction is the same.
//
//   bench_wht [--rounds=COUNT] [LEVEL...]

#include "level_contest.hpp"
#include "samples.hpp"
#include "tfmgen.h"

#include <fftw3.h>

#include <array>
#include <exception>
#include <iostream>
#include <memory>

namespace {

using namespace bench;

constexpr int kOrders = 13;

// The two precisions of FFTW and of the library under one name.
template <class Real>
struct Api;

template <>
struct Api<float> {
  static constexpr const char* type = "f32";
  static constexpr const char* suffix = "_32f";
  static constexpr auto plan = fftwf_plan_r2r;
  static constexpr auto execute = fftwf_execute;
  static constexpr auto destroy = fftwf_destroy_plan;
};

template <>
struct Api<double> {
  static constexpr const char* type = "f64";
  static constexpr const char* suffix = "_64f";
  static constexpr auto plan = fftw_plan_r2r;
  static constexpr auto execute = fftw_execute;
  static constexpr auto destroy = fftw_destroy_plan;
};

struct Rigor {
  const char* name;
  unsigned flag;
};
constexpr std::array kRigors{Rigor{"fftw-2x2-est", FFTW_ESTIMATE}, Rigor{"fftw-2x2-meas", FFTW_MEASURE},
                             Rigor{"fftw-2x2-pat", FFTW_PATIENT}};
constexpr int kLastPatientOrder = 9; // beyond, planning takes minutes and chooses no better

template <class Real>
void addFftw(int order, const Samples<Real>& src, const Samples<Real>& dst, std::vector<Contestant>& contestants) {
  using A = Api<Real>;
  std::array<int, kOrders> twos{};
  twos.fill(2);
  std::array<fftw_r2r_kind, kOrders> kinds{};
  kinds.fill(FFTW_DHT);
  for (const Rigor& rigor : kRigors) {
    if (rigor.flag != FFTW_PATIENT || order <= kLastPatientOrder) {
      const auto plan = A::plan(order, twos.data(), src.get(), dst.get(), kinds.data(), rigor.flag);
      const std::shared_ptr<void> owner(plan, [plan](void*) { A::destroy(plan); });
      contestants.push_back({rigor.name, [owner, plan](std::int64_t calls) {
                               for (; calls > 0; --calls) {
                                 A::execute(plan);
                               }
                             }});
    }
  }
}

template <class Real>
LevelCase compare(int order, int rounds, const std::vector<LevelLibrary>& libraries) {
  using Call = TfmStatus(const Real*, Real*, std::int32_t, std::uint8_t*);
  const Samples<Real> src(1 << order);
  const Samples<Real> dst(1 << order);
  const Samples<Real> buffer(2 << order); // more than any order asks for
  std::vector<Contestant> contestants;
  for (const LevelLibrary& library : libraries) {
    for (Call* const call : library.find<Call>("tfmgWHT_" + std::to_string(order) + Api<Real>::suffix)) {
      contestants.push_back({library.level(), [&, call](std::int64_t calls) {
                               for (; calls > 0; --calls) {
                                 call(src.get(), dst.get(), TFM_NO_DIV, reinterpret_cast<std::uint8_t*>(buffer.get()));
                               }
                             }});
    }
  }
  addFftw(order, src, dst, contestants);
  src.fill(); // planning writes to the arrays
  return {Api<Real>::type, order, leastTimes(contestants, rounds)};
}

} // namespace

int main(int argc, char** argv) {
  const ContestOptions options = parseContest(argc, argv);
  try {
    const std::vector<LevelLibrary> libraries = levelLibraries(options.levels);
    std::vector<LevelCase> cases;
    for (int order = 1; order <= kOrders; ++order) {
      cases.push_back(compare<float>(order, options.rounds, libraries));
    }
    for (int order = 1; order <= kOrders; ++order) {
      cases.push_back(compare<double>(order, options.rounds, libraries));
    }
    printContest(cases, libraries, BENCH_WHT_MARKS);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
