// Times the DCT-IV of every length, in the library of every level, beside other libraries' in one run: FFTW's REDFT11,
// planned by measurement, and the half-length inverse MDCT of libavutil, which is a DCT-IV with its output in reverse
// order.
//
//   bench_dct4 [--rounds=COUNT] [LEVEL...]

#include "level_contest.hpp"
#include "samples.hpp"
#include "tfmgen.h"

#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>

#include <fftw3.h>
extern "C" {
#include <libavutil/tx.h>
}

namespace {

using namespace bench;

constexpr int kShortest = 2;
constexpr int kLongest = 65536;

// The two precisions of FFTW and of the library under one name.
template <class T>
struct Api;

template <>
struct Api<float> {
  static constexpr const char* type = "f32";
  static constexpr const char* suffix = "_32f";
  static constexpr auto makePlan = tfmgDCT4InitAlloc_32f;
  static constexpr auto freePlan = tfmgDCT4Free_32f;
  static constexpr auto fftwPlan = fftwf_plan_r2r_1d;
  static constexpr auto fftwExecute = fftwf_execute;
  static constexpr auto fftwDestroy = fftwf_destroy_plan;
  static constexpr AVTXType avTx = AV_TX_FLOAT_MDCT;
};

template <>
struct Api<double> {
  static constexpr const char* type = "f64";
  static constexpr const char* suffix = "_64f";
  static constexpr auto makePlan = tfmgDCT4InitAlloc_64f;
  static constexpr auto freePlan = tfmgDCT4Free_64f;
  static constexpr auto fftwPlan = fftw_plan_r2r_1d;
  static constexpr auto fftwExecute = fftw_execute;
  static constexpr auto fftwDestroy = fftw_destroy_plan;
  static constexpr AVTXType avTx = AV_TX_DOUBLE_MDCT;
};

template <class T>
void addFftw(int n, const Samples<T>& src, const Samples<T>& dst, std::vector<Contestant>& contestants) {
  using A = Api<T>;
  const auto plan = A::fftwPlan(n, src.get(), dst.get(), FFTW_REDFT11, FFTW_MEASURE);
  const std::shared_ptr<void> owner(plan, [plan](void*) { A::fftwDestroy(plan); });
  contestants.push_back({"fftw-redft11-meas", [owner, plan](std::int64_t calls) {
                           for (; calls > 0; --calls) {
                             A::fftwExecute(plan);
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
  contestants.push_back({"av_tx", [=, from = src.get(), to = dst.get()](std::int64_t calls) {
                           for (; calls > 0; --calls) {
                             transform(owner.get(), to, from, sizeof(T));
                           }
                         }});
}

template <class T>
LevelCase compare(int n, int rounds, const std::vector<LevelLibrary>& libraries) {
  using Call = TfmStatus(const T*, T*, TfmgDCT4Plan*);
  const Samples<T> src(n);
  const Samples<T> dst(n);
  TfmgDCT4Plan* plan = nullptr; // one for all levels, whose plans are the same
  if (Api<T>::makePlan(&plan, n) != tfmStsOk) {
    throw std::runtime_error("no plan of length " + std::to_string(n));
  }
  std::vector<Contestant> contestants;
  for (const LevelLibrary& library : libraries) {
    for (Call* const call : library.find<Call>(std::string("tfmgDCT4") + Api<T>::suffix)) {
      contestants.push_back({library.level(), [=, from = src.get(), to = dst.get()](std::int64_t calls) {
                               for (; calls > 0; --calls) {
                                 call(from, to, plan);
                               }
                             }});
    }
  }
  addFftw(n, src, dst, contestants);
  addAvTx(n, src, dst, contestants);
  src.fill(); // planning writes to the arrays
  LevelCase result{Api<T>::type, n, leastTimes(contestants, rounds)};
  Api<T>::freePlan(plan);
  return result;
}

} // namespace

int main(int argc, char** argv) {
  const ContestOptions options = parseContest(argc, argv);
  try {
    const std::vector<LevelLibrary> libraries = levelLibraries(options.levels);
    std::vector<LevelCase> cases;
    for (int n = kShortest; n <= kLongest; n *= 2) {
      cases.push_back(compare<float>(n, options.rounds, libraries));
    }
    for (int n = kShortest; n <= kLongest; n *= 2) {
      cases.push_back(compare<double>(n, options.rounds, libraries));
    }
    printContest(cases, libraries, BENCH_DCT4_MARKS);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
