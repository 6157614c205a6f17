#include "code.hpp"

#include "arithmetic.hpp"
#include "moves.hpp"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace tfmgen::pack {

namespace {

using Contents = std::array<int, kMaximumLanes>; // values by lane, or kEmpty

std::size_t at(int lane) {
  return static_cast<std::size_t>(lane);
}

LaneSet only(int lane) {
  return 1U << static_cast<unsigned>(lane);
}

// The same packing with two lanes a unit.
Packing inNumbers(const Packing& pairs, const Program& numbers) {
  Packing out(numbers, 2 * pairs.lanes);
  for (const Vector& vector : pairs.vectors) {
    const int v = out.addVector(vector.level);
    for (int lane = 0; lane < pairs.lanes; ++lane) {
      for (int part = 0; vector.at(lane) != kEmpty && part < 2; ++part) {
        const int value = 2 * vector.at(lane) + part;
        out.put(value, {v, 2 * lane + part});
        out.isExchanged[value] = pairs.isExchanged[vector.at(lane)];
      }
    }
  }
  return out;
}

// The terms at one position of a vector's sums.
struct Operand {
  Contents values{};
  std::array<double, kMaximumLanes> factors{};
  std::array<double, kMaximumLanes> signsBefore{}; // of the sum so far
  LaneSet present = 0;
  bool isUnit = true; // factors are +-1
  bool hasPlus = false;
  bool hasMinus = false;
  bool negatesSum = false;
};

class Coder {
public:
  Coder(const Program& program, const Packing& packing)
      : program_(program), packing_(packing), lanes_(packing.lanes), valueAt_(program.sourceLength, kEmpty) {
    code_.sampleBits = program.sampleBits;
    code_.lanes = packing.lanes;
    for (int value = 0; value < program.loads.size(); ++value) {
      valueAt_[program.loads[value]] = value;
    }
  }

  Code run() {
    std::vector<int> order;
    for (int v = 0; v < packing_.vectors.size(); ++v) {
      if (std::ranges::any_of(packing_.vectors[v].values, [](int value) { return value != kEmpty; })) {
        order.push_back(v);
      }
    }
    std::ranges::stable_sort(order, {}, [this](int v) { return packing_.vectors[v].level; });
    for (const int v : order) {
      vector(v);
    }
    stores();
    return std::move(code_);
  }

private:
  // A register and what is in it.
  struct Held {
    int instruction;
    Contents values;
    bool isDouble;
    bool isLoad;
    int level; // about how late it stands
  };

  int emit(const Instruction& instruction) {
    code_.instructions.push_back(instruction);
    return static_cast<int>(code_.instructions.size()) - 1;
  }

  // ---- Patterns

  [[nodiscard]] static bool holds(const Held& held, const Contents& wanted) {
    return std::ranges::equal(wanted, held.values, [](int want, int have) { return want == kEmpty || want == have; });
  }

  int pattern(const Contents& wanted, bool isDouble) {
    for (const Held& held : held_) {
      if (held.isDouble == isDouble && holds(held, wanted)) {
        return held.instruction;
      }
    }
    return isDouble ? widened(pattern(wanted, false)) : gathered(wanted);
  }

  // All lanes of a register of floats as doubles, once.
  int widened(int source) {
    const Held floats = *std::ranges::find(held_, source, &Held::instruction);
    for (const Held& held : held_) {
      if (held.isDouble && held.values == floats.values) {
        return held.instruction;
      }
    }
    const int wide = emit({.action = Action::widen, .isDouble = true, .left = source});
    held_.push_back({wide, floats.values, true, false, floats.level + 1});
    return wide;
  }

  [[nodiscard]] int lengthOf(int first) const { return std::min(lanes_, program_.sourceLength - first); }

  int load(int first) {
    Held held{kEmpty, {}, false, true, -1};
    held.values.fill(kEmpty);
    LaneSet inside = 0;
    for (int lane = std::max(0, -first); lane < lengthOf(first); ++lane) {
      held.values[at(lane)] = valueAt_[first + lane];
      inside |= only(lane);
    }
    held.instruction = emit({.action = Action::load, .affected = inside, .element = first});
    held_.push_back(held);
    return held.instruction;
  }

  // The distance between lane and element, where it is one for all lanes.
  [[nodiscard]] bool isWindow(const Contents& wanted, int& first) const {
    bool isFirst = true;
    for (int lane = 0; lane < lanes_; ++lane) {
      const int value = wanted[at(lane)];
      if (value == kEmpty) {
        continue;
      }
      if (!program_.isLoad(value) || (!isFirst && program_.loads[value] - lane != first)) {
        return false;
      }
      first = program_.loads[value] - lane;
      isFirst = false;
    }
    return true;
  }

  void loadMissing(const Contents& wanted) {
    for (int lane = 0; lane < lanes_; ++lane) {
      const int value = wanted[at(lane)];
      if (value != kEmpty && program_.isLoad(value) &&
          std::ranges::none_of(held_, [&](const Held& held) { return !held.isDouble && has(held, value); })) {
        load(program_.loads[value] / lanes_ * lanes_);
      }
    }
  }

  [[nodiscard]] static bool has(const Held& held, int value) {
    return std::ranges::find(held.values, value) != held.values.end();
  }

  // Registers that hold all that is wanted, the ones with the most of it first.
  [[nodiscard]] std::vector<Held> cover(const Contents& wanted) const {
    std::set<int> missing(wanted.begin(), wanted.begin() + lanes_);
    missing.erase(kEmpty);
    std::vector<Held> chosen;
    while (!missing.empty()) {
      const Held* best = nullptr;
      std::pair<int, int> bestMerit{0, 0};
      for (const Held& held : held_) {
        if (held.isDouble) {
          continue;
        }
        const auto found = static_cast<int>(std::ranges::count_if(missing, [&](int v) { return has(held, v); }));
        int inPlace = 0;
        for (int lane = 0; lane < lanes_; ++lane) {
          inPlace += wanted[at(lane)] != kEmpty && wanted[at(lane)] == held.values[at(lane)] ? 1 : 0;
        }
        if (found > 0 && std::pair(found, inPlace) > bestMerit) {
          bestMerit = {found, inPlace};
          best = &held;
        }
      }
      if (best == nullptr) {
        throw std::logic_error("a value that is wanted is in no register");
      }
      chosen.push_back(*best);
      std::erase_if(missing, [best](int value) { return has(*best, value); });
    }
    return chosen;
  }

  int gathered(const Contents& wanted) {
    if (int first = 0; isWindow(wanted, first)) {
      return load(first);
    }
    loadMissing(wanted);
    std::vector<Held> sources = cover(wanted);
    if (sources.size() == 1) {
      return merge(sources[0], sources[0], wanted).instruction;
    }
    while (sources.size() > 1) { // the earliest first
      std::ranges::stable_sort(sources, {}, &Held::level);
      const Held merged = merge(sources[0], sources[1], wanted);
      sources.erase(sources.begin());
      sources[0] = merged;
    }
    return sources[0].instruction;
  }

  // The wanted lanes that two registers can give.
  Held merge(const Held& a, const Held& b, const Contents& wanted) {
    Instruction move{.action = Action::move, .left = a.instruction, .right = b.instruction};
    Held out{kEmpty, {}, false, false, std::max(a.level, b.level) + 1};
    for (int lane = 0; lane < kMaximumLanes; ++lane) {
      const int value = lane < lanes_ ? wanted[at(lane)] : kEmpty;
      const int source = value == kEmpty ? kEmpty : laneOf(value, lane, a, b);
      move.lanes[at(lane)] = source;
      out.values[at(lane)] = source == kEmpty ? kEmpty : value;
    }
    out.instruction = emit(move);
    held_.push_back(out);
    return out;
  }

  // The lane of a, or behind them of b, that has the value; the same lane where that is so.
  [[nodiscard]] int laneOf(int value, int lane, const Held& a, const Held& b) const {
    if (a.values[at(lane)] == value) {
      return lane;
    }
    if (b.values[at(lane)] == value) {
      return lanes_ + lane;
    }
    for (const auto& [held, offset] : {std::pair(&a, 0), std::pair(&b, lanes_)}) {
      const auto* const found = std::ranges::find(held->values, value);
      if (found != held->values.end()) {
        return offset + static_cast<int>(found - held->values.begin());
      }
    }
    return kEmpty;
  }

  // ---- Arithmetic

  [[nodiscard]] Operand operand(int vector, int k) const {
    Operand out;
    out.values.fill(kEmpty);
    out.factors.fill(1);
    out.signsBefore.fill(1);
    for (int lane = 0; lane < lanes_; ++lane) {
      const int value = packing_.vectors[vector].at(lane);
      if (value == kEmpty || k >= static_cast<int>(program_.operation(value).terms.size())) {
        continue;
      }
      const Term& term = termAt(program_, packing_, value, k);
      out.values[at(lane)] = term.value;
      out.factors[at(lane)] = term.factor;
      out.signsBefore[at(lane)] = term.negatesSum ? -1 : 1;
      out.present |= only(lane);
      out.isUnit = out.isUnit && (term.factor == 1 || term.factor == -1);
      out.hasPlus = out.hasPlus || term.factor > 0;
      out.hasMinus = out.hasMinus || term.factor < 0;
      out.negatesSum = out.negatesSum || term.negatesSum;
    }
    return out;
  }

  template <class Predicate>
  [[nodiscard]] LaneSet lanesWhere(int vector, Predicate holds) const {
    LaneSet set = 0;
    for (int lane = 0; lane < lanes_; ++lane) {
      const int value = packing_.vectors[vector].at(lane);
      set |= value != kEmpty && holds(program_.operation(value)) ? only(lane) : 0;
    }
    return set;
  }

  // A step that lanes without a value may take too.
  [[nodiscard]] LaneSet orAll(LaneSet wanted, LaneSet used) const {
    return (used & ~wanted) == 0 ? (1U << static_cast<unsigned>(lanes_)) - 1 : wanted;
  }

  void vector(int v) {
    const VectorShape shape = shapeOf(program_, packing_, v);
    const bool isDouble = shape.isDouble;
    const LaneSet used = lanesWhere(v, [](const Operation&) { return true; });
    std::vector<Operand> operands;
    operands.reserve(static_cast<std::size_t>(shape.termCount));
    for (int k = 0; k < shape.termCount; ++k) {
      operands.push_back(operand(v, k));
    }
    if (shape.turnsAround()) {
      std::swap(operands[0], operands[1]);
    }
    std::vector<int> registers;
    int level = 0;
    for (const Operand& o : operands) {
      registers.push_back(pattern(o.values, isDouble));
      level = std::max(level, std::ranges::find(held_, registers.back(), &Held::instruction)->level);
    }
    const auto multiply = [&](int left, const std::array<double, kMaximumLanes>& factors) {
      return emit({.action = Action::multiply,
                   .isDouble = isDouble,
                   .left = left,
                   .affected = orAll(used, used),
                   .factors = factors});
    };
    int sum = registers[0];
    if (!operands[0].isUnit || operands[0].hasMinus) {
      sum = multiply(sum, operands[0].factors);
    }
    for (std::size_t k = 1; k < operands.size(); ++k) {
      const Operand& o = operands[k];
      if (o.negatesSum) {
        sum = multiply(sum, o.signsBefore);
      }
      Instruction step{.action = Action::add,
                       .isDouble = isDouble,
                       .left = sum,
                       .right = registers[k],
                       .affected = orAll(o.present, used)};
      if (o.isUnit ? o.hasPlus && o.hasMinus : shape.fusesProducts) {
        step.action = Action::fusedSum;
        step.factors = o.factors;
      } else if (!o.isUnit) {
        step.right = multiply(step.right, o.factors);
      } else if (o.hasMinus) {
        step.action = Action::subtract;
      }
      sum = emit(step);
    }
    if (const LaneSet scaled = lanesWhere(v, [](const Operation& o) { return o.isScaled; }); scaled != 0) {
      sum = emit({.action = Action::scale, .isDouble = isDouble, .left = sum, .affected = orAll(scaled, used)});
    }
    if (const LaneSet negated = lanesWhere(v, [](const Operation& o) { return o.isNegated; }); negated != 0) {
      sum = emit({.action = Action::negate, .isDouble = isDouble, .left = sum, .affected = orAll(negated, used)});
    }
    if (isDouble) {
      sum = emit({.action = Action::narrow, .left = sum});
    }
    held_.push_back({sum, packing_.vectors[v].values, false, false, level + static_cast<int>(operands.size())});
  }

  // ---- Stores

  void stores() {
    std::vector<Instruction> stores;
    for (int first = 0; first < program_.destinationLength; first += lanes_) {
      Contents wanted;
      wanted.fill(kEmpty);
      LaneSet inside = 0;
      LaneSet scaled = 0;
      LaneSet negated = 0;
      LaneSet zero = 0;
      const auto isHere = [&](int element) { return element >= first && element < first + lanes_; };
      for (int lane = 0; lane < lanes_ && first + lane < program_.destinationLength; ++lane) {
        inside |= only(lane);
      }
      for (const Output& output : program_.outputs) {
        if (isHere(output.element)) {
          const LaneSet lane = only(output.element - first);
          wanted[at(output.element - first)] = output.value;
          scaled |= output.isScaled ? lane : 0;
          negated |= output.isNegated ? lane : 0;
        }
      }
      for (const int element : program_.zeros) {
        zero |= isHere(element) ? only(element - first) : 0;
      }
      int value = pattern(wanted, false);
      const LaneSet used = inside & ~zero;
      if (scaled != 0) {
        value = emit({.action = Action::scale, .left = value, .affected = orAll(scaled, used)});
      }
      if (negated != 0) {
        value = emit({.action = Action::negate, .left = value, .affected = orAll(negated, used)});
      }
      if (zero != 0) {
        value = emit({.action = Action::clear, .left = value, .affected = zero});
      }
      stores.push_back({.action = Action::store, .left = value, .affected = inside, .element = first});
    }
    std::ranges::for_each(stores, [this](const Instruction& store) { emit(store); });
  }

  const Program& program_;
  const Packing& packing_;
  int lanes_;
  Indexed<int> valueAt_; // by element of the source
  Code code_;
  std::vector<Held> held_;
};

} // namespace

Code codeOf(const Program& program, const Packing& packing) {
  if (program.numbersInUnit == 1) {
    return Coder(program, packing).run();
  }
  const Program numbers = inNumbers(program);
  const Packing lanes = inNumbers(packing, numbers);
  return Coder(numbers, lanes).run();
}

CodeCounts count(const Code& code) {
  CodeCounts counts;
  for (const Instruction& instruction : code.instructions) {
    switch (instruction.action) {
    case Action::load:
    case Action::store: ++counts.accesses; break;
    case Action::move:
    case Action::clear: ++counts.moves; break;
    default: ++counts.operations;
    }
  }
  return counts;
}

} // namespace tfmgen::pack
