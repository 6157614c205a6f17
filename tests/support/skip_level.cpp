// In a program of tests: on a processor without the level of the library every test is skipped.
#include "processor_level.hpp"

#include <gtest/gtest.h>

namespace tfmgen::test {
namespace {

class SkipLevel : public ::testing::Environment {
public:
  void SetUp() override {
    const std::string level = loadedLevel();
    if (!level.empty() && !processorHas(level)) {
      GTEST_SKIP() << "this processor has no " << level;
    }
  }
};

const ::testing::Environment* const skipLevel = ::testing::AddGlobalTestEnvironment(new SkipLevel);

} // namespace
} // namespace tfmgen::test
