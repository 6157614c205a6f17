#include "level_contest.hpp"

#include "common/progress.hpp"
#include "timing.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace bench {

namespace {

constexpr double kBlockNanoseconds = 15000; // long against the clock's own cost, short against a time slice
constexpr double kNever = std::numeric_limits<double>::infinity();

double timeOf(const Contestant& contestant, std::int64_t calls) {
  const std::uint64_t start = timeStamp();
  contestant.repeat(calls);
  return static_cast<double>(timeStamp() - start) / ticksPerNanosecond() / static_cast<double>(calls);
}

// Does some work with the stack so many bytes further down.
template <class Work>
[[gnu::noinline]] void withStackLower(std::size_t bytes, const Work& work) {
  volatile char* const gap = static_cast<char*>(__builtin_alloca(bytes));
  gap[0] = 0;
  work();
}

// A processor takes a load for one that waits for an earlier store when both addresses agree in their last 12 bits. So
// it matters where a routine's stack lies against its arrays: the rounds go through all lines of a page.
std::size_t stackGap(int round) {
  constexpr int kLineBytes = 64;
  constexpr int kLinesOfPage = 4096 / kLineBytes;
  return (1 + static_cast<std::size_t>(round) * 27 % kLinesOfPage) * kLineBytes;
}

struct Mark {
  std::map<std::string, double> cycles; // by level
  std::string library;
  double libraryCycles;
};
using Marks = std::map<std::tuple<std::string, std::string, int>, Mark>; // family, type and n

// The library of a peer: fftw of fftw-r2c-pat.
std::string libraryOf(const std::string& peer) {
  return peer.substr(0, peer.find('-'));
}

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
    std::string family;
    std::string type;
    int n = 0;
    Mark mark;
    if (!(fields >> family >> type >> n >> mark.cycles["default"] >> mark.cycles["x86-64-v3"] >>
          mark.cycles["x86-64-v4"] >> mark.library >> mark.libraryCycles)) {
      throw std::runtime_error("malformed line of marks: " + line);
    }
    mark.library = libraryOf(mark.library);
    marks[{family, type, n}] = mark;
  }
  return marks;
}

// The fastest routine of one library, of any when `library` is empty; its time is kNever when there is none.
std::pair<std::string, double> fastestPeer(const LevelCase& measured, const std::string& library = "") {
  std::pair<std::string, double> best{"-", kNever};
  for (const auto& [name, time] : measured.peers) {
    if ((library.empty() || libraryOf(name) == library) && time < best.second) {
      best = {name, time};
    }
  }
  return best;
}

// Time of a level's mark on this machine; kNever where there is none.
double markTime(const LevelCase& measured, const std::string& level, const Marks& marks) {
  const auto mark = marks.find({measured.family, measured.type, measured.n});
  if (mark == marks.end()) {
    return kNever;
  }
  const double carrier = fastestPeer(measured, mark->second.library).second;
  return mark->second.cycles.at(level) * carrier / mark->second.libraryCycles;
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
    std::printf("%-44s geometric mean %5.3f, worst %5.3f (%s), %d of %d above 1\n", what.c_str(),
                std::exp(logarithms_ / std::max(count_, 1)), worst_, worstName_.c_str(), slower_, count_);
  }

private:
  double logarithms_ = 0;
  double worst_ = 0;
  int count_ = 0;
  int slower_ = 0;
  std::string worstName_;
};

void writeCsv(const std::string& path, const std::vector<LevelCase>& cases, const std::vector<LevelLibrary>& libraries,
              const Marks& marks) {
  std::ofstream file(path);
  file << "family,type,n,routine,level,ns,dependent_ns,best_peer,best_peer_ns,mark_ns\n";
  for (const LevelCase& measured : cases) {
    const auto [peer, peerTime] = fastestPeer(measured);
    for (const LevelLibrary& library : libraries) {
      const std::string& level = library.level();
      file << measured.family << ',' << measured.type << ',' << measured.n << ',' << measured.routine << ',' << level
           << ',' << measured.ours.at(level) << ',' << measured.dependent.at(level) << ',' << peer << ',' << peerTime
           << ',' << markTime(measured, level, marks) << '\n';
    }
  }
  if (!file.flush()) {
    throw std::runtime_error("cannot write " + path);
  }
}

} // namespace

std::vector<LevelCase> contest(const std::string& family, const std::string& type, int n,
                               const std::vector<Contestant>& contestants, int rounds) {
  std::vector<std::int64_t> calls;
  std::vector<double> least(contestants.size(), kNever);
  for (const Contestant& contestant : contestants) {
    contestant.prepare();
    contestant.repeat(1);
    calls.push_back(1 + static_cast<std::int64_t>(kBlockNanoseconds / timeOf(contestant, 4)));
  }
  for (int round = 0; round < rounds; ++round) {
    withStackLower(stackGap(round), [&] {
      for (std::size_t i = 0; i < contestants.size(); ++i) {
        contestants[i].prepare();
        contestants[i].repeat(1 + calls[i] / 64); // code, branches and data back in the caches
        least[i] = std::min(least[i], timeOf(contestants[i], calls[i]));
      }
    });
  }

  std::map<std::string, LevelCase> cases;
  std::map<std::string, double> peers;
  const auto take = [](std::map<std::string, double>& times, const std::string& name, double time) {
    double& known = times.try_emplace(name, kNever).first->second;
    known = std::min(known, time);
  };
  for (std::size_t i = 0; i < contestants.size(); ++i) {
    const Contestant& contestant = contestants[i];
    if (contestant.role == Role::peer) {
      take(peers, contestant.routine, least[i]);
    } else {
      LevelCase empty{family, type, n, contestant.routine, {}, {}, {}};
      LevelCase& of = cases.try_emplace(contestant.routine, std::move(empty)).first->second;
      take(contestant.role == Role::ours ? of.ours : of.dependent, contestant.level, least[i]);
    }
  }
  std::vector<LevelCase> result;
  for (auto& [routine, measured] : cases) {
    measured.peers = peers;
    result.push_back(std::move(measured));
  }
  return result;
}

bool ContestOptions::takes(const std::string& family, const std::string& type, int n) const {
  return (family + '/' + type + '/' + std::to_string(n) + '/').starts_with(only);
}

namespace {

ContestOptions parseContest(int argc, char** argv) {
  ContestOptions options;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const std::string value = argument.substr(argument.find('=') + 1);
    const bool isOption = argument.starts_with("-");
    if (argument.starts_with("--rounds=")) {
      options.rounds = static_cast<int>(std::strtol(value.c_str(), nullptr, 10));
    } else if (argument.starts_with("--only=")) {
      options.only = value;
    } else if (argument.starts_with("--csv=")) {
      options.csv = value;
    } else if (!isOption) {
      options.levels.push_back(argument);
    } else {
      options.rounds = 0;
    }
    if (options.rounds < 1) {
      std::fprintf(stderr, "usage: %s [--rounds=COUNT] [--only=FAMILY/TYPE/N/] [--csv=FILE] [LEVEL...]\n", argv[0]);
      std::exit(2);
    }
  }
  return options;
}

void printContest(const Contests& contests) {
  const std::vector<LevelLibrary>& libraries = contests.libraries();
  const Marks marks = readMarks(BENCH_MARKS_FILE);
  std::map<std::string, Summary> summaries;
  const std::string& first = libraries.front().level();
  const std::string toFirst = " to " + first;
  const std::string toFirstDependent = toFirst + ", dependent";
  std::printf("%-28s", "routine type n");
  for (const LevelLibrary& library : libraries) {
    std::printf(" %12s %7s %7s %9s", (library.level() + " ns").c_str(), "peer", "mark", "dependent");
  }
  std::puts("  peers ns");
  for (const LevelCase& measured : contests.cases()) {
    const std::string name = measured.routine + ' ' + measured.type + ' ' + std::to_string(measured.n);
    const double peer = fastestPeer(measured).second;
    std::printf("%-28s", name.c_str());
    for (const LevelLibrary& library : libraries) {
      const std::string& level = library.level();
      const double time = measured.ours.at(level);
      const double dependent = measured.dependent.at(level);
      const double mark = markTime(measured, level, marks);
      std::printf(" %12.2f %7.3f %7.3f %9.2f", time, time / peer, time / mark, dependent);
      const std::string group = measured.family + ' ' + measured.type + ' ' + level;
      summaries[group + " to the fastest peer"].add(time / peer, name);
      summaries[group + " to the mark"].add(time / mark, name);
      summaries[group + toFirst].add(time / measured.ours.at(first), name);
      summaries[group + toFirstDependent].add(dependent / measured.dependent.at(first), name);
    }
    for (const auto& [who, time] : measured.peers) {
      std::printf("  %s %.2f", who.c_str(), time);
    }
    std::puts("");
  }
  for (const auto& [what, summary] : summaries) {
    summary.print(what);
  }
  if (!contests.options().csv.empty()) {
    writeCsv(contests.options().csv, contests.cases(), libraries, marks);
  }
}

} // namespace

Contests::Contests(ContestOptions options, std::vector<LevelLibrary> libraries)
    : options_(std::move(options)), libraries_(std::move(libraries)) {}

void Contests::hold(const std::string& family, const std::string& type, const std::vector<int>& lengths,
                    const std::function<std::vector<LevelCase>(int)>& compare) {
  Progress progress(family + ' ' + type, lengths.size());
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    progress.reach(i);
    if (options_.takes(family, type, lengths[i])) {
      const std::vector<LevelCase> found = compare(lengths[i]);
      cases_.insert(cases_.end(), found.begin(), found.end());
    }
  }
}

int runContests(int argc, char** argv, const std::function<void(Contests&)>& hold) {
  const ContestOptions options = parseContest(argc, argv);
  try {
    Contests contests(options, levelLibraries(options.levels));
    hold(contests);
    printContest(contests);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}

} // namespace bench
