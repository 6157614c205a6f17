// Measures packings by several seeds beside the default library and writes what the generator takes from there.
//
//   bench_seeds [--passes=COUNT] [--rounds=COUNT] SEEDS SLOWER
//
// writes to the file SEEDS, by level, the kernels for which another seed than the first is faster, and to the file
// SLOWER the routines that take longer than in the default library nevertheless. Only what all passes agree on counts.
#include "level_contest.hpp"
#include "routines/routine.hpp"
#include "tfmgen.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace bench;

constexpr double kBetter = 0.99; // what another seed than the first has to reach
constexpr double kSlower = 1.03;

// A library of packed kernels only.
struct Candidate {
  const char* level;
  const char* seed;
  const char* file;
};
constexpr Candidate kCandidates[] = {BENCH_CANDIDATES};
constexpr const char* kDefault = "default";
constexpr const char* kFirstSeed = kCandidates[0].seed;

// Times against the default library.
struct Ratios {
  double together = 0;
  double dependent = 0;

  [[nodiscard]] double worse() const { return std::max(together, dependent); }
  // Calls back to back count twice. Where one of both is slower, the routine stays as in the default library.
  [[nodiscard]] double logarithm() const {
    return worse() > kSlower ? 0 : (2 * std::log(together) + std::log(dependent)) / 3;
  }
};

// Routines that share a packing, as the formats of a spectrum do. Where a seed has none, the estimate was against it.
using Routine = std::map<std::string, std::vector<Ratios>>; // by seed, a line a pass
using Kernel = std::map<std::string, Routine>;
using Kernels = std::map<std::string, Kernel>; // by the name of the first routine

// How far the destination lies behind the source: half a page and a bit, and a whole page, where each load looks like
// one that waits for the last call's store. The worse of both counts.
constexpr std::array<std::size_t, 2> kDistances{2112, 4096};

template <class T>
std::vector<Contestant> contestants(const std::string& name, const std::vector<LevelLibrary>& libraries, T* src,
                                    T* dst) {
  using Function = TfmStatus(const T*, T*, std::int32_t);
  std::vector<Contestant> all;
  for (const LevelLibrary& library : libraries) {
    if (library.has(name)) {
      for (Function* const function : library.find<Function>(name)) {
        const auto call = [function](const T* from, T* to) { function(from, to, TFM_NO_DIV); };
        addOurs(name, library.level(), call, src, dst, Arrays<T>::kSize, all);
      }
    }
  }
  return all;
}

template <class T>
void measure(const std::string& name, const std::vector<LevelLibrary>& libraries, int rounds, Routine& routine) {
  struct alignas(4096) Memory {
    std::array<T, std::size_t(2) * 4096 / sizeof(T)> elements;
  };
  const auto memory = std::make_unique<Memory>();
  std::map<std::string, Ratios> worse;
  for (const std::size_t distance : kDistances) {
    T* const src = memory->elements.data();
    T* const dst = src + distance / sizeof(T);
    const LevelCase found = contest("", "", 0, contestants(name, libraries, src, dst), rounds).front();
    for (const auto& [seed, time] : found.ours) {
      Ratios& ratios = worse[seed];
      ratios.together = std::max(ratios.together, time / found.ours.at(kDefault));
      ratios.dependent = std::max(ratios.dependent, found.dependent.at(seed) / found.dependent.at(kDefault));
    }
  }
  for (const auto& [seed, ratios] : worse) {
    if (seed != kDefault) {
      routine[seed].push_back(ratios);
    }
  }
}

// Every kernel once.
void pass(const std::vector<LevelLibrary>& libraries, int rounds, Kernels& kernels) {
  const auto plain = [](const std::string& symbol) { return symbol.substr(std::string("tfmg").size()); };
  const std::vector<std::vector<Family>> sharing{{Family::complexForward, Family::complexInverse},
                                                 {Family::realForward},
                                                 {Family::realInverse},
                                                 {Family::hartley}};
  for (const auto& families : sharing) {
    for (int n = kShortest; n <= kLongest; ++n) {
      const auto measureAll = [&]<class T>(T /*sample*/) {
        const std::string kernel = plain(symbol<T>(entries(families[0])[0], n));
        for (const Family family : families) {
          for (const Entry& entry : entries(family)) {
            const std::string name = symbol<T>(entry, n);
            measure<T>(name, libraries, rounds, kernels[kernel][plain(name)]);
          }
        }
      };
      if (families[0] != Family::complexForward) { // 32-bit complex kernels are not packed
        measureAll(float());
      }
      measureAll(double());
    }
  }
}

double logarithm(const Kernel& kernel, const std::string& seed, std::size_t pass) {
  double sum = 0;
  for (const auto& [name, routine] : kernel) {
    const auto found = routine.find(seed);
    sum += found == routine.end() ? 0 : found->second[pass].logarithm();
  }
  return sum / static_cast<double>(kernel.size());
}

// The one whose gain over the first is the greatest in its worst pass.
std::string bestSeed(const Kernel& kernel, const std::vector<LevelLibrary>& libraries, std::size_t passes) {
  std::string best = kFirstSeed;
  double least = std::log(kBetter);
  for (const LevelLibrary& library : libraries) {
    double worst = -std::numeric_limits<double>::infinity();
    for (std::size_t p = 0; p < passes && library.level() != kDefault; ++p) {
      worst = std::max(worst, logarithm(kernel, library.level(), p) - logarithm(kernel, kFirstSeed, p));
    }
    if (library.level() != kDefault && worst < least) {
      least = worst;
      best = library.level();
    }
  }
  return best;
}

bool isSlower(const std::vector<Ratios>& passes) {
  return std::ranges::all_of(passes, [](const Ratios& ratios) { return ratios.together > kSlower; }) ||
         std::ranges::all_of(passes, [](const Ratios& ratios) { return ratios.dependent > kSlower; });
}

struct Options {
  std::size_t passes = 3;
  int rounds = 40;
  std::vector<std::string> files; // and levels behind them
};

Options parse(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const std::string value = argument.substr(argument.find('=') + 1);
    if (argument.starts_with("--passes=")) {
      options.passes = std::stoul(value);
    } else if (argument.starts_with("--rounds=")) {
      options.rounds = std::stoi(value);
    } else {
      options.files.push_back(argument);
    }
  }
  if (options.files.size() != 2) {
    throw std::runtime_error("usage: bench_seeds [--passes=COUNT] [--rounds=COUNT] SEEDS SLOWER");
  }
  return options;
}

std::vector<LevelLibrary> candidates(const std::string& level) {
  std::vector<LevelLibrary> libraries = levelLibraries({kDefault});
  for (const Candidate& candidate : kCandidates) {
    if (candidate.level == level) {
      libraries.emplace_back(candidate.seed, candidate.file);
    }
  }
  return libraries;
}

void write(const Options& options) {
  std::ofstream seeds(options.files[0]);
  std::ofstream slower(options.files[1]);
  for (const auto& [level, enumerator] : {std::pair("x86-64-v3", "v3"), std::pair("x86-64-v4", "v4")}) {
    const std::vector<LevelLibrary> libraries = candidates(level);
    if (libraries.size() == 1) { // this level is not built
      continue;
    }
    Kernels kernels;
    for (std::size_t p = 0; p < options.passes; ++p) {
      pass(libraries, options.rounds, kernels);
      std::cerr << level << ": pass " << p + 1 << " of " << options.passes << '\n';
    }
    for (const auto& [name, kernel] : kernels) {
      const std::string seed = bestSeed(kernel, libraries, options.passes);
      if (seed != kFirstSeed) {
        seeds << "{{Level::" << enumerator << ", \"" << name << "\"}, " << seed << "},\n";
      }
      for (const auto& [routine, times] : kernel) {
        if (const auto found = times.find(seed); found != times.end() && isSlower(found->second)) {
          slower << "{Level::" << enumerator << ", \"" << routine << "\"},\n";
        }
      }
    }
  }
  if (!seeds.flush() || !slower.flush()) {
    throw std::runtime_error("cannot write " + options.files[0] + " or " + options.files[1]);
  }
}

} // namespace

int main(int argc, char** argv) {
  try {
    write(parse(argc, argv));
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "bench_seeds: " << error.what() << '\n';
    return 1;
  }
}
