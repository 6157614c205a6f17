#include "real.hpp"

#include "lengths.hpp"
#include "pack/packed.hpp"
#include "plan/real.hpp"
#include "seeds.hpp"
#include "slower.hpp"

#include <map>
#include <utility>

namespace tfmgen::family {

namespace {

std::vector<lower::Format> formats(lower::Transform transform, int length) {
  using enum lower::Format;
  if (transform == lower::Transform::hartley) {
    return {plain};
  }
  return length % 2 != 0 ? std::vector{ccs, pack} : std::vector{ccs, pack, perm};
}

} // namespace

std::vector<RealKernel> realKernels() {
  std::vector<RealKernel> kernels;
  for (int n = kFirstLength; n <= kLastLength; ++n) {
    const plan::RealPlans& plans = plan::realPlans(n);
    const auto add = [&](lower::Transform transform, const plan::PlanPtr& plan, auto build) {
      kernels.push_back({lower::assignments(build(*plan), transform), transform, n, plan::describe(*plan)});
    };
    add(lower::Transform::forward, plans.forward, transform::forwardReal);
    add(lower::Transform::inverse, plans.inverse, transform::inverseReal);
    add(lower::Transform::hartley, plans.hartley, transform::hartley);
  }
  return kernels;
}

std::vector<print::RealEntry> entries(const RealKernel& kernel, Level level, std::optional<std::uint64_t> seed) {
  std::map<int, pack::Packer> packers;
  std::vector<print::RealEntry> out;
  for (const lower::Format format : formats(kernel.transform, kernel.length)) {
    for (const int sampleBits : {32, 64}) {
      print::RealEntry entry{format, sampleBits};
      if (level != Level::baseline) {
        const std::string name = print::entryName(kernel.transform, format, kernel.length, sampleBits);
        const auto packer =
            packers
                .try_emplace(sampleBits, pack::machine(level, sampleBits, 1), seed.value_or(measuredSeed(level, name)))
                .first;
        pack::Packed packed =
            packer->second.pack(pack::program(kernel.kernel, kernel.transform, format, kernel.length, sampleBits));
        if (packed.isFaster && (seed || !isMeasuredSlower(level, name))) {
          entry.packed = std::move(packed);
        }
      }
      out.push_back(std::move(entry));
    }
  }
  return out;
}

} // namespace tfmgen::family
