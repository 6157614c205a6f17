// Kernels into files.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tfmgen::print {

// The text of a kernel with the length of its arithmetic, which decides how long a compiler works on it.
struct Piece {
  std::string text;
  int weight;
};

// Writes `count` files NAME_0.cpp, NAME_1.cpp and so on, each `preamble` and pieces of about the same total weight, in
// a way that depends on nothing but the arguments. Throws std::runtime_error when a file cannot be written.
void writeFiles(const std::filesystem::path& directory, const std::string& name, std::size_t count,
                const std::string& preamble, std::vector<Piece> pieces);

} // namespace tfmgen::print
