// Times batches beside single calls and FFTW's plans for many transforms, nanoseconds a frame.
//
//   bench_batch [--families=cf32,cf64,...] [--layouts=contiguous,interleaved] [--counts=1,4,...] [--lengths=2,3,...]
//               [--rounds=COUNT] [--patient] [--marks=FILE] [--plans=DIRECTORY]
//
// --plans keeps FFTW's plans in a directory for the next run, since planning takes most of the time.
//
// Prints a table as CSV: family, layout, count, n, a column for each contender, and the mark: what the best of a dozen
// open libraries took on another machine, carried here by the times there and here of FFTW planned in the same way.
// report.py makes summaries and plots of such tables.

#include "contenders.hpp"
#include "timing.hpp"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <limits>
#include <map>
#include <sstream>

namespace {

using namespace bench;

std::vector<std::string> split(const std::string& text) {
  std::vector<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in, part, ',');) {
    parts.push_back(part);
  }
  return parts;
}

struct Options {
  std::map<std::string, std::vector<std::string>> lists{
      {"families", {"cf32", "cf64", "rf32", "rf64", "ri32", "ri64", "rh32", "rh64"}},
      {"layouts", {"contiguous", "interleaved"}},
      {"counts", {"1", "4", "16", "64", "1024"}},
      {"lengths", {"2",  "3",  "4",  "5",  "7",  "8",  "11", "12", "13", "16", "17", "20", "24", "25", "31",
                   "32", "36", "40", "46", "47", "48", "49", "52", "53", "54", "59", "60", "61", "64"}},
      {"rounds", {"15"}},
      {"marks", {BENCH_MARKS_FILE}},
      {"plans", {}}};
  bool isPatient = false;
};

bool parse(const std::vector<std::string>& arguments, Options& options) {
  for (const std::string& argument : arguments) {
    const std::size_t equals = argument.find('=');
    if (argument == "--patient") {
      options.isPatient = true;
    } else if (argument.starts_with("--") && equals != std::string::npos &&
               options.lists.contains(argument.substr(2, equals - 2))) {
      options.lists[argument.substr(2, equals - 2)] = split(argument.substr(equals + 1));
    } else {
      std::cerr << "unknown argument: " << argument << '\n';
      return false;
    }
  }
  return true;
}

// By family,layout,count,n: the best peer's time there over FFTW's time there.
std::map<std::string, double> readMarks(const std::string& path) {
  std::map<std::string, double> marks;
  std::ifstream in(path);
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    const std::vector<std::string> fields = split(line);
    marks[fields[0] + ',' + fields[1] + ',' + fields[2] + ',' + fields[3]] =
        std::stod(fields[6]) / std::stod(fields[4]);
  }
  return marks;
}

Family familyOf(const std::string& name) {
  const std::map<std::string, Family> names{{"cf", Family::complexForward},
                                            {"rf", Family::realForward},
                                            {"ri", Family::realInverse},
                                            {"rh", Family::hartley}};
  return names.at(name.substr(0, 2));
}

constexpr double kBlockNanoseconds = 20000; // long against the clock's own cost, short against a time slice

// Contenders take turns in blocks, so that a change of the clock or a neighbour on the machine meets all of them. The
// least of all rounds leaves out what other programs cost.
template <class T>
std::vector<double> times(const Arena<T>& arena, const std::vector<Contender>& contenders, int rounds) {
  const auto timed = [](const Contender& contender, int runs) {
    const std::uint64_t start = timeStamp();
    for (int i = 0; i < runs; ++i) {
      contender.run();
    }
    return static_cast<double>(timeStamp() - start) / ticksPerNanosecond() / runs;
  };
  std::vector<int> runs;
  for (const Contender& contender : contenders) {
    contender.run();
    runs.push_back(static_cast<int>(kBlockNanoseconds / timed(contender, 3)) + 1);
  }
  std::vector<double> least(contenders.size(), std::numeric_limits<double>::infinity());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < contenders.size(); ++i) {
      arena.restore();
      timed(contenders[i], runs[i] / 4 + 1);
      least[i] = std::min(least[i], timed(contenders[i], runs[i]));
    }
  }
  return least;
}

constexpr int kMostPatientFrames = 64;

bool hasPatient(const std::vector<Contender>& contenders) {
  return std::any_of(contenders.begin(), contenders.end(), [](const Contender& c) { return c.name == kPatient; });
}

struct Table {
  std::map<std::string, double> marks;
  bool hasHead = false;

  void print(const std::string& key, int count, const std::vector<Contender>& contenders,
             const std::vector<double>& nanoseconds) {
    if (!hasHead) {
      std::cout << "family,layout,count,n";
      for (const Contender& contender : contenders) {
        std::cout << ',' << contender.name;
      }
      std::cout << ",mark\n";
      hasHead = true;
    }
    std::cout << key;
    double fftw = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < contenders.size(); ++i) {
      std::printf(",%.3f", nanoseconds[i]);
      // There it was patient up to this number of frames.
      if (contenders[i].name == (count > kMostPatientFrames || !hasPatient(contenders) ? kMeasured : kPatient)) {
        fftw = nanoseconds[i];
      }
    }
    std::printf(marks.contains(key) ? ",%.3f\n" : ",\n", marks.contains(key) ? marks.at(key) * fftw : 0);
    std::fflush(stdout);
  }
};

template <class T>
void run(const CaseId& id, const std::string& key, const Options& options, int rounds, Table& table) {
  const Arena<T> arena(id.n, id.count);
  std::vector<Contender> contenders;
  addOurs(id, arena, contenders);
  const std::vector<std::string>& plans = options.lists.at("plans");
  addFftw(id, arena, {options.isPatient, plans.empty() ? "" : plans[0] + '/' + key + ','}, contenders);
  std::vector<double> perFrame = times(arena, contenders, rounds);
  for (double& t : perFrame) {
    t /= id.count;
  }
  table.print(key, id.count, contenders, perFrame);
}

void runAll(const Options& options) {
  const int rounds = std::stoi(options.lists.at("rounds").at(0));
  Table table{readMarks(options.lists.at("marks").at(0))};
  for (const std::string& family : options.lists.at("families")) {
    for (const std::string& layout : options.lists.at("layouts")) {
      for (const std::string& count : options.lists.at("counts")) {
        for (const std::string& n : options.lists.at("lengths")) {
          const CaseId id{familyOf(family), std::stoi(family.substr(2)),
                          layout == "contiguous" ? Arrangement::contiguous : Arrangement::interleaved, std::stoi(count),
                          std::stoi(n)};
          std::ostringstream key;
          key << family << ',' << layout << ',' << count << ',' << n;
          id.bits == 32 ? run<float>(id, key.str(), options, rounds, table)
                        : run<double>(id, key.str(), options, rounds, table);
        }
      }
    }
  }
}

} // namespace

int main(int argc, char** argv) {
  Options options;
  if (!parse({argv + 1, argv + argc}, options)) {
    return 2;
  }
  std::ios::sync_with_stdio(true);
  try {
    runAll(options);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
