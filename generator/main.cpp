// tfmgen-generator: writes the straight-line kernels of a family as C++ text, or prints what they cost.
//
//   tfmgen-generator complex32 DIRECTORY COUNT   writes COUNT files complex32_0.cpp, complex32_1.cpp, ...
//   tfmgen-generator complex64 DIRECTORY COUNT   the same with files complex64_0.cpp, ...
//   tfmgen-generator real DIRECTORY COUNT        the same with files real_0.cpp, ...
//   tfmgen-generator FAMILY DIRECTORY COUNT LEVEL LEFT
//                                              these files with the kernels that are made for a level, and LEFT files
//                                              FAMILY_left_0.cpp, ... with those that are left as at the baseline
//   tfmgen-generator complex64|real DIRECTORY COUNT LEVEL LEFT SEED
//                                              the same with one seed for the packing of all kernels, to be measured
//   tfmgen-generator batch-complex32|batch-complex64|batch-real DIRECTORY COUNT REGISTERS
//                                              kernels for batches of frames, for a machine of so many registers
//   tfmgen-generator --counts                  name,multiplications,additions,shuffles,rotations, a line a kernel
//   tfmgen-generator --errors                  what is known of the rounding error, a line a routine: error/table.hpp
//   tfmgen-generator --packing                 name,level,lanes,operations,moves,longest path in cycles, a line a
//                                              kernel that is packed; odd lengths in format Pack stand for Perm
//
// LEVEL is x86-64-v3 or x86-64-v4. --counts and --errors describe the kernels of the baseline.
#include "family/batch.hpp"
#include "family/complex.hpp"
#include "family/real.hpp"
#include "print/batch.hpp"
#include "report.hpp"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tfmgen;

// The texts of a family: made for the level, and left as they are at the baseline.
struct Texts {
  std::string preamble;
  std::vector<print::Piece> made;
  std::vector<print::Piece> left;
};

Texts complexTexts(const std::vector<print::ComplexKernel>& kernels, Level level) {
  Texts texts{print::complexPreamble(), {}, {}};
  for (const print::ComplexKernel& k : kernels) {
    const bool isMade = level == Level::baseline || family::isOfLevel(k);
    (isMade ? texts.made : texts.left).push_back(print::complexPiece(k));
  }
  return texts;
}

using Seed = std::optional<std::uint64_t>;

Texts complex32(Level level, Seed /*packs nothing*/) {
  return complexTexts(family::complex32(level), level);
}

Texts complex64(Level level, Seed seed) {
  return complexTexts(family::complex64(level, seed), level);
}

Texts real(Level level, Seed seed) {
  Texts texts{print::realPreamble(), {}, {}};
  for (const family::RealKernel& k : family::realKernels()) {
    std::vector<print::RealEntry> made = family::entries(k, level, seed);
    std::vector<print::RealEntry> left;
    if (level != Level::baseline) {
      const auto scalars = std::stable_partition(made.begin(), made.end(), [](const auto& e) { return e.packed; });
      left.assign(std::move_iterator(scalars), std::move_iterator(made.end()));
      made.erase(scalars, made.end());
    }
    for (auto [entries, pieces] : {std::pair(&made, &texts.made), std::pair(&left, &texts.left)}) {
      if (!entries->empty()) {
        pieces->push_back(print::realPiece(k.kernel, k.transform, k.length, k.plan, *entries));
      }
    }
  }
  return texts;
}

const std::map<std::string, Texts (*)(Level, Seed)> kFamilies{
    {"complex32", complex32}, {"complex64", complex64}, {"real", real}};

const std::map<std::string, std::vector<print::Piece> (*)(int registers)> kBatches{
    {"batch-complex32", family::batchComplex32},
    {"batch-complex64", family::batchComplex64},
    {"batch-real", family::batchReal}};

const std::map<std::string, void (*)()> kReports{
    {"--counts", printCounts}, {"--errors", printErrors}, {"--packing", printPacking}};

int run(const std::vector<std::string>& arguments) {
  const std::size_t count = arguments.size();
  const std::string& name = count > 0 ? arguments[0] : "";
  if (count == 1 && kReports.contains(name)) {
    kReports.at(name)();
    return 0;
  }
  const bool hasLevel = (count == 5 || count == 6) && kLevels.contains(arguments[3]);
  const Seed seed = count == 6 ? Seed(std::stoull(arguments[5])) : std::nullopt;
  if ((count == 3 || hasLevel) && kFamilies.contains(name)) {
    Texts texts = kFamilies.at(name)(hasLevel ? kLevels.at(arguments[3]) : Level::baseline, seed);
    print::writeFiles(arguments[1], name, std::stoul(arguments[2]), texts.preamble, std::move(texts.made));
    if (hasLevel) {
      print::writeFiles(arguments[1], name + "_left", std::stoul(arguments[4]), texts.preamble, std::move(texts.left));
    }
    return 0;
  }
  if (count == 4 && kBatches.contains(name)) {
    print::writeFiles(arguments[1], name, std::stoul(arguments[2]), print::batchPreamble(),
                      kBatches.at(name)(std::stoi(arguments[3])));
    return 0;
  }
  std::cerr << "usage: tfmgen-generator FAMILY DIRECTORY COUNT [LEVEL LEFT [SEED] | REGISTERS] | --counts | --errors | "
               "--packing\n";
  return 2;
}

} // namespace

int main(int argc, char** argv) {
  try {
    return run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << "tfmgen-generator: " << error.what() << '\n';
    return 1;
  }
}
