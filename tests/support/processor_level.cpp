#include "processor_level.hpp"

#include "tfmgen.h"

#include <dlfcn.h>

#include <filesystem>

namespace tfmgen::test {

bool processorHas(const std::string& level) {
  const bool hasV3 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi2");
  const bool hasV4 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                     __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
                     __builtin_cpu_supports("avx512vl");
  return (level == "x86-64-v3" && hasV3) || (level == "x86-64-v4" && hasV3 && hasV4);
}

std::string loadedLevel() {
  Dl_info info{};
  if (dladdr(tfmgenGetLibVersion(), &info) == 0) {
    return {};
  }
  const std::filesystem::path folder = std::filesystem::path(info.dli_fname).parent_path();
  return folder.parent_path().filename() == "glibc-hwcaps" ? folder.filename().string() : std::string();
}

} // namespace tfmgen::test
