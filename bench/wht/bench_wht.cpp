// Times the Walsh-Hadamard transform of every order, in the library of every level, beside FFTW, whose real transform
// of rank m and length 2 in every direction is the same.
//
//   bench_wht [--rounds=COUNT] [--only=wht/TYPE/ORDER/] [--csv=FILE] [LEVEL...]

#include "fftw_api.hpp"
#include "level_contest.hpp"
#include "samples.hpp"
#include "tfmgen.h"

#include <array>
#include <memory>
#include <numeric>

namespace {

using namespace bench;

constexpr int kOrders = 13;

// The two precisions of the library under one name.
template <class Real>
struct Api;

template <>
struct Api<float> {
  static constexpr const char* type = "f32";
  static constexpr const char* suffix = "_32f";
};

template <>
struct Api<double> {
  static constexpr const char* type = "f64";
  static constexpr const char* suffix = "_64f";
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
  using A = Fftw<Real>;
  std::array<int, kOrders> twos{};
  twos.fill(2);
  std::array<fftw_r2r_kind, kOrders> kinds{};
  kinds.fill(FFTW_DHT);
  for (const Rigor& rigor : kRigors) {
    if (rigor.flag != FFTW_PATIENT || order <= kLastPatientOrder) {
      const auto plan = A::gridPlan(order, twos.data(), src.get(), dst.get(), kinds.data(), rigor.flag);
      const std::shared_ptr<void> owner(plan, [plan](void*) { A::destroy(plan); });
      contestants.push_back({Role::peer, rigor.name, "", [owner, plan](std::int64_t calls) {
                               for (; calls > 0; --calls) {
                                 A::execute(plan);
                               }
                             }});
    }
  }
}

template <class Real>
std::vector<LevelCase> compare(int order, const Contests& contests) {
  using Call = TfmStatus(const Real*, Real*, std::int32_t, std::uint8_t*);
  const std::string routine = "tfmgWHT";
  const Samples<Real> src(1 << order);
  const Samples<Real> dst(1 << order);
  const Samples<Real> buffer(2 << order); // more than any order asks for
  std::vector<Contestant> contestants;
  for (const LevelLibrary& library : contests.libraries()) {
    for (Call* const call : library.find<Call>(routine + "_" + std::to_string(order) + Api<Real>::suffix)) {
      const auto transform = [call, work = reinterpret_cast<std::uint8_t*>(buffer.get())](const Real* from, Real* to) {
        call(from, to, TFM_NO_DIV, work);
      };
      addOurs(routine, library.level(), transform, src.get(), dst.get(), std::size_t(1) << order, contestants);
    }
  }
  addFftw(order, src, dst, contestants);
  return contest("wht", Api<Real>::type, order, contestants, contests.options().rounds);
}

template <class Real>
void holdAll(Contests& contests) {
  std::vector<int> orders(kOrders);
  std::iota(orders.begin(), orders.end(), 1);
  contests.hold("wht", Api<Real>::type, orders, [&](int order) { return compare<Real>(order, contests); });
}

} // namespace

int main(int argc, char** argv) {
  return runContests(argc, argv, [](Contests& contests) {
    holdAll<float>(contests);
    holdAll<double>(contests);
  });
}
