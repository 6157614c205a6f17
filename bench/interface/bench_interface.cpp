// Times what tfmgen.hpp and tfmbatch.hpp cost beside the bare call of the C function that they come to: every function,
// with lengths of compile time and of run time, in the forms that throw and in those that do not.
//
//   bench_interface [--benchmark_filter=REGEX] [other options of Google Benchmark]
//
// Prints the least times of all repetitions, which take turns in random order, and the mean difference of every form
// over all functions. Ends with failure where that is more than a nanosecond. Single differences of calls of 40 ns, as
// batches are, vary by more than that from run to run, in favour of either side.

#include <benchmark/benchmark.h>
#include <tfmbatch.hpp>

#include <algorithm>
#include <array>
#include <complex>
#include <cstdio>
#include <exception>
#include <limits>
#include <map>
#include <numeric>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using tfmgen::Format;

constexpr double kBar = 1; // nanoseconds
constexpr std::size_t kLength = 16;
constexpr std::int32_t kLengthOfRunTime = kLength;
constexpr std::int32_t kOrder = 4;
constexpr std::size_t kFrames = 4;

// The compiler does not know what comes back: where arrays are, how long they are.
template <class T>
T unknown(T value) {
  benchmark::DoNotOptimize(value);
  return value;
}

template <class Call>
void add(const std::string& name, const Call& call) {
  benchmark::RegisterBenchmark(name.c_str(), [call](benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
      call();
      benchmark::ClobberMemory();
    }
  });
}

// Both sides of a comparison, told apart by the end of their names.
template <class C, class Cpp>
void compare(const std::string& name, const C& c, const Cpp& cpp) {
  constexpr bool throws = std::is_void_v<decltype(cpp())>;
  const std::string form = name + (throws ? ", throws" : "");
  add(form + "/C", [c] { benchmark::DoNotOptimize(c()); });
  if constexpr (throws) {
    add(form + "/C++", cpp);
  } else {
    add(form + "/C++", [cpp] { benchmark::DoNotOptimize(cpp()); });
  }
}

template <class Sample>
using Routine = TfmStatus(const Sample*, Sample*, std::int32_t);
template <class Sample>
using General = TfmStatus(const Sample*, Sample*, std::int32_t, std::int32_t);
template <class Sample>
using OfBatch = TfmStatus(const Sample*, TfmbLayout, Sample*, TfmbLayout, std::int32_t, std::int64_t, std::int32_t);

// Source and destination for kFrames frames, the same for C and for C++, which live until the benchmarks have run. What
// a caller would have at hand is read from memory: spans and descriptions of batches.
template <class In, std::size_t n, class Out, std::size_t m>
struct Arrays {
  using InFrame = std::array<In, n>;
  using OutFrame = std::array<Out, m>;
  static inline std::array<InFrame, kFrames> in{};
  static inline std::array<OutFrame, kFrames> out{};
  static inline const std::span<const In> inSpan{in[0]};
  static inline const std::span<Out> outSpan{out[0]};
  static inline const std::span<const InFrame> inFrames{in};
  static inline const std::span<OutFrame> outFrames{out};
  static inline const tfmgen::Frames<const In> inBatch{in[0].data(), {1, n}, n, kFrames};
  static inline const tfmgen::Frames<Out> outBatch{out[0].data(), {1, m}, m, kFrames};
};

// What is there, where the compiler cannot see it.
template <class T>
T& from(T& object) {
  return *unknown(&object);
}

template <class Sample, class T>
auto* pointer(T* data) {
  return reinterpret_cast<std::conditional_t<std::is_const_v<T>, const Sample, Sample>*>(data);
}

// A function of the headers, called as f(in, out), beside the routine of its length, the general entry and the entry
// for batches.
template <class Sample, Routine<Sample> routine, General<Sample> general, OfBatch<Sample> ofBatch, class A,
          class Function>
void compareCalls(const std::string& name, const Function& f) {
  compare(
      name + ", fixed length",
      [] {
        return routine(pointer<Sample>(from(std::as_const(A::in[0])).data()), pointer<Sample>(from(A::out[0]).data()),
                       TFM_NO_DIV);
      },
      [f] { return f(from(std::as_const(A::in[0])), from(A::out[0])); });
  compare(
      name + ", length of run time",
      [] {
        return general(pointer<Sample>(from(A::inSpan).data()), pointer<Sample>(from(A::outSpan).data()),
                       from(kLengthOfRunTime), TFM_NO_DIV);
      },
      [f] { return f(from(A::inSpan), from(A::outSpan)); });
  compare(
      name + ", batch of arrays",
      [] {
        const auto& in = from(A::inFrames);
        return ofBatch(pointer<Sample>(in.front().data()), {1, std::tuple_size_v<typename A::InFrame>},
                       pointer<Sample>(from(A::outFrames).front().data()), {1, std::tuple_size_v<typename A::OutFrame>},
                       kLength, static_cast<std::int64_t>(in.size()), TFM_NO_DIV);
      },
      [f] { return f(from(A::inFrames), from(A::outFrames)); });
  compare(
      name + ", batch of Frames",
      [] {
        const auto& in = from(A::inBatch);
        const auto& out = from(A::outBatch);
        return ofBatch(pointer<Sample>(in.data()), in.layout(), pointer<Sample>(out.data()), out.layout(),
                       from(kLengthOfRunTime), static_cast<std::int64_t>(in.count()), TFM_NO_DIV);
      },
      [f] { return f(from(A::inBatch), from(A::outBatch)); });
}

// Both forms of a function.
template <class Sample, Routine<Sample> routine, General<Sample> general, OfBatch<Sample> ofBatch, class A,
          class Throwing, class Quiet>
void compareForms(const std::string& name, const Throwing& throwing, const Quiet& quiet) {
  compareCalls<Sample, routine, general, ofBatch, A>(name, throwing);
  compareCalls<Sample, routine, general, ofBatch, A>(name, quiet);
}

constexpr auto kDft = [](const auto& in, auto&& out) { tfmgen::dft(in, out); };
constexpr auto kTryDft = [](const auto& in, auto&& out) { return tfmgen::tryDft(in, out); };
constexpr auto kInverse = [](const auto& in, auto&& out) { tfmgen::inverseDft(in, out); };
constexpr auto kTryInverse = [](const auto& in, auto&& out) { return tfmgen::tryInverseDft(in, out); };
constexpr auto kHartley = [](const auto& in, auto&& out) { tfmgen::hartley(in, out); };
constexpr auto kTryHartley = [](const auto& in, auto&& out) { return tfmgen::tryHartley(in, out); };
template <Format format>
constexpr auto kReal = [](const auto& in, auto&& out) { tfmgen::realDft<format>(in, out); };
template <Format format>
constexpr auto kTryReal = [](const auto& in, auto&& out) { return tfmgen::tryRealDft<format>(in, out); };
template <Format format>
constexpr auto kInverseReal = [](const auto& in, auto&& out) { tfmgen::inverseRealDft<format>(in, out); };
template <Format format>
constexpr auto kTryInverseReal = [](const auto& in, auto&& out) { return tfmgen::tryInverseRealDft<format>(in, out); };

template <class T, std::size_t n, std::size_t m>
using RealArrays = Arrays<T, n, T, m>;
constexpr std::size_t kCcs = tfmgen::spectrumLength(Format::ccs, kLength);

void compareDft() {
  using F = Arrays<std::complex<float>, kLength, std::complex<float>, kLength>;
  compareForms<Tfm32fc, tfmgDFTFwd_CToC_16_32fc, tfmgDFTFwd_CToC_32fc, tfmbDFTFwd_CToC_32fc, F>("dft f32", kDft,
                                                                                                kTryDft);
  compareForms<Tfm32fc, tfmgDFTInv_CToC_16_32fc, tfmgDFTInv_CToC_32fc, tfmbDFTInv_CToC_32fc, F>("inverseDft f32",
                                                                                                kInverse, kTryInverse);
  using D = Arrays<std::complex<double>, kLength, std::complex<double>, kLength>;
  compareForms<Tfm64fc, tfmgDFTFwd_CToC_16_64fc, tfmgDFTFwd_CToC_64fc, tfmbDFTFwd_CToC_64fc, D>("dft f64", kDft,
                                                                                                kTryDft);
  compareForms<Tfm64fc, tfmgDFTInv_CToC_16_64fc, tfmgDFTInv_CToC_64fc, tfmbDFTInv_CToC_64fc, D>("inverseDft f64",
                                                                                                kInverse, kTryInverse);
}

template <class T, Format format, std::size_t m, Routine<T> to, General<T> toGeneral, OfBatch<T> toBatch,
          Routine<T> from, General<T> fromGeneral, OfBatch<T> fromBatch>
void compareReal(const std::string& name) {
  compareForms<T, to, toGeneral, toBatch, RealArrays<T, kLength, m>>("realDft " + name, kReal<format>,
                                                                     kTryReal<format>);
  compareForms<T, from, fromGeneral, fromBatch, RealArrays<T, m, kLength>>(
      "inverseRealDft " + name, kInverseReal<format>, kTryInverseReal<format>);
}

void compareRealDft() {
  compareReal<float, Format::ccs, kCcs, tfmgDFTFwd_RToCCS_16_32f, tfmgDFTFwd_RToCCS_32f, tfmbDFTFwd_RToCCS_32f,
              tfmgDFTInv_CCSToR_16_32f, tfmgDFTInv_CCSToR_32f, tfmbDFTInv_CCSToR_32f>("CCS f32");
  compareReal<float, Format::pack, kLength, tfmgDFTFwd_RToPack_16_32f, tfmgDFTFwd_RToPack_32f, tfmbDFTFwd_RToPack_32f,
              tfmgDFTInv_PackToR_16_32f, tfmgDFTInv_PackToR_32f, tfmbDFTInv_PackToR_32f>("Pack f32");
  compareReal<float, Format::perm, kLength, tfmgDFTFwd_RToPerm_16_32f, tfmgDFTFwd_RToPerm_32f, tfmbDFTFwd_RToPerm_32f,
              tfmgDFTInv_PermToR_16_32f, tfmgDFTInv_PermToR_32f, tfmbDFTInv_PermToR_32f>("Perm f32");
  compareReal<double, Format::ccs, kCcs, tfmgDFTFwd_RToCCS_16_64f, tfmgDFTFwd_RToCCS_64f, tfmbDFTFwd_RToCCS_64f,
              tfmgDFTInv_CCSToR_16_64f, tfmgDFTInv_CCSToR_64f, tfmbDFTInv_CCSToR_64f>("CCS f64");
  compareReal<double, Format::pack, kLength, tfmgDFTFwd_RToPack_16_64f, tfmgDFTFwd_RToPack_64f, tfmbDFTFwd_RToPack_64f,
              tfmgDFTInv_PackToR_16_64f, tfmgDFTInv_PackToR_64f, tfmbDFTInv_PackToR_64f>("Pack f64");
  compareReal<double, Format::perm, kLength, tfmgDFTFwd_RToPerm_16_64f, tfmgDFTFwd_RToPerm_64f, tfmbDFTFwd_RToPerm_64f,
              tfmgDFTInv_PermToR_16_64f, tfmgDFTInv_PermToR_64f, tfmbDFTInv_PermToR_64f>("Perm f64");
}

void compareHartley() {
  compareForms<float, tfmgHartley_16_32f, tfmgHartley_32f, tfmbHartley_32f, RealArrays<float, kLength, kLength>>(
      "hartley f32", kHartley, kTryHartley);
  compareForms<double, tfmgHartley_16_64f, tfmgHartley_64f, tfmbHartley_64f, RealArrays<double, kLength, kLength>>(
      "hartley f64", kHartley, kTryHartley);
}

// `routine` is that of order kOrder, which takes no buffer; calls with a length of run time take one.
template <class T, auto routine, auto general>
void compareWalshHadamard(const std::string& name) {
  using A = RealArrays<T, kLength, kLength>;
  static tfmgen::WalshHadamardBuffer buffer;
  const auto fixed = [] { return routine(from(A::in[0]).data(), from(A::out[0]).data(), TFM_NO_DIV, nullptr); };
  const auto ofRunTime = [] {
    return general(from(A::in[0]).data(), from(A::out[0]).data(), from(kOrder), TFM_NO_DIV, unknown(buffer.data()));
  };
  compare(name + ", fixed length", fixed, [] { tfmgen::walshHadamard(from(A::in[0]), from(A::out[0])); });
  compare(name + ", fixed length", fixed, [] { return tfmgen::tryWalshHadamard(from(A::in[0]), from(A::out[0])); });
  compare(name + ", length of run time", ofRunTime,
          [] { tfmgen::walshHadamard(from(A::inSpan), from(A::outSpan), buffer); });
  compare(name + ", length of run time", ofRunTime,
          [] { return tfmgen::tryWalshHadamard(from(A::inSpan), from(A::outSpan), buffer); });
}

template <class T, auto init, auto transform>
void compareDct4(const std::string& name) {
  using A = RealArrays<T, kLength, kLength>;
  static tfmgen::Dct4<T> ours(kLength);
  static TfmgDCT4Plan* plan = nullptr; // as long as the program
  tfmgen::detail::check(tfmgen::Status{init(&plan, kLength)});
  const auto c = [] { return transform(from(A::in[0]).data(), from(A::out[0]).data(), unknown(plan)); };
  compare(name + ", arrays", c, [] { ours(from(A::in[0]), from(A::out[0])); });
  compare(name + ", arrays", c, [] { return ours.tryTransform(from(A::in[0]), from(A::out[0])); });
  compare(name + ", spans", c, [] { ours(from(A::inSpan), from(A::outSpan)); });
  compare(name + ", spans", c, [] { return ours.tryTransform(from(A::inSpan), from(A::outSpan)); });
}

// Keeps the least time of every benchmark.
class LeastTimes : public benchmark::BenchmarkReporter {
public:
  bool ReportContext(const Context& /*context*/) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration) {
        double& least =
            times_.try_emplace(run.run_name.function_name, std::numeric_limits<double>::max()).first->second;
        least = std::min(least, run.GetAdjustedCPUTime());
      }
    }
  }

  // Prints all comparisons and returns the worst mean difference of a form.
  [[nodiscard]] double print() const {
    std::map<std::string, std::vector<double>> byForm;
    std::printf("%-48s %8s %8s %11s\n", "nanoseconds a call", "C", "C++", "difference");
    for (const auto& [name, cpp] : times_) {
      if (const std::size_t end = name.find("/C++"); end != std::string::npos) {
        const std::string what = name.substr(0, end);
        const double c = times_.at(what + "/C");
        std::printf("%-48s %8.2f %8.2f %+11.2f\n", what.c_str(), c, cpp, cpp - c);
        byForm[what.substr(what.find(", ") + 2)].push_back(cpp - c);
      }
    }
    std::printf("\n%-48s %8s %8s %8s\n", "difference by form", "least", "mean", "most");
    double worst = 0;
    for (const auto& [form, differences] : byForm) {
      const auto [least, most] = std::minmax_element(differences.begin(), differences.end());
      const double mean =
          std::accumulate(differences.begin(), differences.end(), 0.0) / static_cast<double>(differences.size());
      std::printf("%-48s %+8.2f %+8.2f %+8.2f\n", form.c_str(), *least, mean, *most);
      worst = std::max(worst, mean);
    }
    return worst;
  }

private:
  std::map<std::string, double> times_;
};

int run(int argc, char** argv) {
  // What the command line says comes later and counts.
  std::vector<std::string> options{"", "--benchmark_enable_random_interleaving=true", "--benchmark_repetitions=25",
                                   "--benchmark_min_time=0.002"};
  options.insert(options.end(), argv + 1, argv + argc);
  std::vector<char*> arguments(options.size());
  std::ranges::transform(options, arguments.begin(), [](std::string& option) { return option.data(); });
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  compareDft();
  compareRealDft();
  compareHartley();
  compareWalshHadamard<float, tfmgWHT_4_32f, tfmgWHT_32f>("walshHadamard f32");
  compareWalshHadamard<double, tfmgWHT_4_64f, tfmgWHT_64f>("walshHadamard f64");
  compareDct4<float, tfmgDCT4InitAlloc_32f, tfmgDCT4_32f>("Dct4 f32");
  compareDct4<double, tfmgDCT4InitAlloc_64f, tfmgDCT4_64f>("Dct4 f64");
  LeastTimes times;
  benchmark::RunSpecifiedBenchmarks(&times);
  return times.print() <= kBar ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
