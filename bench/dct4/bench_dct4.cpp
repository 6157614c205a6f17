// Times the DCT-IV of every length, in the library of every level, beside other libraries' in one run: FFTW's REDFT11,
// planned by measurement, and the half-length inverse MDCT of libavutil, which is a DCT-IV with its output in reverse
// order.
//
//   bench_dct4 [--rounds=COUNT] [--only=dct4/TYPE/N/] [--csv=FILE] [LEVEL...]

#include "fftw_api.hpp"
#include "level_contest.hpp"
#include "samples.hpp"
#include "tfmgen.h"

#include <memory>
#include <stdexcept>

extern "C" {
#include <libavutil/tx.h>
}

namespace {

using namespace bench;

constexpr int kShortest = 2;
constexpr int kLongest = 65536;

// The two precisions of libavutil and of the library under one name.
template <class T>
struct Api;

template <>
struct Api<float> {
  static constexpr const char* type = "f32";
  static constexpr const char* suffix = "_32f";
  static constexpr auto makePlan = tfmgDCT4InitAlloc_32f;
  static constexpr auto freePlan = tfmgDCT4Free_32f;
  static constexpr AVTXType avTx = AV_TX_FLOAT_MDCT;
};

template <>
struct Api<double> {
  static constexpr const char* type = "f64";
  static constexpr const char* suffix = "_64f";
  static constexpr auto makePlan = tfmgDCT4InitAlloc_64f;
  static constexpr auto freePlan = tfmgDCT4Free_64f;
  static constexpr AVTXType avTx = AV_TX_DOUBLE_MDCT;
};

template <class T>
void addFftw(int n, const Samples<T>& src, const Samples<T>& dst, std::vector<Contestant>& contestants) {
  using A = Fftw<T>;
  const auto plan = A::realToRealPlan(n, src.get(), dst.get(), FFTW_REDFT11, FFTW_MEASURE);
  const std::shared_ptr<void> owner(plan, [plan](void*) { A::destroy(plan); });
  contestants.push_back({Role::peer, "fftw-redft11-meas", "", [owner, plan](std::int64_t calls) {
                           for (; calls > 0; --calls) {
                             A::execute(plan);
                           }
                         }});
}

template <class T>
void addAvTx(int n, const Samples<T>& src, const Samples<T>& dst, std::vector<Contestant>& contestants) {
  AVTXContext* context = nullptr;
  av_tx_fn transform = nullptr;
  const T scale = 1;
  if (av_tx_init(&context, &transform, Api<T>::avTx, 1, n, &scale, 0) < 0) {
    return;
  }
  const std::shared_ptr<AVTXContext> owner(context, [](AVTXContext* c) { av_tx_uninit(&c); });
  contestants.push_back({Role::peer, "av_tx", "", [=, from = src.get(), to = dst.get()](std::int64_t calls) {
                           for (; calls > 0; --calls) {
                             transform(owner.get(), to, from, sizeof(T));
                           }
                         }});
}

template <class T>
std::vector<LevelCase> compare(int n, const Contests& contests) {
  using Call = TfmStatus(const T*, T*, TfmgDCT4Plan*);
  const std::string routine = "tfmgDCT4";
  const Samples<T> src(n);
  const Samples<T> dst(n);
  TfmgDCT4Plan* plan = nullptr; // one for all levels, whose plans are the same
  if (Api<T>::makePlan(&plan, n) != tfmStsOk) {
    throw std::runtime_error("no plan of length " + std::to_string(n));
  }
  const std::shared_ptr<TfmgDCT4Plan> owner(plan, Api<T>::freePlan);
  std::vector<Contestant> contestants;
  for (const LevelLibrary& library : contests.libraries()) {
    for (Call* const call : library.find<Call>(routine + Api<T>::suffix)) {
      const auto transform = [call, plan](const T* from, T* to) { call(from, to, plan); };
      addOurs(routine, library.level(), transform, src.get(), dst.get(), static_cast<std::size_t>(n), contestants);
    }
  }
  addFftw(n, src, dst, contestants);
  addAvTx(n, src, dst, contestants);
  return contest("dct4", Api<T>::type, n, contestants, contests.options().rounds);
}

std::vector<int> lengths() {
  std::vector<int> powersOfTwo;
  for (int n = kShortest; n <= kLongest; n *= 2) {
    powersOfTwo.push_back(n);
  }
  return powersOfTwo;
}

template <class T>
void holdAll(Contests& contests) {
  contests.hold("dct4", Api<T>::type, lengths(), [&](int n) { return compare<T>(n, contests); });
}

} // namespace

int main(int argc, char** argv) {
  return runContests(argc, argv, [](Contests& contests) {
    holdAll<float>(contests);
    holdAll<double>(contests);
  });
}
