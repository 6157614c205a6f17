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
  // the change is taken back, takeBack. What the vectors cost only adds up, so counting ends, and is false, as soon as
  // the work is beyond the limit.
  void begin(std::span<const int> vectors, std::span<const int> stores);
  bool count(std::span<const int> vectors, std::span<const int> stores, int limit);
  void takeBack(std::span<const int> vectors, std::span<const int> stores);

  [[nodiscard]] int work() const { return work_; } // operations and moves
  // The cycles of the longest path, weighted, after the last count, of these vectors.
  int path(std::span<const int> changed);
  int path();      // of all vectors
  void keepPath(); // the last one that was computed is that of the packing

  [[nodiscard]] int longestPath() const { return longest_; } // cycles

private:
  struct Operand {
    Pattern pattern;
    PatternKey key = 0;
    MoveCost move;
    int latency = 0; // behind the move, to the end of the vector's sums
  };
  // What is in a vector: its values and which of them have their terms in the other order.
  struct Contents {
    std::array<int, kMaximumLanes> values{};
    unsigned exchanged = 0;
    bool operator==(const Contents&) const = default;
  };
  struct Entry {
    Contents contents;
    int arithmetic = 0;
    int operandCount = 0;
    std::array<Operand, kMaximumTerms> operands; // as many as there are
    int afterwards = 0;

    [[nodiscard]] std::span<const Operand> used() const {
      return std::span(operands).first(static_cast<std::size_t>(operandCount));
    }
    [[nodiscard]] std::span<Operand> used() {
      return std::span(operands).first(static_cast<std::size_t>(operandCount));
    }
  };

  [[nodiscard]] Contents contents(int vector) const;
  void measure(int vector, Entry& entry) const;
  void measureMoves(Entry& entry) const;
  void measureMoves(const Entry& before, Entry& entry) const; // the same contents, whose operands have moved
  [[nodiscard]] Entry storeEntry(const Pattern& pattern) const;
  void add(const Entry& entry);
  void remove(const Entry& entry);
  [[nodiscard]] int arrival(const MoveCost& move) const;
  [[nodiscard]] int ready(const Entry& entry) const;
  [[nodiscard]] bool waitsForChange(const Entry& entry) const;
  int pathFrom(int level);

  const Program& program_;
  const Packing& packing_;
  const Machine& machine_;
  // What is counted now, and what was before the last change.
  struct Versions {
    std::array<Entry, 2> entries;
    std::size_t current = 0;

    [[nodiscard]] const Entry& now() const { return entries[current]; }
    [[nodiscard]] Entry& now() { return entries[current]; }
    [[nodiscard]] const Entry& before() const { return entries[1 - current]; }
    void exchange() { current = 1 - current; }
  };

  Indexed<Versions> vectors_;
  Indexed<Versions> stores_; // vectors of the destination
  Indexed<int> byLevel_;     // vectors, lowest level first
  Indexed<int> firstOfLevel_;
  std::vector<Entry> old_;  // what the last change has replaced
  std::size_t counted_ = 0; // of the vectors and stores of that change
  PatternTable patterns_;
  int work_ = 0;
  Indexed<int> ready_; // when the result of each vector stands
  Indexed<int> trial_;
  Indexed<char> isChanged_; // by vector: when it is ready
  int longest_ = 0;
};

} // namespace tfmgen::pack
