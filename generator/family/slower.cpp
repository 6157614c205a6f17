#include "slower.hpp"

#include <set>
#include <utility>

namespace tfmgen::family {

namespace {

// Measured on a Zen 5 core, mostly by bench_seeds, which writes the file; a few were seen by longer runs of single
// libraries. Of odd lengths the format Pack stands for Perm.
const std::set<std::pair<Level, std::string>> kSlower{
#include "slower.inc"
};

} // namespace

bool isMeasuredSlower(Level level, const std::string& routine) {
  return kSlower.contains({level, routine});
}

} // namespace tfmgen::family
