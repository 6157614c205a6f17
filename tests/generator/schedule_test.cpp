// Orders of work for a machine with few registers.
#include "schedule/schedule.hpp"

#include "number/index.hpp"
#include "random.hpp"
#include "schedule/traffic.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace tfmgen::schedule {
namespace {

using number::at;

// The largest number of values that are wanted at once.
std::size_t registersNeeded(const std::vector<Task>& tasks, const std::vector<int>& order) {
  std::vector<int> remainingUses(tasks.size());
  for (const Task& task : tasks) {
    for (const int operand : task.operands) {
      ++at(remainingUses, operand);
    }
  }
  std::size_t live = 0;
  std::size_t most = 0;
  for (const int task : order) {
    for (const int operand : at(tasks, task).operands) {
      live -= --at(remainingUses, operand) == 0 ? 1 : 0;
    }
    live += at(tasks, task).hasResult ? 1 : 0;
    most = std::max(most, live);
  }
  return most;
}

// A sum of eight values as a tree, built level by level, needs a register for each of its levels and one more.
TEST(GeneratorSchedule, BestOrderFindsTheFewestRegistersOfATree) {
  std::vector<Task> tasks(8);
  for (int left = 0; tasks.size() < 15; left += 2) {
    tasks.push_back({{left, left + 1}});
  }
  tasks.push_back({{14}, false, true});
  EXPECT_EQ(registersNeeded(tasks, bestOrder(tasks, 4)), 4U);
}

// Sixteen butterflies of values that are far apart: depth first, an output would leave half of its butterfly waiting.
TEST(GeneratorSchedule, BestOrderEndsWhatItHasBegun) {
  std::vector<Task> tasks(32);
  for (int i = 0; i < 32; ++i) {
    tasks.push_back({{i % 16, i % 16 + 16}});
  }
  for (int i = 0; i < 32; ++i) {
    tasks.push_back({{32 + i}, false, true});
  }
  EXPECT_LE(registersNeeded(tasks, bestOrder(tasks, 4)), 4U);
}

TEST(GeneratorSchedule, PredecessorsComeFirst) {
  std::vector<Task> tasks(16);
  for (int i = 0; i < 16; ++i) {
    tasks.push_back({{i, (i + 1) % 16}});
  }
  const std::vector<int> stores = {3, 15, 0, 7, 8};
  for (const int value : stores) {
    tasks.push_back({{16 + value}, false, true, tasks.size() == 32 ? -1 : static_cast<int>(tasks.size()) - 1});
  }
  std::vector<int> found;
  std::ranges::copy_if(bestOrder(tasks, 4), std::back_inserter(found), [](int task) { return task >= 32; });
  EXPECT_EQ(found, (std::vector{32, 33, 34, 35, 36}));
}

TEST(GeneratorSchedule, EveryTaskRunsOnceBehindItsOperands) {
  test::Random random(3);
  for (int round = 0; round < 50; ++round) {
    std::vector<Task> tasks(10);
    for (int i = 10; i < 60; ++i) {
      const auto any = [&] { return static_cast<int>(random.bits() % static_cast<std::uint64_t>(i)); };
      const int left = any();
      const int right = any();
      tasks.push_back({left == right ? std::vector{left} : std::vector{left, right}, true, random.bits() % 4 == 0});
    }
    for (int i = 0; i < 60; ++i) { // so that nothing is without effect
      tasks.push_back({{i}, false, true});
    }
    const std::vector<int> order = bestOrder(tasks, 16);
    ASSERT_EQ(order.size(), tasks.size());
    std::vector<bool> isDone(tasks.size());
    const auto stands = [&](int task) -> bool { return at(isDone, task); };
    for (const int task : order) {
      ASSERT_FALSE(stands(task)) << task;
      ASSERT_TRUE(std::ranges::all_of(at(tasks, task).operands, stands)) << task;
      at(isDone, task) = true;
    }
  }
}

// Tasks that take these values and make none.
Task use(std::vector<int> operands) {
  return {std::move(operands), false};
}

TEST(GeneratorTraffic, AResultTakesTheRegisterOfAnOperandThatIsNotUsedAgain) {
  const std::vector<Task> sum{{}, {}, {{0, 1}}, use({2})};
  EXPECT_EQ(simulate(sum, {0, 1, 2, 3}, 2), (Traffic{0, 0}));
  const std::vector<Task> operandUsedAgain{{}, {}, {{0, 1}}, use({2}), use({1})};
  EXPECT_EQ(simulate(operandUsedAgain, {0, 1, 2, 3, 4}, 2), (Traffic{0, 0}));
  const std::vector<Task> bothUsedAgain{{}, {}, {{0, 1}}, use({2}), use({1}), use({0})};
  EXPECT_EQ(simulate(bothUsedAgain, {0, 1, 2, 3, 4, 5}, 3), (Traffic{0, 0}));
  EXPECT_EQ(simulate(bothUsedAgain, {0, 1, 2, 3, 4, 5}, 2), (Traffic{1, 1}));
}

TEST(GeneratorTraffic, DependsOnTheOrder) {
  const std::vector<Task> sumOfThree{{}, {}, {}, {{0, 1}}, {{3, 2}}, use({4})};
  EXPECT_EQ(simulate(sumOfThree, {0, 1, 3, 2, 4, 5}, 2), (Traffic{0, 0})) << "a value is loaded when it is wanted";
  EXPECT_EQ(simulate(sumOfThree, {0, 1, 2, 3, 4, 5}, 2), (Traffic{2, 2})) << "all are loaded first";
}

// Were the value of nearest next use to leave, or the one that came first, the others would follow it.
TEST(GeneratorTraffic, TheValueOfFurthestNextUseLeaves) {
  const std::vector<Task> tasks{{}, {}, {}, use({0}), use({2}), use({1})};
  EXPECT_EQ(simulate(tasks, {0, 1, 2, 3, 4, 5}, 2), (Traffic{1, 1}));
}

TEST(GeneratorTraffic, AValueInMemoryLeavesAgainForNothing) {
  const std::vector<Task> tasks{{}, {}, {}, use({1, 2}), use({0}), {}, {}, use({5, 6}), use({0})};
  EXPECT_EQ(simulate(tasks, {0, 1, 2, 3, 4, 5, 6, 7, 8}, 2), (Traffic{1, 2}));
}

} // namespace
} // namespace tfmgen::schedule
