// Written by bench_seeds: see "Levels" in HACKING.md.
#include "seeds.hpp"

#include <map>

namespace tfmgen::family {

namespace {

// Packings of one cost by the model of pack/machine.hpp differ by up to 10 percent in time. Measured on a Zen 5 core;
// whatever is not here has seed 1.
const std::map<Level, std::map<std::string, std::uint64_t>> kSeeds{
    {Level::v3, {}},
    {Level::v4, {}}};

} // namespace

std::uint64_t measuredSeed(Level level, const std::string& routine) {
  const auto& seeds = kSeeds.at(level);
  const auto found = seeds.find(routine);
  return found == seeds.end() ? 1 : found->second;
}

} // namespace tfmgen::family
