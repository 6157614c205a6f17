// An order of straight-line work for a machine with few registers.
#pragma once

#include <vector>

namespace tfmgen::schedule {

// A piece of work that takes values and makes at most one.
struct Task {
  std::vector<int> operands; // tasks whose results it takes
  bool hasResult = true;     // a store has none
  bool isLastStep = false;   // belongs to the end of an output: better done soon, since it frees values
};

struct Traffic {
  int stores = 0;  // values that leave the registers before their last use
  int reloads = 0; // and come back
  constexpr bool operator==(const Traffic&) const = default;
};

// What an order costs with `registers` registers when the value of furthest next use leaves first (Belady, "A study of
// replacement algorithms", 1966).
Traffic simulate(const std::vector<Task>& tasks, const std::vector<int>& order, int registers);

// The order of least traffic among several: as built, with last steps as early as they can be; depth first from the
// outputs; by the number of values that a task frees, in windows of several widths. Operands come before their users.
std::vector<int> bestOrder(const std::vector<Task>& tasks, int registers);

} // namespace tfmgen::schedule
