// Times every DFT and Hartley routine of the library beside the peers that were found, and prints the ratios.
//
//   bench_dft [--rounds=COUNT] [--csv=FILE] [--marks=FILE] [--benchmark_filter=REGEX ...]
//
// Cases are named family/type/length/iterations:COUNT: --benchmark_filter=cfwd/f32/ takes the forward complex
// transforms of floats, --benchmark_filter=/64/ takes length 64 of everything.

#include "report.hpp"
#include "tfmgen.h"

#include <benchmark/benchmark.h>

#include <exception>
#include <fstream>
#include <iostream>

namespace {

using namespace bench;

struct Options {
  std::int64_t rounds = 200;
  std::string csv;
  std::string marks = BENCH_MARKS_FILE;
};

// Takes the options of this program from the arguments that the benchmark library has left. False when one is unknown.
bool parse(int argc, char** argv, Options& options) {
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const std::string value = argument.substr(argument.find('=') + 1);
    const std::int64_t number = std::strtoll(value.c_str(), nullptr, 10);
    if (argument.starts_with("--rounds=") && number > 0) {
      options.rounds = number;
    } else if (argument.starts_with("--csv=")) {
      options.csv = value;
    } else if (argument.starts_with("--marks=")) {
      options.marks = value;
    } else {
      std::cerr << "unknown argument: " << argument << '\n';
      return false;
    }
  }
  return true;
}

// One iteration is one round of all routines of the case.
template <class T>
void run(benchmark::State& state, Family family, int n, const CoreCycles& counter, std::vector<Case>& cases) {
  Contest<T> contest(family, n);
  for ([[maybe_unused]] auto iteration : state) {
    contest.round(counter);
  }
  cases.push_back(contest.result());
  for (const auto& side : {cases.back().ours, cases.back().peers}) {
    for (const Measurement& measurement : side) {
      state.counters[measurement.name] = measurement.nanoseconds;
    }
  }
}

template <class T>
void registerCases(std::int64_t rounds, const CoreCycles& counter, std::vector<Case>& cases) {
  for (const Family family : kFamilies) {
    for (int n = kShortest; n <= kLongest; ++n) {
      const std::string name =
          std::string(shortName(family)) + '/' + std::string(kTypeName<T>) + '/' + std::to_string(n);
      benchmark::RegisterBenchmark(name.c_str(), [=, &counter, &cases](benchmark::State& state) {
        run<T>(state, family, n, counter, cases);
      })->Iterations(rounds);
    }
  }
}

// Prints the machine, then leaves the results to the table.
class ContextReporter : public benchmark::BenchmarkReporter {
public:
  bool ReportContext(const Context& context) override {
    PrintBasicContext(&std::cerr, context);
    return true;
  }
  void ReportRuns(const std::vector<Run>& /*runs*/) override {}
};

void runAll(const Options& options) {
  const Marks marks = readMarks(options.marks);
  std::ofstream csv;
  if (!options.csv.empty()) {
    csv.exceptions(std::ios::badbit | std::ios::failbit); // before the long run, not after it
    csv.open(options.csv);
  }
  const CoreCycles counter;
  std::vector<Case> cases;
  registerCases<float>(options.rounds, counter, cases);
  registerCases<double>(options.rounds, counter, cases);
  ContextReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);

  const std::vector<Row> table = rows(cases, marks);
  std::cout << "library version " << tfmgenGetLibVersion()->version << ", time stamp counter at "
            << ticksPerNanosecond() << " GHz\n";
  printTable(std::cout, table, counter.available());
  printSummary(std::cout, table);
  if (csv.is_open()) {
    writeCsv(csv, table);
    csv.flush();
  }
}

} // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  Options options;
  if (!parse(argc, argv, options)) {
    return 2;
  }
  try {
    runAll(options);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
