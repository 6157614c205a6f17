#include "cost.hpp"

#include <algorithm>
#include <utility>

namespace tfmgen::pack {

// ---- Patterns

int PatternTable::add(PatternKey key, int cost) {
  Entry& e = entry(key);
  if (e.uses++ > 0) {
    return 0;
  }
  e.cost = cost;
  return cost;
}

int PatternTable::remove(PatternKey key) {
  Entry& e = entry(key);
  return --e.uses > 0 ? 0 : -e.cost;
}

// Open addressing. Keys whose last use is gone stay until the table is rebuilt.
PatternTable::Entry& PatternTable::entry(PatternKey key) {
  const std::size_t mask = entries_.size() - 1;
  std::size_t i = static_cast<std::size_t>(key) & mask;
  while (entries_[i].key != 0 && entries_[i].key != key) {
    i = (i + 1) & mask;
  }
  if (entries_[i].key == 0) {
    if (2 * taken_ >= entries_.size()) {
      rebuild();
      return entry(key);
    }
    ++taken_;
    entries_[i].key = key;
  }
  return entries_[i];
}

void PatternTable::rebuild() {
  const auto inUse =
      static_cast<std::size_t>(std::ranges::count_if(entries_, [](const Entry& e) { return e.uses > 0; }));
  std::vector<Entry> old(inUse * 4 > entries_.size() ? 2 * entries_.size() : entries_.size());
  std::swap(old, entries_);
  taken_ = 0;
  for (const Entry& e : old) {
    if (e.uses > 0) {
      entry(e.key) = e;
    }
  }
}

// ---- Vectors

Cost::Cost(const Program& program, const Dependences& dependences, const Packing& packing, const Machine& machine)
    : program_(program), packing_(packing), machine_(machine), entries_(packing.vectors.size()),
      ready_(packing.vectors.size()), trial_(packing.vectors.size()) {
  const int lanes = packing.lanes;
  storePatterns_ = Indexed<Pattern>((program.destinationLength + lanes - 1) / lanes, Pattern::empty());
  storeEntries_ = Indexed<Entry>(storePatterns_.size());
  for (const Output& output : program.outputs) {
    storePatterns_[output.element / lanes].at(output.element % lanes).value = output.value;
  }
  for (int level = 0; level < dependences.levels; ++level) {
    firstOfLevel_.push(byLevel_.size());
    for (int v = 0; v < packing.vectors.size(); ++v) {
      if (packing.vectors[v].level == level) {
        byLevel_.push(v);
      }
    }
  }
  for (int v = 0; v < entries_.size(); ++v) {
    add(entries_[v] = measure(v));
  }
  for (int s = 0; s < storeEntries_.size(); ++s) {
    add(storeEntries_[s] = measureStore(s));
  }
}

Cost::Entry Cost::measure(int vector) const {
  Entry entry;
  const VectorShape shape = shapeOf(program_, packing_, vector);
  const ArithmeticCost arithmetic = arithmeticCost(shape, machine_);
  entry.arithmetic = arithmetic.cost;
  entry.afterwards = arithmetic.afterwards;
  entry.operandCount = shape.termCount;
  for (int k = 0; k < shape.termCount; ++k) {
    const auto position = static_cast<std::size_t>(k);
    entry.operands[position] = {keyOf(shape.operand(k), packing_.lanes),
                                moveCost(shape.operand(k), program_, packing_, machine_), arithmetic.latency[position]};
  }
  return entry;
}

Cost::Entry Cost::measureStore(int store) const {
  Entry entry;
  const Pattern& pattern = storePatterns_[store];
  if (const PatternKey key = keyOf(pattern, packing_.lanes); key != 0) { // not a vector of zeros only
    entry.operands[0] = {key, moveCost(pattern, program_, packing_, machine_), 0};
    entry.operandCount = 1;
  }
  return entry;
}

void Cost::add(const Entry& entry) {
  work_ += entry.arithmetic;
  for (int k = 0; k < entry.operandCount; ++k) {
    const Operand& operand = entry.operands[static_cast<std::size_t>(k)];
    work_ += patterns_.add(operand.key, operand.move.cost);
  }
}

void Cost::remove(const Entry& entry) {
  work_ -= entry.arithmetic;
  for (int k = 0; k < entry.operandCount; ++k) {
    work_ += patterns_.remove(entry.operands[static_cast<std::size_t>(k)].key);
  }
}

void Cost::begin(std::span<const int> vectors, std::span<const int> stores) {
  old_.clear();
  for (const int v : vectors) {
    remove(entries_[v]);
    old_.push_back(entries_[v]);
  }
  for (const int s : stores) {
    remove(storeEntries_[s]);
    old_.push_back(storeEntries_[s]);
  }
}

void Cost::count(std::span<const int> vectors, std::span<const int> stores) {
  for (const int v : vectors) {
    add(entries_[v] = measure(v));
  }
  for (const int s : stores) {
    add(storeEntries_[s] = measureStore(s));
  }
}

void Cost::takeBack(std::span<const int> vectors, std::span<const int> stores) {
  for (const int v : vectors) {
    remove(entries_[v]);
  }
  for (const int s : stores) {
    remove(storeEntries_[s]);
  }
  auto old = old_.begin();
  for (const int v : vectors) {
    add(entries_[v] = *old++);
  }
  for (const int s : stores) {
    add(storeEntries_[s] = *old++);
  }
}

// ---- The longest path

// When a pattern stands. Of several registers those that are early are merged first.
int Cost::arrival(const MoveCost& move) const {
  std::array<int, kMaximumLanes + 1> times{};
  int count = 0;
  for (int i = 0; i < move.registerCount; ++i) {
    times[static_cast<std::size_t>(count++)] = trial_[move.registers[static_cast<std::size_t>(i)]];
  }
  if (move.windowCount > 0) {
    times[static_cast<std::size_t>(count++)] = 0;
  }
  auto open = std::span(times).first(static_cast<std::size_t>(count));
  while (open.size() > 2) {
    std::ranges::sort(open);
    open[1] += machine_.latencies.move;
    open = open.subspan(1);
  }
  return (open.empty() ? 0 : *std::ranges::max_element(open)) + move.latency;
}

int Cost::path(int firstLevel) {
  std::copy(ready_.begin(), ready_.end(), trial_.begin());
  for (int i = firstOfLevel_[firstLevel]; i < byLevel_.size(); ++i) {
    const Entry& entry = entries_[byLevel_[i]];
    int time = 0;
    for (int k = 0; k < entry.operandCount; ++k) {
      const Operand& operand = entry.operands[static_cast<std::size_t>(k)];
      time = std::max(time, arrival(operand.move) + operand.latency);
    }
    trial_[byLevel_[i]] = time + entry.afterwards;
  }
  int sum = 0;
  longest_ = 0;
  for (const Entry& entry : storeEntries_) {
    const int time = entry.operandCount > 0 ? arrival(entry.operands[0].move) : 0;
    longest_ = std::max(longest_, time);
    sum += time;
  }
  // The last store bounds a call whose result is awaited; the others weigh less.
  return machine_.costs.cycle * (3 * longest_ + 2 * sum / storeEntries_.size()) / 5;
}

void Cost::keepPath() {
  std::swap(ready_, trial_);
}

} // namespace tfmgen::pack
