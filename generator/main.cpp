// tfmgen-generator: writes the straight-line kernels of a family as C++ text, or prints what they cost.
//
//   tfmgen-generator complex64 DIRECTORY COUNT   writes COUNT files complex64_0.cpp, complex64_1.cpp, ...
//   tfmgen-generator real DIRECTORY COUNT        the same with files real_0.cpp, ...
//   tfmgen-generator --counts                    name,multiplications,additions,shuffles,rotations, a line a kernel
#include "lower/complex32.hpp"
#include "lower/complex64.hpp"
#include "lower/real.hpp"
#include "lower/signs.hpp"
#include "plan/complex32.hpp"
#include "plan/complex64.hpp"
#include "plan/real.hpp"
#include "print/complex.hpp"
#include "print/real.hpp"

#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

using namespace tfmgen;

constexpr int kFirstLength = 2;
constexpr int kLastLength = 64;

std::vector<print::ComplexKernel> complex64Kernels() {
  std::vector<print::ComplexKernel> kernels;
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    for (int n = kFirstLength; n <= kLastLength; ++n) {
      const plan::PlanPtr plan = plan::complex64(n);
      kernels.push_back({lower::complex64(*plan, sign), sign, n, 64, plan::describe(*plan)});
    }
  }
  return kernels;
}

std::vector<print::ComplexKernel> complex32Kernels() {
  std::vector<print::ComplexKernel> kernels;
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    for (int n = 6; n <= kLastLength; ++n) {
      const plan::PlanPtr plan = plan::complex32(n);
      kernels.push_back({lower::withSettledSigns(lower::complex32(*plan, sign)), sign, n, 32, plan::describe(*plan)});
    }
  }
  return kernels;
}

// Short kernels hold both bodies in one function: a second function would be longer than what it saves.
print::Bodies bodies64(int length) {
  return length <= 4 ? print::Bodies::inOneFunction : print::Bodies::inTwoFunctions;
}

void writeComplex64(const std::string& directory, int count) {
  std::vector<print::Piece> pieces;
  for (const print::ComplexKernel& k : complex64Kernels()) {
    pieces.push_back(print::complexPiece(k, bodies64(k.length)));
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

void writeReal(const std::string& directory, int count) {
  std::vector<print::Piece> pieces;
  for (const RealKernel& k : realKernels()) {
    pieces.push_back(print::realPiece(k.kernel, k.transform, k.length, k.plan));
  }
  print::writeFiles(directory, "real", count, print::realPreamble(), pieces);
void writeComplex32(const std::string& directory, int count) {
  for (const print::ComplexKernel& k : complex32Kernels()) {
    pieces.push_back(print::complexPiece(k, print::Bodies::inTwoFunctions));
  print::writeFiles(directory, "complex32", count, print::complexPreamble(), pieces);
}

void printCounts() {
  for (const print::ComplexKernel& k : complex64Kernels()) {
    const std::vector<graph::Ref> outputs = k.kernel.outputs();
    const graph::Counts c = graph::count(k.kernel.graph, outputs);
    std::cout << print::kernelName(k) << ',' << c.multiplications << ',' << c.additions << ',' << c.shuffles << ','
              << c.rotations << '\n';
  }
  for (const RealKernel& k : realKernels()) {
    const graph::Counts c = transform::count(k.kernel.body);
    std::cout << print::kernelName(k.transform, k.length) << ',' << c.multiplications << ',' << c.additions << ",0,0\n";
  }
}

int run(const std::vector<std::string>& arguments) {
  if (arguments.size() == 1 && arguments[0] == "--counts") {
    printCounts();
    return 0;
  }
  const std::map<std::string, void (*)(const std::string&, int)> families{{"complex64", writeComplex64},
                                                                          {"real", writeReal}};
  const std::map<std::string, void (*)(const std::string&, int)> families{{"complex32", writeComplex32},
                                                                          {"complex64", writeComplex64}};
  if (arguments.size() == 3 && families.contains(arguments[0])) {
    families.at(arguments[0])(arguments[1], std::stoi(arguments[2]));
    return 0;
  }
  std::cerr << "usage: tfmgen-generator FAMILY DIRECTORY COUNT | --counts\n";
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
