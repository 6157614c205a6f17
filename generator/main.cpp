// tfmgen-generator: writes the straight-line kernels of a family as C++ text, or prints what they cost.
//
//   tfmgen-generator complex32 DIRECTORY COUNT [LEVEL]   writes COUNT files complex32_0.cpp, complex32_1.cpp, ...
//   tfmgen-generator complex64 DIRECTORY COUNT [LEVEL]   the same with files complex64_0.cpp, ...
//   tfmgen-generator real DIRECTORY COUNT [LEVEL]        the same with files real_0.cpp, ...
//   tfmgen-generator batch-complex32|batch-complex64|batch-real DIRECTORY COUNT REGISTERS
//                                              kernels for batches of frames, for a machine of so many registers
//   tfmgen-generator --counts                  name,multiplications,additions,shuffles,rotations, a line a kernel
//   tfmgen-generator --errors                  what is known of the rounding error, a line a routine: error/table.hpp
//   tfmgen-generator --packing                 name,level,lanes,operations,moves,longest path in cycles, a line a
//                                              kernel that is packed; odd lengths in format Pack stand for Perm
//
// LEVEL is x86-64-v3 or x86-64-v4; without it kernels are for the baseline, which --counts and --errors describe.
#ifdef TFMGEN_WITH_ERRORS
#include "error/table.hpp"
#endif
#include "level.hpp"
#include "lower/complex32.hpp"
#include "lower/complex64.hpp"
#include "lower/per_lane.hpp"
#include "lower/real.hpp"
#include "pack/packed.hpp"
#include "plan/complex32.hpp"
#include "plan/complex64.hpp"
#include "plan/real.hpp"
#include "print/batch.hpp"
#include "print/complex.hpp"
#include "print/real.hpp"
#include "wide/pairs.hpp"

#include <algorithm>
#include <array>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace tfmgen;

constexpr int kFirstLength = 2;
constexpr int kLastLength = 64;

// Short kernels of 32-bit samples move single numbers, so alignment does not matter to them.
print::ComplexKernel complex32Kernel(int length, transform::RootSign sign) {
  constexpr int kLastScalarLength = 5;
  const plan::PlanPtr plan = plan::complex32(length);
  const std::string text = plan::describe(*plan);
  if (length <= kLastScalarLength) {
    return {lower::complexScalars(*plan, sign), sign, length, 32, text, print::Bodies::one};
  }
  return {lower::complex32(*plan, sign), sign, length, 32, text, print::Bodies::inTwoFunctions};
}

// Lengths whose kernels on 512 bits are 5 to 23 percent faster than on 256 bits, measured on a Zen 5 core. Elsewhere
// the moves between halves cost more than the arithmetic gains.
constexpr std::array kFasterInPairs{45, 48, 50, 54, 56, 60, 64};

// The same on the registers of a level: the arithmetic of each lane is that of the baseline's kernel.
print::ComplexKernel wideComplex32Kernel(int length, transform::RootSign sign, Level level) {
  constexpr int kFirstLength = 6;
  print::ComplexKernel kernel = complex32Kernel(length, sign);
  if (level == Level::baseline || length < kFirstLength) {
    return kernel;
  }
  const bool isInPairs = level == Level::v4 && std::ranges::find(kFasterInPairs, length) != kFasterInPairs.end();
  const wide::Graph graph = wide::interleaved(std::get<lower::Kernel>(kernel.kernel));
  kernel.kernel =
      print::WideKernel{wide::program(isInPairs ? wide::inPairs(graph) : graph), level == Level::v4 ? 32 : 16};
  kernel.bodies = print::Bodies::one;
  return kernel;
}

// Short kernels hold both bodies in one function: a second function would be longer than what it saves.
print::ComplexKernel complex64Kernel(int length, transform::RootSign sign) {
  const plan::PlanPtr plan = plan::complex64(length);
  return {lower::complex64(*plan, sign),
          sign,
          length,
          64,
          plan::describe(*plan),
          length <= 4 ? print::Bodies::inOneFunction : print::Bodies::inTwoFunctions};
}

using MakeComplex = std::function<print::ComplexKernel(int length, transform::RootSign sign)>;

const std::array<MakeComplex, 2> kBaselineKernels{complex32Kernel, complex64Kernel};

std::vector<print::ComplexKernel> complexKernels(const MakeComplex& make) {
  std::vector<print::ComplexKernel> kernels;
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    for (int n = kFirstLength; n <= kLastLength; ++n) {
      kernels.push_back(make(n, sign));
    }
  }
  return kernels;
}

// The 64-bit complex kernels of a level, packed where that is faster. Those of both directions differ in signs only.
std::vector<print::ComplexKernel> packedComplex64(Level level) {
  std::vector<print::ComplexKernel> kernels = complexKernels(complex64Kernel);
  if (level == Level::baseline) {
    return kernels;
  }
  std::map<int, pack::Packer> packers;
  for (print::ComplexKernel& k : kernels) {
    const pack::Program program = pack::program(std::get<lower::Kernel>(k.kernel), k.length);
    const auto packer = packers.try_emplace(k.length, pack::machine(level, 64, program.numbersInUnit)).first;
    pack::Packed packed = packer->second.pack(program);
    if (packed.isFaster) {
      k.packed = std::move(packed);
    }
  }
  return kernels;
}

void writeComplex(const std::string& name, const MakeComplex& make, const std::string& directory, std::size_t count) {
  std::vector<print::Piece> pieces;
  for (const print::ComplexKernel& k : complexKernels(make)) {
    pieces.push_back(print::complexPiece(k));
  }
  print::writeFiles(directory, name, count, print::complexPreamble(), pieces);
}

void writeComplex32(const std::string& directory, std::size_t count, Level level) {
  const auto make = [level](int length, transform::RootSign sign) { return wideComplex32Kernel(length, sign, level); };
  writeComplex("complex32", make, directory, count);
}

void writeComplex64(const std::string& directory, std::size_t count, Level level) {
  std::vector<print::Piece> pieces;
  for (const print::ComplexKernel& k : packedComplex64(level)) {
    pieces.push_back(print::complexPiece(k));
  }
  print::writeFiles(directory, "complex64", count, print::complexPreamble(), pieces);
}

struct RealKernel {
  lower::RealKernel kernel;
  lower::Transform transform;
  int length;
  std::string plan;
};

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

std::vector<lower::Format> formats(lower::Transform transform, int length) {
  using enum lower::Format;
  if (transform == lower::Transform::hartley) {
    return {plain};
  }
  return length % 2 != 0 ? std::vector{ccs, pack} : std::vector{ccs, pack, perm};
}

// The entries of a real kernel that are packed at a level because that is faster.
std::vector<print::PackedEntry> packedEntries(const RealKernel& k, Level level) {
  std::vector<print::PackedEntry> entries;
  for (const int sampleBits : {32, 64}) {
    pack::Packer packer(pack::machine(level, sampleBits, 1));
    for (const lower::Format format : formats(k.transform, k.length)) {
      pack::Packed packed = packer.pack(pack::program(k.kernel, k.transform, format, k.length, sampleBits));
      if (packed.isFaster) {
        entries.push_back({format, sampleBits, std::move(packed)});
      }
    }
  }
  return entries;
}

void writeReal(const std::string& directory, std::size_t count, Level level) {
  std::vector<print::Piece> pieces;
  for (const RealKernel& k : realKernels()) {
    const auto packed = level == Level::baseline ? std::vector<print::PackedEntry>{} : packedEntries(k, level);
    pieces.push_back(print::realPiece(k.kernel, k.transform, k.length, k.plan, packed));
  }
  print::writeFiles(directory, "real", count, print::realPreamble(), pieces);
}

// ---- Batches of frames

struct BatchFiles {
  std::string directory;
  std::size_t count;
  int registers;
};

void writeBatch(const std::string& name, const BatchFiles& files, std::vector<print::Piece> pieces) {
  print::writeFiles(files.directory, name, files.count, print::batchPreamble(), std::move(pieces));
}

print::BatchComplex32 batchComplex32(int length, transform::RootSign sign) {
  const print::ComplexKernel single = complex32Kernel(length, sign);
  const auto* vectors = std::get_if<lower::Kernel>(&single.kernel);
  return {vectors != nullptr ? lower::perLane(*vectors, {4, 32}) : std::get<lower::RealKernel>(single.kernel),
          vectors == nullptr, sign, length, single.plan};
}

void writeBatchComplex32(const BatchFiles& files) {
  std::vector<print::Piece> pieces;
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    for (int n = kFirstLength; n <= kLastLength; ++n) {
      pieces.push_back(print::batchPiece(batchComplex32(n, sign), files.registers));
    }
  }
  writeBatch("batch-complex32", files, std::move(pieces));
}

void writeBatchComplex64(const BatchFiles& files) {
  std::vector<print::Piece> pieces;
  for (int n = kFirstLength; n <= kLastLength; ++n) {
    const print::ComplexKernel single = complex64Kernel(n, transform::RootSign::forward);
    pieces.push_back(
        print::batchComplex64Piece(std::get<lower::Kernel>(single.kernel), n, single.plan, files.registers));
  }
  writeBatch("batch-complex64", files, std::move(pieces));
}

void writeBatchReal(const BatchFiles& files) {
  std::vector<print::Piece> pieces;
  for (const RealKernel& k : realKernels()) {
    pieces.push_back(print::batchRealPiece(k.kernel, k.transform, k.length, k.plan, files.registers));
  }
  writeBatch("batch-real", files, std::move(pieces));
}

void printCounts(const std::string& name, const graph::Counts& c) {
  std::cout << name << ',' << c.multiplications << ',' << c.additions << ',' << c.shuffles << ',' << c.rotations
            << '\n';
}

void printCounts() {
  for (const MakeComplex& make : kBaselineKernels) {
    for (const print::ComplexKernel& k : complexKernels(make)) {
      printCounts(print::kernelName(k), print::counts(k));
    }
  }
  for (const RealKernel& k : realKernels()) {
    printCounts(print::kernelName(k.transform, k.length), transform::count(k.kernel.body));
  }
}

// The room of error bounds needs a library that a mere build does without.
void printErrors() {
#ifdef TFMGEN_WITH_ERRORS
  std::cout << error::tableTitles() << '\n';
  for (const MakeComplex& make : kBaselineKernels) {
    for (const print::ComplexKernel& k : complexKernels(make)) {
      std::cout << error::tableLine(k) << std::flush;
    }
  }
  for (const RealKernel& k : realKernels()) {
    std::cout << error::tableLines(k.kernel, k.transform, k.length) << std::flush;
  }
#else
  throw std::runtime_error("--errors: built without Eigen");
#endif
}

void printPacking(const std::string& name, const std::string& level, const pack::Packed& packed) {
  const pack::CodeCounts counts = pack::count(packed.code);
  std::cout << name << ',' << level << ',' << packed.lanes << ',' << counts.operations << ',' << counts.moves << ','
            << packed.longestPath << '\n';
}

void printPacking() {
  for (const auto& [name, level] : kLevels) {
    for (const print::ComplexKernel& k : packedComplex64(level)) {
      if (k.packed) {
        printPacking(print::kernelName(k), name, *k.packed);
      }
    }
    for (const RealKernel& k : realKernels()) {
      for (const print::PackedEntry& entry : packedEntries(k, level)) {
        printPacking(print::entryName(k.transform, entry.format, k.length, entry.sampleBits), name, entry.packed);
      }
    }
  }
}

int run(const std::vector<std::string>& arguments) {
  if (arguments.size() == 1 && arguments[0] == "--packing") {
    printPacking();
    return 0;
  }
  if (arguments.size() == 1 && arguments[0] == "--counts") {
    printCounts();
    return 0;
  }
  if (arguments.size() == 1 && arguments[0] == "--errors") {
    printErrors();
    return 0;
  }
  const std::map<std::string, void (*)(const std::string&, std::size_t, Level)> families{
      {"complex32", writeComplex32}, {"complex64", writeComplex64}, {"real", writeReal}};
  const bool hasLevel = arguments.size() == 4 && kLevels.contains(arguments[3]);
  if ((arguments.size() == 3 || hasLevel) && families.contains(arguments[0])) {
    const Level level = hasLevel ? kLevels.at(arguments[3]) : Level::baseline;
    families.at(arguments[0])(arguments[1], std::stoul(arguments[2]), level);
    return 0;
  }
  const std::map<std::string, void (*)(const BatchFiles&)> batches{{"batch-complex32", writeBatchComplex32},
                                                                   {"batch-complex64", writeBatchComplex64},
                                                                   {"batch-real", writeBatchReal}};
  if (arguments.size() == 4 && batches.contains(arguments[0])) {
    batches.at(arguments[0])({arguments[1], std::stoul(arguments[2]), std::stoi(arguments[3])});
    return 0;
  }
  std::cerr << "usage: tfmgen-generator FAMILY DIRECTORY COUNT [LEVEL | REGISTERS] | --counts | --errors | --packing\n";
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
