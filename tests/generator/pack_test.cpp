// Packed kernels against the programs that they are made of, and the identities that they rest on.
#include "lower/complex64.hpp"
#include "lower/real.hpp"
#include "pack/code.hpp"
#include "pack/search.hpp"
#include "pack/start.hpp"
#include "plan/complex64.hpp"
#include "plan/real.hpp"

#include "random.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tfmgen::pack {
namespace {

using number::at;

// ---- Samples of one precision, held in doubles

double rounded(double x, int bits) {
  return bits == 32 ? static_cast<double>(static_cast<float>(x)) : x;
}

double sum(double a, double b, int bits) {
  return bits == 32 ? static_cast<double>(static_cast<float>(a) + static_cast<float>(b)) : a + b;
}

double product(double a, double b, int bits) {
  return bits == 32 ? static_cast<double>(static_cast<float>(a) * static_cast<float>(b)) : a * b;
}

double fused(double a, double factor, double b, int bits) {
  return bits == 32
             ? static_cast<double>(std::fma(static_cast<float>(factor), static_cast<float>(b), static_cast<float>(a)))
             : std::fma(factor, b, a);
}

// Zeros of both signs, denormals, small whole numbers and numbers of all sizes.
double hardNumber(test::Random& random, int bits) {
  const std::uint64_t word = random.bits();
  const std::uint64_t kind = word % 8;
  if (kind < 2) {
    return kind == 0 ? 0.0 : -0.0;
  }
  if (kind < 4) {
    return static_cast<double>(word >> 8U & 7U) - 3;
  }
  if (kind < 6) { // few bits above the smallest denormal
    return std::ldexp(static_cast<double>(word >> 8U & 63U) - 31,
                      (bits == 32 ? -149 : -1074) + static_cast<int>(word >> 16U & 3U));
  }
  return rounded(random.real<double>(test::Spread::wide), bits);
}

std::vector<double> hardNumbers(test::Random& random, int count, int bits) {
  std::vector<double> numbers(static_cast<std::size_t>(count));
  std::ranges::generate(numbers, [&] { return hardNumber(random, bits); });
  return numbers;
}

// ---- A program, operation by operation, as the scalar kernel computes it

double evaluated(const Program& p, const Operation& o, const std::vector<double>& values, double scale) {
  // A factor makes an expression double, also where float would do.
  const bool hasFactor = std::ranges::any_of(o.terms, [](const Term& t) { return std::abs(t.factor) != 1; });
  const int bits = hasFactor || o.isDouble ? 64 : p.sampleBits;
  double total = product(o.terms[0].factor, at(values, o.terms[0].value), bits);
  for (std::size_t k = 1; k < o.terms.size(); ++k) {
    const Term& term = o.terms[k];
    total = sum(term.negatesSum ? -total : total, product(term.factor, at(values, term.value), bits), bits);
  }
  total = o.isScaled ? total * scale : total;
  total = o.isNegated ? 0 - total : total;
  return rounded(total, p.sampleBits);
}

std::vector<double> evaluated(const Program& p, const std::vector<double>& source, double scale) {
  std::vector<double> values;
  for (const int element : p.loads) {
    values.push_back(at(source, element));
  }
  for (const Operation& operation : p.operations) {
    values.push_back(evaluated(p, operation, values, scale));
  }
  std::vector<double> destination(static_cast<std::size_t>(p.destinationLength));
  for (const Output& output : p.outputs) {
    const double value = at(values, output.value);
    const double scaled = output.isScaled ? product(value, scale, p.sampleBits) : value;
    at(destination, output.element) = output.isNegated ? 0 - scaled : scaled;
  }
  return destination;
}

// ---- Packed code, lane by lane. Lanes that may hold anything hold a NaN, which spoils whatever depends on it.

using Lanes = std::array<double, kMaximumLanes>;

class Processor {
public:
  Processor(const Code& code, const std::vector<double>& source, double scale, std::vector<double>& destination)
      : code_(code), source_(source), scale_(scale), destination_(destination) {}

  void run() {
    for (const Instruction& i : code_.instructions) {
      ASSERT_TRUE(i.action != Action::load || !hasStored_);
      Lanes result;
      result.fill(std::numeric_limits<double>::quiet_NaN());
      for (int lane = 0; lane < code_.lanes; ++lane) {
        const bool isAffected = (i.affected >> static_cast<unsigned>(lane) & 1U) != 0;
        if (i.action == Action::store) {
          hasStored_ = true;
          if (isAffected) {
            at(destination_, i.element + lane) = of(i.left, lane);
          }
        } else {
          at(result, lane) = hasOwnLanes(i.action) || isAffected ? laneOf(i, lane, isAffected) : of(i.left, lane);
        }
      }
      results_.push_back(result);
    }
  }

private:
  static bool hasOwnLanes(Action action) {
    return action == Action::load || action == Action::move || action == Action::widen || action == Action::narrow;
  }

  [[nodiscard]] double of(int instruction, int lane) const { return at(at(results_, instruction), lane); }

  [[nodiscard]] double laneOf(const Instruction& i, int lane, bool isAffected) const {
    const int bits = code_.sampleBits == 64 || i.isDouble ? 64 : 32;
    switch (i.action) {
    case Action::load: return isAffected ? at(source_, i.element + lane) : std::numeric_limits<double>::quiet_NaN();
    case Action::move: return moved(i, at(i.lanes, lane));
    case Action::widen: return of(i.left, lane);
    case Action::narrow: return rounded(of(i.left, lane), 32);
    case Action::multiply: return product(of(i.left, lane), at(i.factors, lane), bits);
    case Action::add: return sum(of(i.left, lane), of(i.right, lane), bits);
    case Action::subtract: return sum(of(i.left, lane), -of(i.right, lane), bits);
    case Action::fusedSum: return fused(of(i.left, lane), at(i.factors, lane), of(i.right, lane), bits);
    case Action::scale: return product(of(i.left, lane), scale_, bits);
    case Action::negate: return 0 - of(i.left, lane);
    case Action::clear: return 0;
    case Action::store: break;
    }
    return std::numeric_limits<double>::quiet_NaN();
  }

  [[nodiscard]] double moved(const Instruction& i, int from) const {
    if (from == kEmpty) {
      return std::numeric_limits<double>::quiet_NaN();
    }
    return from < code_.lanes ? of(i.left, from) : of(i.right, from - code_.lanes);
  }

  const Code& code_;
  const std::vector<double>& source_;
  double scale_;
  std::vector<double>& destination_;
  std::vector<Lanes> results_;
  bool hasStored_ = false;
};

void expectSameBits(const Program& program, const Machine& machine, const std::string& name) {
  SCOPED_TRACE(name);
  const Dependences dependences(program);
  Packing packing = greedyStart(program, dependences, machine);
  search(packing, program, dependences, machine, {.moves = 20 * program.operations.size()});
  const Code code = codeOf(program, packing);
  const Program scalar = program.numbersInUnit == 2 ? inNumbers(program) : program;
  test::Random random(1);
  for (int call = 0; call < 50; ++call) {
    const std::vector<double> source = hardNumbers(random, scalar.sourceLength, scalar.sampleBits);
    const double scale = rounded(call % 2 == 0 ? 1.0 : 1.0 / 3, scalar.sampleBits);
    const std::vector<double> expected = evaluated(scalar, source, scale);
    std::vector<double> found(expected.size(), 77);
    Processor(code, source, scale, found).run();
    for (std::size_t i = 0; i < expected.size(); ++i) {
      ASSERT_EQ(std::bit_cast<std::uint64_t>(found[i]), std::bit_cast<std::uint64_t>(expected[i]))
          << "element " << i << ": " << found[i] << " instead of " << expected[i];
    }
  }
}

Program forward(int length, lower::Format format, int sampleBits) {
  const auto kernel =
      lower::assignments(transform::forwardReal(*plan::realPlans(length).forward), lower::Transform::forward);
  return program(kernel, lower::Transform::forward, format, length, sampleBits);
}

Program inverse(int length, lower::Format format, int sampleBits) {
  const auto kernel =
      lower::assignments(transform::inverseReal(*plan::realPlans(length).inverse), lower::Transform::inverse);
  return program(kernel, lower::Transform::inverse, format, length, sampleBits);
}

TEST(GeneratorPack, RealCodeComputesItsProgram) {
  using enum lower::Format;
  for (const int bits : {32, 64}) {
    const Machine v4 = machine(Level::v4, bits, 1);
    for (const int n : {3, 8, 9, 11, 13, 15, 22}) {
      for (const lower::Format format : {ccs, pack, perm}) {
        expectSameBits(forward(n, format, bits), v4, "forward " + std::to_string(n));
        expectSameBits(inverse(n, format, bits), v4, "inverse " + std::to_string(n));
      }
    }
  }
}

TEST(GeneratorPack, ComplexCodeComputesItsProgram) {
  for (const Level level : {Level::v3, Level::v4}) {
    for (const int n : {5, 8, 9, 13, 16}) {
      for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
        const Program pairs = program(lower::complex64(*plan::complex64(n), sign), n);
        expectSameBits(pairs, machine(level, 64, 2), "complex " + std::to_string(n));
      }
    }
  }
}

std::vector<std::pair<int, int>> placesOf(const Packing& packing) {
  std::vector<std::pair<int, int>> places;
  for (const Place& place : packing.places) {
    places.emplace_back(place.vector, place.lane);
  }
  return places;
}

// What the search keeps up to date move by move is what a fresh count gives; it is the same in every run by one seed,
// and another by another.
TEST(GeneratorPack, SearchKeepsItsAccounts) {
  const Program p = forward(15, lower::Format::ccs, 64);
  const Dependences dependences(p);
  const Machine v4 = machine(Level::v4, 64, 1);
  const auto searched = [&](int moves, Packing& packing, std::uint64_t seed = 1) {
    return search(packing, p, dependences, v4, {.moves = moves, .seed = seed});
  };
  Packing packing = greedyStart(p, dependences, v4);
  const Score start = searched(0, packing);
  const Score end = searched(20000, packing);
  EXPECT_LT(end.work, start.work);
  const Score recount = searched(0, packing);
  EXPECT_EQ(end.work, recount.work);
  EXPECT_EQ(end.path, recount.path);

  const auto places = [&](std::uint64_t seed) {
    Packing again = greedyStart(p, dependences, v4);
    searched(20000, again, seed);
    return placesOf(again);
  };
  EXPECT_EQ(places(1), placesOf(packing));
  EXPECT_NE(places(2), placesOf(packing));
}

// ---- Identities

std::vector<float> hardFloats() {
  test::Random random(2);
  std::vector<float> numbers{0.0F, -0.0F};
  for (int i = 0; i < 3000; ++i) {
    const auto word = static_cast<std::uint32_t>(random.bits());
    const auto any = std::bit_cast<float>(word);
    numbers.push_back(std::isfinite(any) ? any : 1.0F);
    numbers.push_back(std::bit_cast<float>(word & 0x807FFFFFU));                 // denormal
    numbers.push_back(std::bit_cast<float>((word & 0x80FFFFFFU) | 0x00800000U)); // next to them
    numbers.push_back(std::bit_cast<float>((word & 0x83FFFFFFU) | 0x3E000000U)); // near 1: sums half-way between floats
  }
  return numbers;
}

// A product by 2^-k fused with its sum is the double expression rounded once.
TEST(GeneratorPack, PowersOfTwoFuseExactly) {
  const std::vector<float> numbers = hardFloats();
  for (int k = 0; k <= 29; ++k) {
    const double factor = std::ldexp(1, -k);
    ASSERT_TRUE(isExactInFloat({{{1, 0}, {-factor, 1}}}));
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      const float a = numbers[i];
      for (const float b :
           {numbers[numbers.size() - 1 - i], static_cast<float>(a / factor), numbers[i * 7 % numbers.size()]}) {
        if (!std::isfinite(b)) {
          continue;
        }
        const auto expected = static_cast<float>(static_cast<double>(a) - factor * static_cast<double>(b));
        const float found = std::fma(static_cast<float>(-factor), b, a);
        ASSERT_EQ(std::bit_cast<std::uint32_t>(found), std::bit_cast<std::uint32_t>(expected))
            << a << " - 2^-" << k << " * " << b;
      }
    }
  }
}

TEST(GeneratorPack, OtherFactorsStayDouble) {
  EXPECT_FALSE(isExactInFloat({{{1, 0}, {std::ldexp(1, -30), 1}}}));
  EXPECT_FALSE(isExactInFloat({{{1, 0}, {2, 1}}})); // might overflow before the sum
  EXPECT_FALSE(isExactInFloat({{{0.5, 0}, {0.5, 1}}}));
  EXPECT_FALSE(isExactInFloat({{{1, 0}, {0.75, 1}}}));
  EXPECT_FALSE(isExactInFloat({{{1, 0}, {0.5, 1}, {1, 2}}}));
  EXPECT_TRUE(isExactInFloat({{{2, 0}}}));
}

// The steps that some lanes of a vector take and others do not: a - b beside a + b, 0 - a beside a.
TEST(GeneratorPack, MixedSignsAreExact) {
  const std::vector<float> numbers = hardFloats();
  const auto bits = [](float x) { return std::bit_cast<std::uint32_t>(x); };
  for (std::size_t i = 1; i < numbers.size(); ++i) {
    const float a = numbers[i];
    for (const float b : {numbers[i - 1], a, -a}) {
      ASSERT_EQ(bits(std::fma(1.0F, b, a)), bits(a + b));
      ASSERT_EQ(bits(std::fma(-1.0F, b, a)), bits(a - b));
    }
    ASSERT_EQ(bits(std::fma(1.0F, a, -0.0F)), bits(a));
    ASSERT_EQ(bits(std::fma(-1.0F, a, 0.0F)), bits(0.0F - a));
  }
}

} // namespace
} // namespace tfmgen::pack
