#include "level_contest.hpp"

#include "timing.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr double kBlockNanoseconds = 15000; // long against the clock's own cost, short against a time slice
constexpr double kNever = std::numeric_limits<double>::infinity();

double timeOf(const Contestant& contestant, std::int64_t calls) {
  const std::uint64_t start = timeStamp();
  contestant.repeat(calls);
  return static_cast<double>(timeStamp() - start) / ticksPerNanosecond() / static_cast<double>(calls);
}

struct Mark {
  std::map<std::string, double> cycles; // by level
  std::string peer;
  double peerCycles;
};
using Marks = std::map<std::pair<std::string, int>, Mark>; // type and n

Marks readMarks(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  if (!std::getline(file, line)) {
    throw std::runtime_error("no table of marks: " + path);
  }
  Marks marks;
  while (std::getline(file, line)) {
    std::replace(line.begin(), line.end(), ',', ' ');
    std::istringstream fields(line);
    std::string type;
    int n = 0;
    Mark mark;
    if (!(fields >> type >> n >> mark.cycles["default"] >> mark.cycles["x86-64-v3"] >> mark.cycles["x86-64-v4"] >>
          mark.peer >> mark.peerCycles)) {
      throw std::runtime_error("malformed line of marks: " + line);
    }
    marks[{type, n}] = mark;
  }
  return marks;
}

double fastestPeer(const LevelCase& measured, const std::vector<LevelLibrary>& libraries) {
  double least = kNever;
  for (const auto& [name, time] : measured.nanoseconds) {
    const bool isOurs = std::any_of(libraries.begin(), libraries.end(),
                                    [&, &who = name](const LevelLibrary& library) { return library.level() == who; });
    least = isOurs ? least : std::min(least, time);
  }
  return least;
}

// Geometric mean and worst of ratios.
class Summary {
public:
  void add(double ratio, const std::string& name) {
    if (std::isfinite(ratio) && ratio > 0) {
      logarithms_ += std::log(ratio);
      ++count_;
      slower_ += ratio > 1 ? 1 : 0;
      if (ratio > worst_) {
        worst_ = ratio;
        worstName_ = name;
      }
    }
  }
  void print(const std::string& what) const {
    std::printf("%-32s geometric mean %5.3f, worst %5.3f (%s), %d of %d above 1\n", what.c_str(),
                std::exp(logarithms_ / std::max(count_, 1)), worst_, worstName_.c_str(), slower_, count_);
  }

private:
  double logarithms_ = 0;
  double worst_ = 0;
  int count_ = 0;
  int slower_ = 0;
  std::string worstName_;
};

} // namespace

std::map<std::string, double> leastTimes(const std::vector<Contestant>& contestants, int rounds) {
  std::vector<std::int64_t> calls;
  for (const Contestant& contestant : contestants) {
    contestant.repeat(1);
    calls.push_back(1 + static_cast<std::int64_t>(kBlockNanoseconds / timeOf(contestant, 4)));
  }
  std::map<std::string, double> least;
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < contestants.size(); ++i) {
      contestants[i].repeat(1); // code and data back in the caches
      double& time = least.try_emplace(contestants[i].name, kNever).first->second;
      time = std::min(time, timeOf(contestants[i], calls[i]));
    }
  }
  return least;
}

ContestOptions parseContest(int argc, char** argv) {
  ContestOptions options;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const std::string prefix = "--rounds=";
    if (argument.starts_with(prefix)) {
      options.rounds = std::atoi(argument.c_str() + prefix.size());
    } else {
      options.levels.push_back(argument);
    }
    if (options.rounds < 1 || (argument.starts_with("-") && !argument.starts_with(prefix))) {
      std::fprintf(stderr, "usage: %s [--rounds=COUNT] [LEVEL...]\n", argv[0]);
      std::exit(2);
    }
  }
  return options;
}

void printContest(const std::vector<LevelCase>& cases, const std::vector<LevelLibrary>& libraries,
                  const std::string& marks) {
  const Marks table = readMarks(marks);
  std::map<std::string, Summary> summaries;
  std::printf("%-10s", "type n");
  for (const LevelLibrary& library : libraries) {
    std::printf(" %12s %7s %7s", (library.level() + " ns").c_str(), "peer", "mark");
  }
  std::puts("  peers ns");
  for (const LevelCase& measured : cases) {
    const std::string name = measured.type + ' ' + std::to_string(measured.n);
    const double peer = fastestPeer(measured, libraries);
    std::printf("%-10s", name.c_str());
    for (const LevelLibrary& library : libraries) {
      const std::string& level = library.level();
      const double time = measured.nanoseconds.at(level);
      double toMark = 0;
      if (const auto mark = table.find({measured.type, measured.n}); mark != table.end()) {
        const auto carrier = measured.nanoseconds.find(mark->second.peer);
        if (carrier != measured.nanoseconds.end()) {
          toMark = time * mark->second.peerCycles / (mark->second.cycles.at(level) * carrier->second);
        }
      }
      std::printf(" %12.2f %7.3f %7.3f", time, time / peer, toMark);
      summaries[measured.type + ' ' + level + " to the fastest peer"].add(time / peer, name);
      summaries[measured.type + ' ' + level + " to the mark"].add(toMark, name);
      summaries[measured.type + ' ' + level + " to " + libraries.front().level()].add(
          time / measured.nanoseconds.at(libraries.front().level()), name);
    }
    for (const auto& [who, time] : measured.nanoseconds) {
      if (std::none_of(libraries.begin(), libraries.end(),
                       [&, &own = who](const LevelLibrary& library) { return library.level() == own; })) {
        std::printf("  %s %.2f", who.c_str(), time);
      }
    }
    std::puts("");
  }
  for (const auto& [what, summary] : summaries) {
    summary.print(what);
  }
}

} // namespace bench
