#include "level_library.hpp"

#include "processor_level.hpp"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace bench {

namespace {

constexpr int kMappings = 3;

struct Built {
  const char* level;
  const char* file;
};

constexpr Built kBuilt[] = {BENCH_LIBRARIES};

// The dynamic loader takes two files for two libraries, be their contents the same.
void* mapCopy(const std::string& file) {
  const int from = open(file.c_str(), O_RDONLY | O_CLOEXEC);
  const int copy = memfd_create("library", MFD_CLOEXEC);
  struct stat status {};
  void* mapping = nullptr;
  if (from >= 0 && copy >= 0 && fstat(from, &status) == 0) {
    const auto bytes = static_cast<std::size_t>(status.st_size);
    if (sendfile(copy, from, nullptr, bytes) == status.st_size) {
      mapping = dlopen(("/proc/self/fd/" + std::to_string(copy)).c_str(), RTLD_NOW | RTLD_LOCAL);
    }
  }
  // `copy` stays open: the loader tells libraries apart by their paths.
  close(from);
  if (mapping == nullptr) {
    throw std::runtime_error("cannot load " + file);
  }
  return mapping;
}

bool isUsable(const std::string& level) {
  return level == "default" || tfmgen::test::processorHas(level);
}

} // namespace

LevelLibrary::LevelLibrary(std::string level, const std::string& file) : level_(std::move(level)) {
  for (int i = 0; i < kMappings; ++i) {
    mappings_.push_back(mapCopy(file));
  }
}

bool LevelLibrary::has(const std::string& name) const {
  return dlsym(mappings_.front(), name.c_str()) != nullptr;
}

std::vector<void*> LevelLibrary::addresses(const std::string& name) const {
  std::vector<void*> found;
  for (void* const mapping : mappings_) {
    found.push_back(dlsym(mapping, name.c_str()));
    if (found.back() == nullptr) {
      throw std::runtime_error(level_ + " has no " + name);
    }
  }
  return found;
}

std::vector<LevelLibrary> levelLibraries(const std::vector<std::string>& levels) {
  std::vector<LevelLibrary> libraries;
  for (const Built& built : kBuilt) {
    const bool isNamed = std::find(levels.begin(), levels.end(), built.level) != levels.end();
    if (isNamed || (levels.empty() && isUsable(built.level))) {
      if (!isUsable(built.level)) {
        throw std::runtime_error(std::string("this processor has no ") + built.level);
      }
      libraries.emplace_back(built.level, built.file);
    }
  }
  if (!levels.empty() && libraries.size() != levels.size()) {
    throw std::runtime_error("levels are: default and those that were built");
  }
  return libraries;
}

} // namespace bench
