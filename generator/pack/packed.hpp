// From a program to a packed kernel.
#pragma once

#include "code.hpp"
#include "search.hpp"

#include <optional>

namespace tfmgen::pack {

struct Packed {
  Code code;
  int lanes = 0;       // numbers in a vector
  int longestPath = 0; // cycles
  bool isFaster = false;
};

// Whether calls of the packed kernel take less time than those of the scalar one, by the measured times of the machine:
// one after the other, and also where each waits for the last one.
bool isFaster(const Machine& machine, const CodeCounts& counts, int longestPath, const Program& program);

// Packs programs that differ in their accesses to memory only, or in signs, as the formats of a spectrum do: the first
// one is searched for from the start, the others from its packing.
class Packer {
public:
  explicit Packer(const Machine& machine, std::uint64_t seed = 1) : machine_(machine), seed_(seed) {}

  Packed pack(const Program& program);

private:
  Machine machine_;
  std::uint64_t seed_; // of the searches
  std::optional<Packing> first_;
};

} // namespace tfmgen::pack
