// Times the libraries of all levels against each other and against peers, and prints them side by side.
#pragma once

#include "level_library.hpp"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace bench {

// Several of one name are copies of one routine.
struct Contestant {
  std::string name;
  std::function<void(std::int64_t calls)> repeat;
};

// The contestants of one transform; the names of ours are the levels.
struct LevelCase {
  std::string type; // f32, f64
  int n;            // length or order, as in the table of marks
  std::map<std::string, double> nanoseconds;
};

// Nanoseconds of a call by name, the least of all copies and rounds. Contestants take turns in short blocks of
// calls, so that whatever disturbs the machine meets all of them.
std::map<std::string, double> leastTimes(const std::vector<Contestant>& contestants, int rounds);

// What a program of such contests is asked for: [--rounds=COUNT] [LEVEL...]. Exits with a message when it is not that.
struct ContestOptions {
  int rounds = 100;
  std::vector<std::string> levels;
};
ContestOptions parseContest(int argc, char** argv);

// One line for each case: time, ratio to the fastest peer of the run and ratio to the mark, for each level; then
// geometric means and the worst case. The mark of a level is the best time known with its registers, core cycles of
// another machine in the file `marks`, carried over by the peer that the same line names.
void printContest(const std::vector<LevelCase>& cases, const std::vector<LevelLibrary>& libraries,
                  const std::string& marks);

} // namespace bench
