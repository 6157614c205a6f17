// Which of two partners takes the even lanes.
#pragma once

#include <vector>

namespace tfmgen::wide {

// What a position of an operand takes: a pair of partners, with its smaller node in the even lane or, turned, in the
// odd one. A pair below zero is in memory, where real parts stand first.
struct Turn {
  int pair;
  bool isTurned;
  auto operator<=>(const Turn&) const = default;
};

// An operand of a pair, or what a store takes: `user` below zero.
struct Use {
  int user;
  std::vector<Turn> turns; // position by position
  std::vector<int> places; // what lies at the positions: equal operands have equal places
};

// For each pair, whether its larger node takes the even lanes. An operand that is turned as a whole costs an
// instruction, one that is turned in part costs two; both are shared by all its users.
std::vector<bool> cheapestTurns(int pairs, const std::vector<bool>& isFixed, const std::vector<Use>& uses);

} // namespace tfmgen::wide
