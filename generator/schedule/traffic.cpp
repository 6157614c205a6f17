#include "traffic.hpp"

#include "number/index.hpp"

#include <algorithm>
#include <limits>
#include <queue>
#include <set>

namespace tfmgen::schedule {

namespace {

using number::at;

// The registers of the simulation and what they hold.
class Registers {
public:
  Registers(const std::vector<Task>& tasks, const std::vector<int>& order, int count)
      : count_(count), uses_(tasks.size()), isInMemory_(tasks.size(), false) {
    for (std::size_t time = 0; time < order.size(); ++time) {
      for (const int operand : at(tasks, order[time]).operands) {
        at(uses_, operand).push(static_cast<int>(time));
      }
    }
  }

  void step(const Task& task, int index, Traffic& traffic) {
    for (const int operand : task.operands) {
      if (!held_.contains(operand)) {
        ++traffic.reloads;
        hold(operand, task, traffic);
      }
    }
    for (const int operand : task.operands) {
      if (!at(uses_, operand).empty()) {
        at(uses_, operand).pop();
      }
      if (at(uses_, operand).empty()) {
        held_.erase(operand);
      }
    }
    if (task.hasResult) {
      hold(index, {}, traffic);
    }
  }

private:
  [[nodiscard]] int nextUse(int value) const {
    return at(uses_, value).empty() ? std::numeric_limits<int>::max() : at(uses_, value).front();
  }

  void hold(int value, const Task& pinned, Traffic& traffic) {
    if (static_cast<int>(held_.size()) >= count_) {
      int victim = -1;
      for (const int candidate : held_) {
        const bool isPinned = std::ranges::find(pinned.operands, candidate) != pinned.operands.end();
        if (!isPinned && (victim < 0 || nextUse(candidate) > nextUse(victim))) {
          victim = candidate;
        }
      }
      traffic.stores += at(isInMemory_, victim) ? 0 : 1;
      at(isInMemory_, victim) = true;
      held_.erase(victim);
    }
    held_.insert(value);
  }

  int count_;
  std::vector<std::queue<int>> uses_;
  std::vector<bool> isInMemory_;
  std::set<int> held_;
};

} // namespace

Traffic simulate(const std::vector<Task>& tasks, const std::vector<int>& order, int registers) {
  Traffic traffic;
  Registers held(tasks, order, registers);
  for (const int task : order) {
    held.step(at(tasks, task), task, traffic);
  }
  return traffic;
}

} // namespace tfmgen::schedule
