// What an order of work costs on a machine with few registers.
#pragma once

#include "schedule.hpp"

#include <vector>

namespace tfmgen::schedule {

struct Traffic {
  int stores = 0;  // values that leave the registers before their last use
  int reloads = 0; // and come back
  constexpr bool operator==(const Traffic&) const = default;
};

// The traffic of an order when the value of furthest next use leaves first (Belady, "A study of replacement
// algorithms", 1966). What has left once is in memory and leaves again for nothing. More registers than a task has
// operands are needed.
Traffic simulate(const std::vector<Task>& tasks, const std::vector<int>& order, int registers);

} // namespace tfmgen::schedule
