// Times the libraries of all levels against each other and against peers, and prints them side by side.
#pragma once

#include "level_library.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace bench {

// What a contestant's time stands for.
enum class Role {
  ours,      // ours, calls back to back on the same arrays
  dependent, // ours, each call reads the last one's result
  peer
};

// Several of one role, routine and name are copies of one routine.
struct Contestant {
  Role role;
  std::string routine; // "tfmgHartley"; for a peer its own name, "fftw-dht-pat"
  std::string level;   // of ours
  std::function<void(std::int64_t calls)> repeat;
  std::function<void()> prepare = [] {}; // fills the arrays, before each block of calls
};

// One routine of ours beside the peers that compute the same.
struct LevelCase {
  std::string family; // cfwd, cinv, rfwd, rinv, dht, wht, dct4, as in the table of marks
  std::string type;   // f32, f64
  int n;              // length or order
  std::string routine;
  std::map<std::string, double> ours;      // nanoseconds of a call by level
  std::map<std::string, double> dependent; // the same with dependent calls
  std::map<std::string, double> peers;     // by name
};

// The case of each routine of ours among the contestants of one transform; the least of all copies and rounds. The
// contestants take turns in short blocks of calls, so that whatever disturbs the machine meets all of them.
std::vector<LevelCase> contest(const std::string& family, const std::string& type, int n,
                               const std::vector<Contestant>& contestants, int rounds);

// Adds a routine of ours in both roles. Chains of calls go from one array to the other and back, on zeros, which stay
// what they are however many calls there are.
template <class T, class Call>
void addOurs(const std::string& routine, const std::string& level, Call call, T* src, T* dst, std::size_t count,
             std::vector<Contestant>& contestants) {
  const auto separate = [=](std::int64_t calls) {
    for (; calls > 0; --calls) {
      call(src, dst);
    }
  };
  const auto chain = [=](std::int64_t calls) {
    T* from = src;
    T* to = dst;
    for (; calls > 0; --calls) {
      call(from, to);
      std::swap(from, to);
    }
  };
  const auto ramp = [=] {
    for (std::size_t i = 0; i < count; ++i) {
      src[i] = static_cast<T>(static_cast<int>(i % 17) - 8) / 16;
    }
  };
  const auto zeros = [=] {
    std::fill_n(src, count, T(0));
    std::fill_n(dst, count, T(0));
  };
  contestants.push_back({Role::ours, routine, level, separate, ramp});
  contestants.push_back({Role::dependent, routine, level, chain, zeros});
}

// What a program of such contests is asked for.
struct ContestOptions {
  int rounds = 100;
  std::string only; // cases whose "family/type/n/" starts so
  std::string csv;  // file for the figures
  std::vector<std::string> levels;

  [[nodiscard]] bool takes(const std::string& family, const std::string& type, int n) const;
};

// The contests of a program and what they have found.
class Contests {
public:
  Contests(ContestOptions options, std::vector<LevelLibrary> libraries);

  // compare(n) holds the contest of one length or order, for those that the options ask for. A terminal sees how far it
  // has come.
  void hold(const std::string& family, const std::string& type, const std::vector<int>& lengths,
            const std::function<std::vector<LevelCase>(int)>& compare);

  [[nodiscard]] const ContestOptions& options() const { return options_; }
  [[nodiscard]] const std::vector<LevelLibrary>& libraries() const { return libraries_; }
  [[nodiscard]] const std::vector<LevelCase>& cases() const { return cases_; }

private:
  ContestOptions options_;
  std::vector<LevelLibrary> libraries_;
  std::vector<LevelCase> cases_;
};

// A program of such contests: reads its arguments, has them held and prints one line for each case: time, ratio to the
// fastest peer of the run, ratio to the mark and time of dependent calls, for each level; then geometric means and
// worst cases. The mark of a level is the best time known with its registers, core cycles of another machine, carried
// over by the peer that the same line of the table names. Writes the same figures to the file that the options name.
// Returns what main returns.
int runContests(int argc, char** argv, const std::function<void(Contests&)>& hold);

} // namespace bench
