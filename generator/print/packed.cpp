#include "packed.hpp"

#include "number/index.hpp"
#include "numbers.hpp"

#include <cstdlib>

namespace tfmgen::print {

namespace {

using pack::Action;
using pack::Instruction;

class Writer {
public:
  explicit Writer(const pack::Code& code) : code_(code), all_((1U << static_cast<unsigned>(code.lanes)) - 1) {}

  std::string write() {
    line("using V = Vector<" + sample() + ", " + std::to_string(code_.lanes * code_.sampleBits / 8) + ">");
    if (code_.sampleBits == 32) {
      line("using D = Vector<double, " + std::to_string(code_.lanes * 8) + ">");
    }
    for (std::size_t i = 0; i < code_.instructions.size(); ++i) {
      const Instruction& instruction = code_.instructions[i];
      if (instruction.action == Action::store) {
        store(instruction);
      } else {
        line("const " + type(instruction) + " " + name(static_cast<int>(i)) + " = " + expression(instruction));
      }
    }
    return text_;
  }

private:
  void line(const std::string& statement) { text_ += "    " + statement + ";\n"; }

  [[nodiscard]] std::string sample() const { return code_.sampleBits == 32 ? "float" : "double"; }
  static std::string type(const Instruction& instruction) { return instruction.isDouble ? "D" : "V"; }
  static std::string name(int instruction) { return "v" + std::to_string(instruction); }
  static std::string offset(const char* array, int element) {
    return std::string(array) + (element < 0 ? " - " : " + ") + std::to_string(std::abs(element));
  }

  [[nodiscard]] std::string expression(const Instruction& i) const {
    const std::string left = i.left == pack::kEmpty ? "" : name(i.left);
    const std::string right = i.right == pack::kEmpty ? "" : name(i.right);
    switch (i.action) {
    case Action::load:
      return (i.affected == all_ ? "loadUnaligned<V>(" : "loadLanes<V, " + std::to_string(i.affected) + ">(") +
             offset("x", i.element) + ")";
    case Action::move: return "shuffle<" + lanes(i) + ">(" + left + ", " + right + ")";
    case Action::widen: return "convert<double>(" + left + ")";
    case Action::narrow: return "convert<float>(" + left + ")";
    case Action::multiply: return left + " * " + constant(i);
    case Action::add: return within(i, left + " + " + right);
    case Action::subtract: return within(i, left + " - " + right);
    case Action::fusedSum: return within(i, "fusedSum(" + left + ", " + constant(i) + ", " + right + ")");
    case Action::scale: return left + " * " + scale(i);
    case Action::negate: return negated(i);
    case Action::clear: return within(i, "V{}");
    case Action::store: break;
    }
    std::abort();
  }

  // A product by one leaves the other lanes as they are.
  [[nodiscard]] std::string scale(const Instruction& i) const {
    const std::string all = "broadcast<" + type(i) + ">(s)";
    return i.affected == all_
               ? all
               : "select<" + std::to_string(i.affected) + ">(broadcast<" + type(i) + ">(1), " + all + ")";
  }

  // 0 - x, which is +0 for both zeros, beside lanes that stay: there -0 + x is x, for both zeros too.
  [[nodiscard]] std::string negated(const Instruction& i) const {
    Instruction zeros = i;
    Instruction signs = i;
    for (int lane = 0; lane < code_.lanes; ++lane) {
      const bool isAffected = (i.affected >> static_cast<unsigned>(lane) & 1U) != 0;
      number::at(zeros.factors, lane) = isAffected ? 0.0 : -0.0;
      number::at(signs.factors, lane) = isAffected ? -1 : 1;
    }
    return i.affected == all_ ? type(i) + "{} - " + name(i.left)
                              : "fusedSum(" + constant(zeros) + ", " + constant(signs) + ", " + name(i.left) + ")";
  }

  [[nodiscard]] std::string within(const Instruction& i, const std::string& result) const {
    return i.affected == all_ ? result
                              : "select<" + std::to_string(i.affected) + ">(" + name(i.left) + ", " + result + ")";
  }

  [[nodiscard]] std::string lanes(const Instruction& i) const {
    std::string text;
    for (int lane = 0; lane < code_.lanes; ++lane) {
      text += (lane == 0 ? "" : ", ") + std::to_string(number::at(i.lanes, lane));
    }
    return text;
  }

  [[nodiscard]] std::string constant(const Instruction& i) const {
    const Precision precision = code_.sampleBits == 64 || i.isDouble ? Precision::twofold : Precision::single;
    std::string text;
    for (int lane = 0; lane < code_.lanes; ++lane) {
      text += (lane == 0 ? "" : ", ") + literal(number::at(i.factors, lane), precision);
    }
    return type(i) + "{" + text + "}";
  }

  void store(const Instruction& i) {
    line((i.affected == all_ ? "storeUnaligned(" : "storeLanes<" + std::to_string(i.affected) + ">(") +
         offset("y", i.element) + ", " + name(i.left) + ")");
  }

  const pack::Code& code_;
  pack::LaneSet all_;
  std::string text_;
};

} // namespace

std::string packedStatements(const pack::Code& code) {
  return Writer(code).write();
}

std::string packedSummary(const pack::Packed& packed) {
  const pack::CodeCounts counts = pack::count(packed.code);
  return "Packed in vectors of " + std::to_string(packed.lanes) + ": " + std::to_string(counts.operations) +
         " operations, " + std::to_string(counts.moves) + " moves, longest path " + std::to_string(packed.longestPath) +
         " cycles.";
}

} // namespace tfmgen::print
