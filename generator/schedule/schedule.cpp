#include "schedule.hpp"

#include "number/index.hpp"
#include "traffic.hpp"

#include <algorithm>
#include <tuple>

namespace tfmgen::schedule {

namespace {

using number::at;
using Order = std::vector<int>;

// The users of each task's result.
std::vector<std::vector<int>> users(const std::vector<Task>& tasks) {
  std::vector<std::vector<int>> out(tasks.size());
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    for (const int operand : tasks[i].operands) {
      at(out, operand).push_back(static_cast<int>(i));
    }
  }
  return out;
}

// The tasks that each task waits for.
Order prerequisites(const Task& task) {
  Order out = task.operands;
  if (task.predecessor >= 0) {
    out.push_back(task.predecessor);
  }
  return out;
}

// The tasks that wait for each task.
std::vector<std::vector<int>> followers(const std::vector<Task>& tasks) {
  std::vector<std::vector<int>> out = users(tasks);
  for (std::size_t i = 0; i < tasks.size(); ++i) {
    if (tasks[i].predecessor >= 0) {
      at(out, tasks[i].predecessor).push_back(static_cast<int>(i));
    }
  }
  return out;
}

// How many others each task waits for.
std::vector<std::size_t> prerequisiteCounts(const std::vector<Task>& tasks) {
  std::vector<std::size_t> counts(tasks.size());
  std::ranges::transform(tasks, counts.begin(), [](const Task& task) { return prerequisites(task).size(); });
  return counts;
}

// Tasks in the order in which they were built, except that a load waits for its first user and a last step runs as soon
// as its operands stand.
Order asBuilt(const std::vector<Task>& tasks) {
  const auto followersOf = followers(tasks);
  std::vector<std::size_t> missing = prerequisiteCounts(tasks);
  Order order;
  std::vector<bool> isDone(tasks.size(), false);
  const auto run = [&](auto& self, int task) -> void {
    at(isDone, task) = true;
    for (const int prerequisite : prerequisites(at(tasks, task))) {
      if (!at(isDone, prerequisite)) {
        self(self, prerequisite);
      }
    }
    order.push_back(task);
    for (const int follower : at(followersOf, task)) {
      if (--at(missing, follower) == 0 && at(tasks, follower).isLastStep && !at(isDone, follower)) {
        self(self, follower);
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
    if (at(isDone, task)) {
      return;
    }
    at(isDone, task) = true;
    for (const int prerequisite : prerequisites(at(tasks, task))) {
      self(self, prerequisite);
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
  const auto followersOf = followers(tasks);
  std::vector<std::size_t> missing = prerequisiteCounts(tasks);
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
    const bool isNear = at(tasks, task).isLastStep || task - oldest < window;
    int freed = at(tasks, task).hasResult ? -1 : 0;
    int youngest = -1;
    for (const int operand : at(tasks, task).operands) {
      freed += at(remainingUses, operand) == 1 ? 1 : 0;
      youngest = std::max(youngest, at(doneAt, operand));
    }
    for (const int user : at(tasks, task).operands.empty() ? at(usersOf, task) : std::vector<int>{}) {
      for (const int operand : at(tasks, user).operands) {
        youngest = std::max(youngest, at(doneAt, operand));
      }
    }
    return std::tuple(isNear, freed, youngest, -task);
  };
  while (!ready.empty()) {
    oldest = static_cast<int>(tasks.size());
    for (const int task : ready) {
      const bool isArithmetic = !at(tasks, task).operands.empty() && !at(tasks, task).isLastStep;
      oldest = isArithmetic ? std::min(oldest, task) : oldest;
    }
    const auto best = std::ranges::max_element(ready, {}, merit);
    const int task = *best;
    ready.erase(best);
    at(doneAt, task) = static_cast<int>(order.size());
    order.push_back(task);
    for (const int operand : at(tasks, task).operands) {
      --at(remainingUses, operand);
    }
    for (const int follower : at(followersOf, task)) {
      if (--at(missing, follower) == 0) {
        ready.push_back(follower);
      }
    }
  }
  return order;
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
