#include "elements.hpp"

#include "numbers.hpp"
#include "schedule/schedule.hpp"

#include <algorithm>
#include <cstdlib>
#include <map>

namespace tfmgen::print {

namespace {

using number::at;
using wide::Instruction;
using wide::Parts;
using Op = Instruction::Op;

constexpr int kHalf = 2; // elements of the shortest vector

std::string list(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) {
    text += (text.empty() ? "" : ", ") + item;
  }
  return text;
}

// Vectors of 2, 4 and 8 elements.
std::string type(int width) {
  return "V" + std::to_string(width);
}

// Elements are counted in pairs of real numbers.
std::string offset(const char* array, int element) {
  return array + (" + " + std::to_string(2 * element));
}

bool isRun(std::span<const int> elements) {
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (elements[i] < 0 || elements[i] != elements[0] + static_cast<int>(i)) {
      return false;
    }
  }
  return true;
}

class Writer {
public:
  explicit Writer(const wide::Program& program) : program_(program) {}

  std::string write(const std::vector<int>& order) {
    for (const int index : order) {
      const Instruction& i = at(program_, index);
      if (i.op == Op::store) {
        store("t" + std::to_string(i.operands[0]), i.elements);
      } else {
        body_ += "    const " + type(i.width) + " t" + std::to_string(index) + " = " + expression(i) + ";\n";
      }
    }
    return constants_ + body_;
  }

private:
  void line(const std::string& statement) { body_ += "    " + statement + ";\n"; }

  static std::string name(const Instruction& i, int operand) { return "t" + std::to_string(at(i.operands, operand)); }

  std::string expression(const Instruction& i) {
    switch (i.op) {
    case Op::load: return load(i.elements);
    case Op::shuffle: return shuffle(i);
    case Op::join: return "join(" + name(i, 0) + ", " + name(i, 1) + ")";
    case Op::half: return (i.elements[0] == 0 ? "lowHalf(" : "highHalf(") + name(i, 0) + ")";
    case Op::swap: return "swapParts(" + name(i, 0) + ")";
    case Op::flip: return "flipSigns(" + name(i, 0) + ", " + constant(zeros(i.factors), i.width) + ")";
    case Op::add: return name(i, 0) + " + " + name(i, 1);
    case Op::subtract: return name(i, 0) + " - " + name(i, 1);
    case Op::mixedSum: return mixedSum(i);
    case Op::multiply: return constant(i.factors, i.width) + " * " + name(i, 0);
    case Op::scale: return scale(i) + " * " + name(i, 0);
    case Op::zero: return type(i.width) + "{}";
    case Op::store: break;
    }
    std::abort();
  }

  static std::string shuffle(const Instruction& i) {
    std::vector<std::string> elements;
    std::ranges::transform(i.elements, std::back_inserter(elements), [](int e) { return std::to_string(e); });
    return "shuffleElements<" + list(elements) + ">(" + name(i, 0) + ", " + "t" + std::to_string(i.operands.back()) +
           ")";
  }

  std::string mixedSum(const Instruction& i) {
    const std::string operands = name(i, 0) + ", " + name(i, 1) + ")";
    const auto isAll = [&](const Parts& signs) { return std::ranges::count(i.factors, signs) == i.width; };
    if (isAll({-1, 1})) {
      return "subtractAdd(" + operands;
    }
    if (isAll({1, -1})) {
      return "addSubtract(" + operands;
    }
    return "fusedSum(" + name(i, 0) + ", " + constant(i.factors, i.width) + ", " + name(i, 1) + ")";
  }

  std::string scale(const Instruction& i) {
    const bool isPlain = std::ranges::count(i.factors, Parts{1, 1}) == i.width;
    std::string factor = isPlain ? "" : "flipSigns(";
    factor += "broadcast<" + type(i.width) + ">(scale)";
    return isPlain ? factor : factor + ", " + constant(zeros(i.factors), i.width) + ")";
  }

  // Zeros with the signs of the factors.
  static std::vector<Parts> zeros(std::vector<Parts> factors) {
    for (Parts& parts : factors) {
      for (wide::Quad& f : parts) {
        f = f < 0 ? -wide::Quad{0} : wide::Quad{0};
      }
    }
    return factors;
  }

  std::string constant(const std::vector<Parts>& factors, int width) {
    std::vector<std::string> numbers;
    for (const Parts& parts : factors) {
      for (const wide::Quad f : parts) {
        numbers.push_back(literal(f, Precision::single));
      }
    }
    const std::string value = type(width) + "{" + list(numbers) + "}";
    const auto [entry, isNew] = constantNames_.try_emplace(value, "c" + std::to_string(constantNames_.size() + 1));
    if (isNew) {
      constants_ += "    constexpr " + type(width) + " " + entry->second + value.substr(value.find('{')) + ";\n";
    }
    return entry->second;
  }

  // ---- Memory: adjacent elements by one access, others by one each.

  static std::string load(std::span<const int> elements) {
    const int width = static_cast<int>(elements.size());
    if (isRun(elements)) {
      return "loadUnaligned<" + type(width) + ">(" + offset("x", elements[0]) + ")";
    }
    if (width == kHalf) {
      if (elements[0] >= 0 && elements[1] >= 0) {
        return "loadHalves(" + offset("x", elements[0]) + ", " + offset("x", elements[1]) + ")";
      }
      if (elements[0] >= 0) {
        return "loadLow(" + offset("x", elements[0]) + ")";
      }
      return elements[1] < 0 ? type(width) + "{}" : "loadHigh(" + type(width) + "{}, " + offset("x", elements[1]) + ")";
    }
    const std::size_t middle = elements.size() / 2;
    return "join(" + load(elements.first(middle)) + ", " + load(elements.subspan(middle)) + ")";
  }

  void store(const std::string& value, std::span<const int> elements) {
    if (std::ranges::all_of(elements, [](int e) { return e < 0; })) {
      return;
    }
    if (isRun(elements)) {
      line("storeUnaligned(" + offset("y", elements[0]) + ", " + value + ")");
      return;
    }
    if (elements.size() == kHalf) {
      if (elements[0] >= 0 && elements[1] >= 0) {
        line("storeHalves(" + offset("y", elements[0]) + ", " + offset("y", elements[1]) + ", " + value + ")");
      } else if (elements[0] >= 0) {
        line("storeLow(" + offset("y", elements[0]) + ", " + value + ")");
      } else {
        line("storeHigh(" + offset("y", elements[1]) + ", " + value + ")");
      }
      return;
    }
    const std::size_t middle = elements.size() / 2;
    store("lowHalf(" + value + ")", elements.first(middle));
    store("highHalf(" + value + ")", elements.subspan(middle));
  }

  const wide::Program& program_;
  std::map<std::string, std::string> constantNames_;
  std::string constants_;
  std::string body_;
};

std::vector<int> bestOrder(const wide::Program& program, int registers) {
  std::vector<bool> isNeeded(program.size(), false);
  for (std::size_t i = program.size(); i-- > 0;) {
    isNeeded[i] = isNeeded[i] || program[i].op == Op::store;
    for (const int operand : program[i].operands) {
      at(isNeeded, operand) = at(isNeeded, operand) || isNeeded[i];
    }
  }
  std::vector<schedule::Task> tasks;
  std::vector<int> instructions;
  std::vector<int> taskOf(program.size(), -1);
  for (std::size_t i = 0; i < program.size(); ++i) {
    if (!isNeeded[i]) {
      continue;
    }
    schedule::Task task{{}, program[i].op != Op::store, program[i].op == Op::store || program[i].op == Op::scale};
    for (const int operand : program[i].operands) {
      if (std::ranges::find(task.operands, at(taskOf, operand)) == task.operands.end()) {
        task.operands.push_back(at(taskOf, operand));
      }
    }
    taskOf[i] = static_cast<int>(tasks.size());
    instructions.push_back(static_cast<int>(i));
    tasks.push_back(task);
  }
  std::vector<int> order;
  for (const int task : schedule::bestOrder(tasks, registers - 1)) { // one holds the scale or a constant
    order.push_back(at(instructions, task));
  }
  return order;
}

} // namespace

std::string elementStatements(const wide::Program& program, int registers) {
  return Writer(program).write(bestOrder(program, registers));
}

} // namespace tfmgen::print
