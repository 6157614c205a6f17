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
    m.together = isV4 ? Times{86, 67, -88, 52} : Times{93, 92, -112, 43};
    m.awaited = isV4 ? Times{132, 21, 281, 56} : Times{120, 37, 294, 56};
  } else {
    m.together = isV4 ? Times{123, 107, -77, 46} : Times{142, 130, -147, 42};
    m.awaited = isV4 ? Times{191, -7, 104, 157} : Times{192, 21, 90, 136};
  }
  return m;
}

// Complex numbers: four to a register of 512 bits at v4, two to one of 256 bits at v3, where any move is one
// instruction that takes whole halves.
Machine complexNumbers(Level level) {
  Machine m{};
  if (level == Level::v4) {
    m.lanes = 4;
    m.together = {110, 115, 62, 25};
    m.awaited = {171, 52, 100, 135};
  } else {
    m.lanes = 2;
    m.costs.permutation = 100;
    m.costs.merge = 100;
    m.costs.blend = 70;
    m.latencies.move = 3;
    m.together = {123, 146, -103, 20};
    m.awaited = {143, 24, 42, 85};
  }
  return m;
}

} // namespace

Machine machine(Level level, int sampleBits, int numbersInUnit) {
  return numbersInUnit == 2 ? complexNumbers(level) : fourNumbers(level, sampleBits);
}

} // namespace tfmgen::pack
