#include "packed.hpp"

#include "start.hpp"

namespace tfmgen::pack {

namespace {

int time(const Times& times, const CodeCounts& counts, int longestPath) {
  return times.operation * counts.operations + times.move * counts.moves + times.access * counts.accesses +
         times.cycle * longestPath;
}

} // namespace

bool isFaster(const Machine& machine, const CodeCounts& counts, int longestPath, const Program& program) {
  const int scalar = 100 * scalarOperations(program);
  return time(machine.together, counts, longestPath) < scalar && time(machine.awaited, counts, longestPath) < scalar;
}

Packed Packer::pack(const Program& program) {
  constexpr int kMovesPerOperation = 600;
  constexpr int kMovesPerOperationAgain = 50;
  const Dependences dependences(program);
  const bool isNew = !first_.has_value();
  Packing packing = isNew ? greedyStart(program, dependences, machine_) : *first_;
  SearchOptions options;
  options.seed = seed_;
  options.moves = (isNew ? kMovesPerOperation : kMovesPerOperationAgain) * program.operations.size();
  options.firstTemperature = isNew ? options.firstTemperature : options.lastTemperature;
  const Score score = search(packing, program, dependences, machine_, options);
  if (isNew) {
    first_ = packing;
  }
  Packed out{codeOf(program, packing), machine_.lanes * program.numbersInUnit, score.path, false};
  out.isFaster = isFaster(machine_, count(out.code), score.path, program);
  return out;
}

} // namespace tfmgen::pack
