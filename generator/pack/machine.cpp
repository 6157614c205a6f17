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
    m.together = isV4 ? Times{33, 26, -59, 42} : Times{35, 34, -37, 38};
    m.awaited = isV4 ? Times{34, 1, 24, 75} : Times{33, 22, 33, 60};
    m.scalarOperation = 46;
  } else {
    m.together = isV4 ? Times{25, 22, -9, 52} : Times{27, 42, 15, 36};
    m.awaited = isV4 ? Times{30, -2, 47, 95} : Times{33, 22, 70, 67};
    m.scalarOperation = 35;
  }
  return m;
}

// Complex numbers: four to a register of 512 bits at v4, two to one of 256 bits at v3, where any move is one instruction
// that takes whole halves.
Machine complexNumbers(Level level) {
  Machine m{};
  if (level == Level::v4) {
    m.lanes = 4;
    m.together = {6, 51, -49, 53};
    m.awaited = {35, -3, 44, 100};
  } else {
    m.lanes = 2;
    m.costs.permutation = 100;
    m.costs.merge = 100;
    m.costs.blend = 70;
    m.latencies.move = 3;
    m.together = {38, 23, 15, 35};
    m.awaited = {35, 10, 30, 90};
  }
  m.scalarOperation = 33;
  return m;
}

} // namespace

Machine machine(Level level, int sampleBits, int numbersInUnit) {
  return numbersInUnit == 2 ? complexNumbers(level) : fourNumbers(level, sampleBits);
}

} // namespace tfmgen::pack
