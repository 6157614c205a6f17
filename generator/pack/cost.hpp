// The cost of a packing, kept up to date while operations change places.
#pragma once

#include "arithmetic.hpp"
#include "moves.hpp"

#include <span>

namespace tfmgen::pack {

// How often each pattern is wanted. Equal patterns are paid for once, which is what makes sums and differences of the
// same operands cheap in two vectors.
class PatternTable {
public:
  // The change of cost. All uses of a key at one time have one cost.
  int add(PatternKey key, int cost);
  int remove(PatternKey key);

private:
  struct Entry {
    PatternKey key = 0; // zero: free
    int uses = 0;
    int cost = 0;
  };

  Entry& entry(PatternKey key);
  void rebuild();

  std::vector<Entry> entries_ = std::vector<Entry>(1024);
  std::size_t taken_ = 0;
};

class Cost {
public:
  Cost(const Program& program, const Dependences& dependences, const Packing& packing, const Machine& machine);

  // Around a change of the packing, which concerns these vectors and stores: begin, the change itself, count; and where
  // the change is taken back, takeBack.
  void begin(std::span<const int> vectors, std::span<const int> stores);
  void count(std::span<const int> vectors, std::span<const int> stores);
  void takeBack(std::span<const int> vectors, std::span<const int> stores);

  [[nodiscard]] int work() const { return work_; } // operations and moves
  // The cycles of the longest path, weighted, after the last count; from `firstLevel` on it may have changed.
  int path(int firstLevel);
  void keepPath(); // the last one that was computed is that of the packing

  [[nodiscard]] int longestPath() const { return longest_; } // cycles

private:
  struct Operand {
    PatternKey key = 0;
    MoveCost move;
    int latency = 0; // behind the move, to the end of the vector's sums
  };
  struct Entry {
    int arithmetic = 0;
    int operandCount = 0;
    std::array<Operand, kMaximumTerms> operands;
    int afterwards = 0;
  };

  [[nodiscard]] Entry measure(int vector) const;
  [[nodiscard]] Entry measureStore(int store) const;
  void add(const Entry& entry);
  void remove(const Entry& entry);
  [[nodiscard]] int arrival(const MoveCost& move) const;

  const Program& program_;
  const Packing& packing_;
  const Machine& machine_;
  Indexed<Pattern> storePatterns_;
  Indexed<Entry> entries_;      // by vector
  Indexed<Entry> storeEntries_; // by vector of the destination
  Indexed<int> byLevel_;        // vectors, lowest level first
  Indexed<int> firstOfLevel_;
  std::vector<Entry> old_; // what the last change has replaced
  PatternTable patterns_;
  int work_ = 0;
  Indexed<int> ready_; // when the result of each vector stands
  Indexed<int> trial_;
  int longest_ = 0;
};

} // namespace tfmgen::pack
