#include "schedule.hpp"

#include <algorithm>
#include <limits>
#include <queue>
#include <set>
#include <tuple>

namespace tfmgen::schedule {

namespace {

using Order = std::vector<int>;

std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

// The users of each task's result.
std::vector<std::vector<int>> users(const std::vector<Task>& tasks) {
  std::vector<std::vector<int>> out(tasks.size());
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    for (const int operand : tasks[i].operands) {
      out[at(operand)].push_back(static_cast<int>(i));
    }
  }
  return out;
}

// How many operands each task waits for.
std::vector<std::size_t> operandCounts(const std::vector<Task>& tasks) {
  std::vector<std::size_t> counts(tasks.size());
  std::ranges::transform(tasks, counts.begin(), [](const Task& task) { return task.operands.size(); });
  return counts;
}

// Tasks in the order in which they were built, except that a load waits for its first user and a last step runs as soon
// as its operands stand.
Order asBuilt(const std::vector<Task>& tasks) {
  const auto usersOf = users(tasks);
  std::vector<std::size_t> missing = operandCounts(tasks);
  Order order;
  std::vector<bool> isDone(tasks.size(), false);
  const auto run = [&](auto& self, int task) -> void {
    isDone[at(task)] = true;
    for (const int operand : tasks[at(task)].operands) {
      if (!isDone[at(operand)]) {
        self(self, operand);
      }
    }
    order.push_back(task);
    for (const int user : usersOf[at(task)]) {
      if (--missing[at(user)] == 0 && tasks[at(user)].isLastStep && !isDone[at(user)]) {
        self(self, user);
      }
    }
  };
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    if (!isDone[i] && !tasks[i].operands.empty()) {
      run(run, static_cast<int>(i));
    }
  }
  return order;
}

// Each output in turn with all that it still needs.
Order depthFirst(const std::vector<Task>& tasks) {
  Order order;
  std::vector<bool> isDone(tasks.size(), false);
  const auto visit = [&](auto& self, int task) -> void {
    if (isDone[at(task)]) {
      return;
    }
    isDone[at(task)] = true;
    for (const int operand : tasks[at(task)].operands) {
      self(self, operand);
    }
    order.push_back(task);
  };
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    if (!tasks[i].hasResult) {
      visit(visit, static_cast<int>(i));
    }
  }
  return order;
}

// Of the tasks that can run and were built less than `window` behind the first of them, the one that frees the most
// values; among equals the one whose operands, or the operands of whose users, are youngest, so that work stays with
// the values at hand. A narrow window keeps near the order in which tasks were built, one sub-transform after the
// other.
Order byFreedValues(const std::vector<Task>& tasks, int window) {
  const auto usersOf = users(tasks);
  std::vector<std::size_t> missing = operandCounts(tasks);
  std::vector<std::size_t> remainingUses(tasks.size());
  std::vector<int> doneAt(tasks.size(), -1);
  std::vector<int> ready;
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    remainingUses[i] = usersOf[i].size();
    if (missing[i] == 0) {
      ready.push_back(static_cast<int>(i));
    }
  }
  Order order;
  int oldest = 0;
  const auto merit = [&](int task) {
    const bool isNear = tasks[at(task)].isLastStep || task - oldest < window;
    int freed = tasks[at(task)].hasResult ? -1 : 0;
    int youngest = -1;
    for (const int operand : tasks[at(task)].operands) {
      freed += remainingUses[at(operand)] == 1 ? 1 : 0;
      youngest = std::max(youngest, doneAt[at(operand)]);
    }
    for (const int user : tasks[at(task)].operands.empty() ? usersOf[at(task)] : std::vector<int>{}) {
      for (const int operand : tasks[at(user)].operands) {
        youngest = std::max(youngest, doneAt[at(operand)]);
      }
    }
    return std::tuple(isNear, freed, youngest, -task);
  };
  while (!ready.empty()) {
    oldest = static_cast<int>(tasks.size());
    for (const int task : ready) {
      const bool isArithmetic = !tasks[at(task)].operands.empty() && !tasks[at(task)].isLastStep;
      oldest = isArithmetic ? std::min(oldest, task) : oldest;
    }
    const auto best = std::ranges::max_element(ready, {}, merit);
    const int task = *best;
    ready.erase(best);
    doneAt[at(task)] = static_cast<int>(order.size());
    order.push_back(task);
    for (const int operand : tasks[at(task)].operands) {
      --remainingUses[at(operand)];
    }
    for (const int user : usersOf[at(task)]) {
      if (--missing[at(user)] == 0) {
        ready.push_back(user);
      }
    }
  }
  return order;
}

struct Traffic {
  int stores = 0;  // values that leave the registers before their last use
  int reloads = 0; // and come back
};

// The registers of the simulation and what they hold.
class Registers {
public:
  Registers(const std::vector<Task>& tasks, const Order& order, int count)
      : count_(count), uses_(tasks.size()), isInMemory_(tasks.size(), false) {
    for (std::size_t time = 0; time < order.size(); ++time) {
      for (const int operand : tasks[at(order[time])].operands) {
        uses_[at(operand)].push(static_cast<int>(time));
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
      if (!uses_[at(operand)].empty()) {
        uses_[at(operand)].pop();
      }
      if (uses_[at(operand)].empty()) {
        held_.erase(operand);
      }
    }
    if (task.hasResult) {
      hold(index, {}, traffic);
    }
  }

private:
  [[nodiscard]] int nextUse(int value) const {
    return uses_[at(value)].empty() ? std::numeric_limits<int>::max() : uses_[at(value)].front();
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
      traffic.stores += isInMemory_[at(victim)] ? 0 : 1;
      isInMemory_[at(victim)] = true;
      held_.erase(victim);
    }
    held_.insert(value);
  }

  int count_;
  std::vector<std::queue<int>> uses_;
  std::vector<bool> isInMemory_;
  std::set<int> held_;
};

// What an order costs when the value of furthest next use leaves first (Belady, "A study of replacement algorithms",
// 1966).
Traffic simulate(const std::vector<Task>& tasks, const Order& order, int registers) {
  Traffic traffic;
  Registers held(tasks, order, registers);
  for (const int task : order) {
    held.step(tasks[at(task)], task, traffic);
  }
  return traffic;
}

} // namespace

std::vector<int> bestOrder(const std::vector<Task>& tasks, int registers) {
  std::vector<Order> candidates{asBuilt(tasks), depthFirst(tasks)};
  for (const int window : {12, 25, 50, 100, 200, static_cast<int>(tasks.size())}) {
    candidates.push_back(byFreedValues(tasks, window));
  }
  return *std::ranges::min_element(candidates, {}, [&](const Order& order) {
    const Traffic traffic = simulate(tasks, order, registers);
    return 2 * traffic.stores + traffic.reloads;
  });
}

} // namespace tfmgen::schedule
