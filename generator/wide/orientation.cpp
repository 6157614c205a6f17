#include "orientation.hpp"

#include "number/index.hpp"

#include <algorithm>
#include <map>
#include <set>

namespace tfmgen::wide {

namespace {

using number::at;

class Search {
public:
  Search(int pairs, const std::vector<bool>& isFixed, const std::vector<Use>& uses)
      : isFixed_(isFixed), uses_(uses), isTurned_(static_cast<std::size_t>(pairs), false), operandOf_(uses.size()),
        operandsOf_(isTurned_.size()), usersOf_(isTurned_.size()), takenBy_(isTurned_.size()) {
    std::map<std::vector<int>, int> known;
    for (std::size_t i = 0; i < uses.size(); ++i) {
      operandOf_[i] = known.try_emplace(uses[i].places, static_cast<int>(known.size())).first->second;
      usesOf_.resize(known.size());
      at(usesOf_, operandOf_[i]).push_back(static_cast<int>(i));
      if (uses[i].user >= 0) {
        at(takenBy_, uses[i].user).insert(operandOf_[i]);
      }
      for (const Turn& turn : uses[i].turns) {
        if (turn.pair >= 0) {
          at(takenBy_, turn.pair).insert(operandOf_[i]);
          if (uses[i].user >= 0) {
            at(operandsOf_, uses[i].user).insert(turn.pair);
            at(usersOf_, turn.pair).insert(uses[i].user);
          }
        }
      }
    }
  }

  // Turns pairs one by one, with what they are made of and with what is made of them, for as long as that helps.
  std::vector<bool> run() {
    for (bool hasImproved = true; hasImproved;) {
      hasImproved = false;
      for (int pair = 0; pair < static_cast<int>(isTurned_.size()); ++pair) {
        constexpr int kReach = 4;
        for (int reach = 0; reach <= kReach; ++reach) {
          hasImproved = improve(around(pair, reach, usersOf_)) || hasImproved;
          hasImproved = improve(around(pair, reach, operandsOf_)) || hasImproved;
        }
      }
    }
    return isTurned_;
  }

private:
  using Neighbours = std::vector<std::set<int>>;

  // A pair and what is reached from it in so many steps.
  static std::set<int> around(int pair, int reach, const Neighbours& neighbours) {
    std::set<int> all{pair};
    std::set<int> edge{pair};
    for (int step = 0; step < reach; ++step) {
      std::set<int> next;
      for (const int i : edge) {
        for (const int j : at(neighbours, i)) {
          if (all.insert(j).second) {
            next.insert(j);
          }
        }
      }
      edge = next;
    }
    return all;
  }

  bool improve(const std::set<int>& pairs) {
    std::set<int> operands;
    for (const int pair : pairs) {
      operands.insert(at(takenBy_, pair).begin(), at(takenBy_, pair).end());
    }
    const int before = cost(operands);
    turn(pairs);
    if (cost(operands) < before) {
      return true;
    }
    turn(pairs);
    return false;
  }

  void turn(const std::set<int>& pairs) {
    for (const int pair : pairs) {
      at(isTurned_, pair) = at(isTurned_, pair) != !at(isFixed_, pair);
    }
  }

  [[nodiscard]] int cost(const std::set<int>& operands) const {
    int total = 0;
    for (const int operand : operands) {
      std::set<std::vector<bool>> forms;
      for (const int use : at(usesOf_, operand)) {
        forms.insert(form(at(uses_, use)));
      }
      for (const std::vector<bool>& form : forms) {
        const auto turned = std::ranges::count(form, true);
        total += turned == 0 ? 0 : turned == std::ssize(form) ? 1 : 2;
      }
    }
    return total;
  }

  [[nodiscard]] std::vector<bool> form(const Use& use) const {
    std::vector<bool> out;
    const bool isUserTurned = use.user >= 0 && at(isTurned_, use.user);
    for (const Turn& turn : use.turns) {
      out.push_back((turn.isTurned != isUserTurned) != (turn.pair >= 0 && at(isTurned_, turn.pair)));
    }
    return out;
  }

  const std::vector<bool>& isFixed_;
  const std::vector<Use>& uses_;
  std::vector<bool> isTurned_;
  std::vector<int> operandOf_; // of each use
  std::vector<std::vector<int>> usesOf_;
  Neighbours operandsOf_;
  Neighbours usersOf_;
  Neighbours takenBy_; // operands that a pair is part of, or takes
};

} // namespace

std::vector<bool> cheapestTurns(int pairs, const std::vector<bool>& isFixed, const std::vector<Use>& uses) {
  return Search(pairs, isFixed, uses).run();
}

} // namespace tfmgen::wide
