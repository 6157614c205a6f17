// The level of x86-64 that a library is built for.
#pragma once

#include <string>

namespace tfmgen::test {

// By the name of the level; an unknown name is no level.
[[nodiscard]] bool processorHas(const std::string& level);

// The level whose library this program was loaded with, or nothing for the default library.
[[nodiscard]] std::string loadedLevel();

} // namespace tfmgen::test
