#include "program.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace tfmgen::wide {

namespace {

using Op = Instruction::Op;
using number::at;

// An element of a register; of none where anything or zero is wanted.
struct Place {
  int value = kAny;
  int element = 0;

  static constexpr int kAny = -1;
  static constexpr int kZero = -2;
  [[nodiscard]] bool isRegister() const { return value >= 0; }
  auto operator<=>(const Place&) const = default;
};

using Places = std::vector<Place>;

constexpr int kHalfWidth = 4; // elements of the shorter of two kinds of registers

Parts signsOf(const Element& e) {
  constexpr Quad kMinus{-1};
  constexpr Quad kPlus{1};
  return {e.isNegative[0] ? kMinus : kPlus, e.isNegative[1] ? kMinus : kPlus};
}

class Builder {
public:
  explicit Builder(const Graph& graph) : graph_(graph) {}

  Program run() {
    for (const Node& node : graph_.nodes) {
      switch (node.op) {
      case Node::Op::sum: values_.push_back(sum(node)); break;
      case Node::Op::product: values_.push_back(product(node)); break;
      case Node::Op::scale: values_.push_back(scaled(node)); break;
      }
    }
    for (const Store& store : graph_.stores) {
      Instruction to{Op::store, {at(values_, store.node)}, {}, {}, static_cast<int>(store.elements.size())};
      std::ranges::transform(store.elements, std::back_inserter(to.elements),
                             [](const std::optional<int>& e) { return e.value_or(-1); });
      program_.push_back(to);
    }
    return std::move(program_);
  }

private:
  // ---- Arithmetic

  int sum(const Node& node) {
    const int width = static_cast<int>(node.left.size());
    int left = operand(node.left);
    const int right = operand(node.right);
    std::vector<Parts> leftSigns = signs(node.left, node.right);
    const std::vector<Parts> rightSigns = signs(node.right, node.left);
    if (isAll(leftSigns, 1)) {
      return signedSum(left, right, rightSigns, width);
    }
    if (isAll(rightSigns, 1)) {
      return signedSum(right, left, leftSigns, width);
    }
    left = emit({Op::flip, {left}, {}, leftSigns, width});
    return signedSum(left, right, rightSigns, width);
  }

  // first + signs * second
  int signedSum(int first, int second, const std::vector<Parts>& signs, int width) {
    if (isAll(signs, 1)) {
      return emit({Op::add, {first, second}, {}, {}, width});
    }
    if (isAll(signs, -1)) {
      return emit({Op::subtract, {first, second}, {}, {}, width});
    }
    return emit({Op::mixedSum, {first, second}, {}, signs, width});
  }

  int product(const Node& node) {
    std::vector<Parts> factors = node.factors;
    const auto known = std::ranges::find_if(node.left, [](const Element& e) { return e.kind != Element::Kind::any; });
    for (std::size_t i = 0; i < factors.size(); ++i) {
      if (node.left[i].kind == Element::Kind::any) {
        factors[i] = node.factors[static_cast<std::size_t>(known - node.left.begin())];
        continue;
      }
      for (std::size_t part = 0; part < 2; ++part) {
        factors[i][part] = node.left[i].isNegative[part] ? -factors[i][part] : factors[i][part];
      }
    }
    return emit({Op::multiply, {operand(node.left)}, {}, factors, static_cast<int>(node.left.size())});
  }

  int scaled(const Node& node) {
    return emit({Op::scale, {operand(node.left)}, {}, signs(node.left, node.left), static_cast<int>(node.left.size())});
  }

  // Where a lane holds anything, so may the sign: the one of the same part of an element that is wanted.
  static std::vector<Parts> signs(const Elements& elements, const Elements& others) {
    std::vector<Parts> out;
    const auto known = std::ranges::find_if(elements, [](const Element& e) { return e.kind != Element::Kind::any; });
    for (std::size_t i = 0; i < elements.size(); ++i) {
      const bool isAny = elements[i].kind == Element::Kind::any && others[i].kind == Element::Kind::any;
      out.push_back(signsOf(isAny ? *known : elements[i]));
    }
    return out;
  }

  static bool isAll(const std::vector<Parts>& signs, int value) {
    return std::ranges::all_of(signs, [value](const Parts& p) { return p[0] == value && p[1] == value; });
  }

  // ---- Operands: elements, then the order of their parts. Signs are the business of the arithmetic.

  int operand(const Elements& elements) {
    const auto isMoved = [](const Element& e) {
      return e.kind == Element::Kind::memory || e.kind == Element::Kind::value;
    };
    const bool isSwapped = std::ranges::any_of(elements, [&](const Element& e) { return isMoved(e) && e.isSwapped; });
    const bool isMixed =
        isSwapped && std::ranges::any_of(elements, [&](const Element& e) { return isMoved(e) && !e.isSwapped; });
    if (isMixed) {
      return mixedOperand(elements);
    }
    const int value = gather(places(elements));
    return isSwapped ? emit({Op::swap, {value}, {}, {}, static_cast<int>(elements.size())}) : value;
  }

  // Some elements with their parts exchanged, some without: both, and of each the ones that are wanted.
  int mixedOperand(const Elements& elements) {
    const int plain = gather(places(elements));
    const int width = static_cast<int>(elements.size());
    const int swapped = emit({Op::swap, {plain}, {}, {}, width});
    Instruction chosen{Op::shuffle, {plain, swapped}, {}, {}, width};
    for (int i = 0; i < width; ++i) {
      chosen.elements.push_back(at(elements, i).isSwapped ? width + i : i);
    }
    return emit(chosen);
  }

  // Elements of memory are registers too, once they are loaded together.
  Places places(const Elements& elements) {
    Instruction load{Op::load, {}, std::vector<int>(elements.size(), -1), {}, static_cast<int>(elements.size())};
    bool isLoad = false;
    bool isMemoryOnly = true;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      if (elements[i].kind == Element::Kind::memory) {
        load.elements[i] = elements[i].index;
        isLoad = true;
      }
      isMemoryOnly = isMemoryOnly && elements[i].kind != Element::Kind::value;
    }
    const int loaded = isLoad ? emit(load) : -1;
    Places out;
    for (std::size_t i = 0; i < elements.size(); ++i) {
      const Element& e = elements[i];
      const Place inLoad{loaded, static_cast<int>(i)};
      switch (e.kind) {
      case Element::Kind::any: out.emplace_back(); break;
      case Element::Kind::zero: out.push_back(isLoad && isMemoryOnly ? inLoad : Place{Place::kZero}); break;
      case Element::Kind::memory: out.push_back(inLoad); break;
      case Element::Kind::value: out.push_back({at(values_, e.index), e.position}); break;
      }
    }
    return out;
  }

  // ---- Moves

  // A register that holds these places.
  int gather(Places wanted) {
    const int width = static_cast<int>(wanted.size());
    for (Place& place : wanted) {
      if (place.value == Place::kZero) {
        place = {emit({Op::zero, {}, {}, {}, width}), 0};
      }
    }
    if (width == kHalfWidth) {
      for (Place& place : wanted) {
        place = inHalf(place);
      }
    }
    const std::vector<int> sources = sourcesOf(wanted);
    const bool isOfWidth =
        std::ranges::all_of(sources, [&](int source) { return at(program_, source).width == width; });
    const bool isInPlace =
        isOfWidth && sources.size() == 1 && std::ranges::all_of(wanted, [i = 0](const Place& p) mutable {
          const int here = i++;
          return !p.isRegister() || p.element == here;
        });
    if (isInPlace) {
      return sources[0];
    }
    if (isOfWidth && sources.size() <= 2) {
      return shuffle(sources[0], sources.back(), wanted);
    }
    if (isOfWidth) {
      const std::optional<int> value = gatherPairs(wanted);
      if (value) {
        return *value;
      }
    }
    const auto middle = wanted.begin() + kHalfWidth;
    const int low = gatherOrAny({wanted.begin(), middle});
    const int high = gatherOrAny({middle, wanted.end()});
    return emit({Op::join, {low, high}, {}, {}, width});
  }

  // Where nothing is wanted zeros are as good as anything.
  int gatherOrAny(const Places& wanted) {
    const bool isAny = std::ranges::none_of(wanted, &Place::isRegister);
    return isAny ? emit({Op::zero, {}, {}, {}, static_cast<int>(wanted.size())}) : gather(wanted);
  }

  // The same element in a register of four.
  Place inHalf(const Place& place) {
    if (!place.isRegister() || at(program_, place.value).width == kHalfWidth) {
      return place;
    }
    const int first = place.element / kHalfWidth * kHalfWidth;
    return {emit({Op::half, {place.value}, {first}, {}, kHalfWidth}), place.element - first};
  }

  static std::vector<int> sourcesOf(const Places& places) {
    std::vector<int> sources;
    for (const Place& place : places) {
      if (place.isRegister() && std::ranges::find(sources, place.value) == sources.end()) {
        sources.push_back(place.value);
      }
    }
    return sources;
  }

  int shuffle(int a, int b, const Places& wanted) {
    const int width = static_cast<int>(wanted.size());
    Instruction move{Op::shuffle, {a}, {}, {}, width};
    if (b != a) {
      move.operands.push_back(b);
    }
    for (const Place& place : wanted) {
      move.elements.push_back(!place.isRegister() ? -1 : place.value == a ? place.element : width + place.element);
    }
    return emit(move);
  }

  // Two elements that lie beside each other in one half of a register.
  struct Pair {
    int value = Place::kAny;
    int half = 0;
  };

  // First pairs, each from one or two registers, then the pairs, which must be left in no more than two registers.
  std::optional<int> gatherPairs(const Places& wanted) {
    Places both;
    for (std::size_t i = 0; i < wanted.size(); i += 2) {
      const Pair found = pair(wanted[i], wanted[i + 1], static_cast<int>(wanted.size()));
      both.push_back(found.value < 0 ? Place{} : Place{found.value, 2 * found.half});
      both.push_back(found.value < 0 ? Place{} : Place{found.value, 2 * found.half + 1});
    }
    if (sourcesOf(both).size() > 2) {
      return {};
    }
    return gather(both);
  }

  // As in a transposition, where the other parts of the register serve other columns.
  Pair pair(const Place& first, const Place& second, int width) {
    if (!first.isRegister() && !second.isRegister()) {
      return {};
    }
    const Place& a = first.isRegister() ? first : second;
    const Place& b = second.isRegister() ? second : first;
    const bool isInPlace = (!first.isRegister() || first.element % 2 == 0) &&
                           (!second.isRegister() || second.element % 2 == 1) && a.value == b.value &&
                           a.element / 2 == b.element / 2;
    if (isInPlace) {
      return {a.value, a.element / 2};
    }
    Places moved;
    if (a.element / 2 == b.element / 2) {
      for (int half = 0; half < width / 2; ++half) {
        moved.push_back({a.value, 2 * half + a.element % 2});
        moved.push_back({b.value, 2 * half + b.element % 2});
      }
      return {shuffle(a.value, b.value, moved), a.element / 2};
    }
    moved.resize(static_cast<std::size_t>(width));
    moved[0] = a;
    moved[1] = b;
    return {shuffle(a.value, b.value, moved), 0};
  }

  // ---- Equal instructions are one.

  int emit(Instruction instruction) {
    if (instruction.op == Op::add && instruction.operands[0] > instruction.operands[1]) {
      std::swap(instruction.operands[0], instruction.operands[1]);
    }
    std::vector<std::pair<double, bool>> factors;
    for (const Parts& parts : instruction.factors) {
      for (const Quad f : parts) {
        factors.emplace_back(static_cast<double>(f), f == 0 && 1 / static_cast<double>(f) < 0);
      }
    }
    const auto [entry, isNew] =
        known_.try_emplace({instruction.op, instruction.operands, instruction.elements, factors, instruction.width},
                           static_cast<int>(program_.size()));
    if (isNew) {
      program_.push_back(std::move(instruction));
    }
    return entry->second;
  }

  using Key = std::tuple<Op, std::vector<int>, std::vector<int>, std::vector<std::pair<double, bool>>, int>;

  const Graph& graph_;
  Program program_;
  std::vector<int> values_; // by node
  std::map<Key, int> known_;
};

} // namespace

Program program(const Graph& graph) {
  return Builder(graph).run();
}

graph::Counts count(const Program& program) {
  graph::Counts counts;
  for (const Instruction& i : program) {
    switch (i.op) {
    case Op::add:
    case Op::subtract:
    case Op::mixedSum: ++counts.additions; break;
    case Op::multiply:
    case Op::scale: ++counts.multiplications; break;
    case Op::shuffle:
    case Op::join:
    case Op::half: ++counts.shuffles; break;
    case Op::swap:
    case Op::flip: ++counts.rotations; break;
    case Op::load:
    case Op::zero:
    case Op::store: break;
    }
  }
  return counts;
}

} // namespace tfmgen::wide
