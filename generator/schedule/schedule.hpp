// An order of straight-line work for a machine with few registers.
#pragma once

#include <vector>

namespace tfmgen::schedule {

// A piece of work that takes values and makes at most one.
struct Task {
  std::vector<int> operands; // tasks whose results it takes
  bool hasResult = true;     // a store has none
  bool isLastStep = false;   // belongs to the end of an output: better done soon, since it frees values
  int predecessor = -1;      // a task that has to come before, although this one takes nothing of it
};

// The order of least traffic between `registers` registers and memory among several: as built, with last steps as early
// as they can be; depth first from the outputs; by the number of values that a task frees, in windows of several
// widths. Operands come before their users.
std::vector<int> bestOrder(const std::vector<Task>& tasks, int registers);

} // namespace tfmgen::schedule
