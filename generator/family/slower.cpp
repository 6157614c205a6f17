#include "slower.hpp"

#include <set>
#include <utility>

namespace tfmgen::family {

namespace {

// Measured on a Zen 5 core and written by bench_seeds. Of odd lengths the format Pack stands for Perm.
const std::set<std::pair<Level, std::string>> kSlower{
#include "slower.inc"
};

} // namespace

bool isMeasuredSlower(Level level, const std::string& routine) {
  return kSlower.contains({level, routine});
}

} // namespace tfmgen::family
