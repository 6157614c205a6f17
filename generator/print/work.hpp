// The work of a kernel as the scheduler sees it.
#pragma once

#include "graph/node_map.hpp"
#include "schedule/schedule.hpp"

#include <vector>

namespace tfmgen::print {

struct Work {
  std::vector<schedule::Task> tasks; // one for each value that has a name, then one for each store
  std::vector<graph::NodeId> values; // the nodes of the former

  // Calls define(node) and store(number) for the tasks in turn.
  void inOrder(const std::vector<int>& order, auto define, auto store) const {
    const int count = static_cast<int>(values.size());
    for (const int task : order) {
      if (task < count) {
        define(number::at(values, task));
      } else {
        store(task - count);
      }
    }
  }
};

} // namespace tfmgen::print
