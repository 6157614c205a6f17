// The DCT-IV beside other libraries' in one run: FFTW's REDFT11, planned by measurement, and the half-length inverse
// MDCT of libavutil, which is a DCT-IV with its output in reverse order. Prints the usual report, then a table of
// ratios, worst first.
#include "dct4.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <fftw3.h>
extern "C" {
#include <libavutil/mem.h>
#include <libavutil/tx.h>
}

namespace {

using tfmgen::test::Dct4;

constexpr int kShortest = 2;
constexpr int kLongest = 65536;

// 64-byte aligned samples. A small signal, so that repeated calls stay finite.
template <class T>
class Samples {
public:
  explicit Samples(int count) : data_(static_cast<T*>(fftw_malloc(static_cast<std::size_t>(count) * sizeof(T)))) {
    for (int i = 0; i < count; ++i) {
      data_.get()[i] = static_cast<T>(i % 17 - 8) / 16;
    }
  }
  [[nodiscard]] T* get() const { return data_.get(); }

private:
  struct Free {
    void operator()(T* block) const { fftw_free(block); }
  };
  std::unique_ptr<T, Free> data_;
};

// Times call(src, dst).
template <class T, class Call>
void measure(benchmark::State& state, int n, const Call& call) {
  const Samples<T> src(n);
  const Samples<T> dst(n);
  for ([[maybe_unused]] auto _ : state) {
    call(src.get(), dst.get());
    benchmark::ClobberMemory();
  }
}

template <class T>
void runTfmgen(benchmark::State& state, int n) {
  TfmgDCT4Plan* plan = nullptr;
  Dct4<T>::initAlloc(&plan, n);
  measure<T>(state, n, [plan](const T* src, T* dst) { Dct4<T>::run(src, dst, plan); });
  Dct4<T>::free(plan);
}

template <class T>
void runFftw(benchmark::State& state, int n) {
  const Samples<T> src(n);
  const Samples<T> dst(n);
  if constexpr (std::is_same_v<T, float>) {
    fftwf_plan plan = fftwf_plan_r2r_1d(n, src.get(), dst.get(), FFTW_REDFT11, FFTW_MEASURE);
    measure<T>(state, n, [plan](T* from, T* to) { fftwf_execute_r2r(plan, from, to); });
    fftwf_destroy_plan(plan);
  } else {
    fftw_plan plan = fftw_plan_r2r_1d(n, src.get(), dst.get(), FFTW_REDFT11, FFTW_MEASURE);
    measure<T>(state, n, [plan](T* from, T* to) { fftw_execute_r2r(plan, from, to); });
    fftw_destroy_plan(plan);
  }
}

template <class T>
void runAvTx(benchmark::State& state, int n) {
  AVTXContext* context = nullptr;
  av_tx_fn transform = nullptr;
  const T scale = 1;
  const AVTXType type = std::is_same_v<T, float> ? AV_TX_FLOAT_MDCT : AV_TX_DOUBLE_MDCT;
  if (av_tx_init(&context, &transform, type, 1, n, &scale, 0) < 0) {
    state.SkipWithError("not offered");
    return;
  }
  measure<T>(state, n, [=](T* src, T* dst) { transform(context, dst, src, sizeof(T)); });
  av_tx_uninit(&context);
}

// "type n"
std::string caseName(const std::string& type, const std::string& n) {
  std::string name = type;
  name += ' ';
  return name += n;
}

// Least time of every routine, by case name and routine.
using Times = std::map<std::string, std::map<std::string, double>>;

// Keeps the least time over the repetitions of what it prints.
class LeastTimes : public benchmark::ConsoleReporter {
public:
  LeastTimes() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.error_occurred || run.run_type != Run::RT_Iteration) {
        continue;
      }
      std::istringstream name(run.run_name.function_name);
      std::string type;
      std::string n;
      std::string routine;
      std::getline(name, type, '/');
      std::getline(name, n, '/');
      std::getline(name, routine, '/');
      const double time = run.GetAdjustedCPUTime();
      auto& least = times_[caseName(type, n)];
      const auto found = least.try_emplace(routine, time).first;
      found->second = std::min(found->second, time);
    }
  }
  [[nodiscard]] const Times& times() const { return times_; }

private:
  Times times_;
};

// Cycles on a reference machine of the best library held to 128-bit vectors, and of a library that can be run here.
struct Mark {
  double best = 0;
  std::string peer;
  double peerCycles = 0;
};

std::map<std::string, Mark> readMarks(const char* file) {
  std::map<std::string, Mark> marks;
  std::ifstream lines(file);
  std::string type;
  std::string n;
  Mark mark;
  while (lines >> type >> n >> mark.best >> mark.peer >> mark.peerCycles) {
    marks[caseName(type, n)] = mark;
  }
  return marks;
}

// Time over the faster peer's, and over the mark: the reference machine's best, carried over by the peer that both ran.
void printRatios(const Times& times, const std::map<std::string, Mark>& marks) {
  struct Row {
    std::string name;
    double time;
    double fftw;
    double avTx;
    double ratio;
    double markRatio;
  };
  std::vector<Row> rows;
  for (const auto& [name, routines] : times) {
    const auto time = [&routines = routines](const std::string& routine) {
      const auto found = routines.find(routine);
      return found == routines.end() ? 0.0 : found->second;
    };
    Row row{name, time("tfmgen"), time("fftw"), time("av_tx"), 0, 0};
    const double peer = row.avTx == 0 ? row.fftw : std::min(row.fftw, row.avTx);
    row.ratio = row.time / peer;
    if (const auto mark = marks.find(name); mark != marks.end()) {
      row.markRatio = row.time / (mark->second.best * time(mark->second.peer) / mark->second.peerCycles);
    }
    rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) { return a.ratio > b.ratio; });
  std::printf("\nTime over the faster peer's, worst first (below 1: faster); over the 128-bit mark\n"
              "%-12s %12s %12s %12s %8s %8s\n",
              "type n", "tfmgen ns", "fftw ns", "av_tx ns", "ratio", "mark");
  for (const Row& row : rows) {
    std::printf("%-12s %12.1f %12.1f %12.1f %8.2f %8.2f\n", row.name.c_str(), row.time, row.fftw, row.avTx, row.ratio,
                row.markRatio);
  }
}

template <class T>
void registerAll(const std::string& type) {
  for (int n = kShortest; n <= kLongest; n *= 2) {
    const std::string name = type + '/' + std::to_string(n);
    benchmark::RegisterBenchmark((name + "/tfmgen").c_str(), runTfmgen<T>, n);
    benchmark::RegisterBenchmark((name + "/fftw").c_str(), runFftw<T>, n);
    benchmark::RegisterBenchmark((name + "/av_tx").c_str(), runAvTx<T>, n);
  }
}

} // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 1;
  }
  registerAll<float>("f32");
  registerAll<double>("f64");
  LeastTimes reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  printRatios(reporter.times(), readMarks(BENCH_DCT4_MARKS));
  return 0;
}
