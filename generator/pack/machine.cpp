#include "machine.hpp"

namespace tfmgen::pack {

namespace {

// Registers of 256 bits hold four doubles, and four floats are as wide as the doubles that they turn into. Any order of
// the lanes of one or two registers is one instruction at v4. At v3 it takes up to three, but the moves that a search
// prefers take one there as well.
Machine fourNumbers(Level level, int sampleBits) {
  Machine m{};
  m.lanes = 4;
  const bool isV4 = level == Level::v4;
  if (sampleBits == 32) {
    m.together = isV4 ? Times{33, 26, -59, 42} : Times{31, 39, -40, 42};
    m.awaited = isV4 ? Times{34, 1, 24, 75} : Times{36, 15, 81, 60};
    m.scalarOperation = 46;
  } else {
    m.together = isV4 ? Times{25, 22, -9, 52} : Times{26, 25, 139, 47};
    m.awaited = isV4 ? Times{30, -2, 47, 95} : Times{42, 0, 195, 66};
    m.scalarOperation = 32;
  }
  return m;
}

// Complex numbers: four to a register of 512 bits at v4, two to one of 256 bits at v3, where any move is one
// instruction that takes whole halves.
Machine complexNumbers(Level level) {
  Machine m{};
  if (level == Level::v4) {
    m.lanes = 4;
    m.together = {6, 51, -49, 53};
    m.awaited = {35, -3, 44, 100};
    m.scalarOperation = 36;
  } else {
    m.lanes = 2;
    m.costs.permutation = 100;
    m.costs.merge = 100;
    m.costs.blend = 70;
    m.latencies.move = 3;
    m.together = {48, 15, 5, 0};
    m.awaited = {55, 3, 5, 5};
    m.scalarOperation = 33;
  }
  return m;
}

} // namespace

Machine machine(Level level, int sampleBits, int numbersInUnit) {
  return numbersInUnit == 2 ? complexNumbers(level) : fourNumbers(level, sampleBits);
}

} // namespace tfmgen::pack
