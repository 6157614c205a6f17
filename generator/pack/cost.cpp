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
    : program_(program), packing_(packing), machine_(machine), vectors_(packing.vectors.size()),
      ready_(packing.vectors.size()), trial_(packing.vectors.size()), isChanged_(packing.vectors.size()) {
  const int lanes = packing.lanes;
  Indexed<Pattern> stores((program.destinationLength + lanes - 1) / lanes, Pattern::empty());
  for (const Output& output : program.outputs) {
    stores[output.element / lanes].at(output.element % lanes).value = static_cast<std::int16_t>(output.value);
  }
  for (int level = 0; level < dependences.levels; ++level) {
    firstOfLevel_.push(byLevel_.size());
    for (int v = 0; v < packing.vectors.size(); ++v) {
      if (packing.vectors[v].level == level) {
        byLevel_.push(v);
      }
    }
  }
  for (int v = 0; v < vectors_.size(); ++v) {
    measure(v, vectors_[v].now());
    add(vectors_[v].now());
  }
  for (const Pattern& pattern : stores) {
    stores_.push({{storeEntry(pattern), {}}});
    add(stores_.back().now());
  }
}

Cost::Contents Cost::contents(int vector) const {
  Contents out{packing_.vectors[vector].values, 0};
  for (int lane = 0; lane < packing_.lanes; ++lane) {
    const int value = packing_.vectors[vector].at(lane);
    out.exchanged |= value != kEmpty && packing_.isExchanged[value] != 0 ? 1U << static_cast<unsigned>(lane) : 0;
  }
  return out;
}

void Cost::measure(int vector, Entry& entry) const {
  entry.contents = contents(vector);
  const VectorShape shape = shapeOf(program_, packing_, vector);
  const ArithmeticCost arithmetic = arithmeticCost(shape, machine_);
  entry.arithmetic = arithmetic.cost;
  entry.afterwards = arithmetic.afterwards;
  entry.operandCount = shape.termCount;
  for (int k = 0; k < shape.termCount; ++k) {
    Operand& operand = entry.operands[static_cast<std::size_t>(k)];
    operand.pattern = shape.operand(k);
    operand.key = keyOf(operand.pattern, packing_.lanes);
    operand.latency = arithmetic.latency[static_cast<std::size_t>(k)];
  }
  measureMoves(entry);
}

void Cost::measureMoves(Entry& entry) const {
  for (Operand& operand : entry.used()) {
    operand.move = moveCost(operand.pattern, program_, packing_, machine_);
  }
}

void Cost::measureMoves(const Entry& before, Entry& entry) const {
  entry.contents = before.contents;
  entry.arithmetic = before.arithmetic;
  entry.afterwards = before.afterwards;
  entry.operandCount = before.operandCount;
  std::ranges::copy(before.used(), entry.operands.begin());
  measureMoves(entry);
}

Cost::Entry Cost::storeEntry(const Pattern& pattern) const {
  Entry entry;
  if (const PatternKey key = keyOf(pattern, packing_.lanes); key != 0) { // not a vector of zeros only
    entry.operands[0] = {pattern, key, {}, 0};
    entry.operandCount = 1;
    measureMoves(entry);
  }
  return entry;
}

void Cost::add(const Entry& entry) {
  work_ += entry.arithmetic;
  for (const Operand& operand : entry.used()) {
    work_ += patterns_.add(operand.key, operand.move.cost);
  }
}

void Cost::remove(const Entry& entry) {
  work_ -= entry.arithmetic;
  for (const Operand& operand : entry.used()) {
    work_ += patterns_.remove(operand.key);
  }
}

void Cost::begin(std::span<const int> vectors, std::span<const int> stores) {
  for (const int v : vectors) {
    remove(vectors_[v].now());
    vectors_[v].exchange();
  }
  for (const int s : stores) {
    remove(stores_[s].now());
    stores_[s].exchange();
  }
}

bool Cost::count(std::span<const int> vectors, std::span<const int> stores, int limit) {
  counted_ = 0;
  for (const int v : vectors) {
    const Entry& before = vectors_[v].before();
    Entry& entry = vectors_[v].now();
    if (before.contents == contents(v)) {
      measureMoves(before, entry);
    } else {
      measure(v, entry);
    }
    add(entry);
    ++counted_;
    if (work_ > limit) {
      return false;
    }
  }
  for (const int s : stores) {
    measureMoves(stores_[s].before(), stores_[s].now());
    add(stores_[s].now());
    ++counted_;
  }
  return work_ <= limit;
}

void Cost::takeBack(std::span<const int> vectors, std::span<const int> stores) {
  const auto versions = [&](std::size_t i) -> Versions& {
    return i < vectors.size() ? vectors_[vectors[i]] : stores_[stores[i - vectors.size()]];
  };
  for (std::size_t i = 0; i < counted_; ++i) {
    remove(versions(i).now());
  }
  for (std::size_t i = 0; i < vectors.size() + stores.size(); ++i) {
    versions(i).exchange();
    add(versions(i).now());
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

int Cost::ready(const Entry& entry) const {
  int time = 0;
  for (const Operand& operand : entry.used()) {
    time = std::max(time, arrival(operand.move) + operand.latency);
  }
  return time + entry.afterwards;
}

bool Cost::waitsForChange(const Entry& entry) const {
  return std::ranges::any_of(entry.used(), [this](const Operand& operand) {
    const auto registers =
        std::span(operand.move.registers).first(static_cast<std::size_t>(operand.move.registerCount));
    return std::ranges::any_of(registers, [this](int r) { return isChanged_[r] != 0; });
  });
}

int Cost::path() {
  std::ranges::fill(isChanged_, 1);
  return pathFrom(0);
}

int Cost::path(std::span<const int> changed) {
  std::ranges::fill(isChanged_, 0);
  int level = firstOfLevel_.size() - 1;
  for (const int v : changed) {
    isChanged_[v] = 1;
    level = std::min(level, packing_.vectors[v].level);
  }
  return pathFrom(level);
}

int Cost::pathFrom(int level) {
  std::ranges::copy(ready_, trial_.begin());
  bool hasOther = false; // a vector is ready at another time than before
  for (int i = firstOfLevel_[level]; i < byLevel_.size(); ++i) {
    const int v = byLevel_[i];
    if (isChanged_[v] != 0 || (hasOther && waitsForChange(vectors_[v].now()))) {
      trial_[v] = ready(vectors_[v].now());
      isChanged_[v] = trial_[v] != ready_[v] ? 1 : 0;
      hasOther = hasOther || isChanged_[v] != 0;
    }
  }
  int sum = 0;
  longest_ = 0;
  for (const Versions& store : stores_) {
    const int time = ready(store.now());
    longest_ = std::max(longest_, time);
    sum += time;
  }
  // The last store bounds a call whose result is awaited; the others weigh less.
  return machine_.costs.cycle * (3 * longest_ + 2 * sum / stores_.size()) / 5;
}

void Cost::keepPath() {
  std::swap(ready_, trial_);
}

} // namespace tfmgen::pack
