// Measures the rounding errors of every DFT and Hartley routine beside what is proven and predicted of them.
//
//   measure_errors FIGURES.csv VECTORS
//
// Reads what tfmgen-generator --errors has written and prints name,scale,bound,predicted,measured,worst: two lines a
// routine, without a rounded scale and with the worse of two. `measured` is the root mean square over that many vectors
// of white noise, more at short lengths, which have few outputs; `worst` is the largest error that was found, over
// these, over sparse and periodic vectors and by climbing from all of them. All in units of u norm2(T) norm2(x).
//
// The exact result is the definition in long double for 64-bit samples. For 32-bit samples it is the 64-bit routine of
// the same transform, whose error is 2^-29 of theirs as long as its own line here is what it should be.
#include "common/progress.hpp"
#include "definition.hpp"
#include "random.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <limits>
#include <map>
#include <numbers>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace tfmgen::test {
namespace {

// ---- What is proven and predicted

struct Figures {
  std::string scale;
  std::string bound;
  std::string predicted;
};

using Table = std::map<std::string, std::array<Figures, 2>>; // by routine: unscaled, scaled

Table readTable(const std::string& path) {
  std::ifstream in(path);
  std::string line;
  std::getline(in, line); // titles
  Table table;
  while (std::getline(in, line)) {
    std::vector<std::string> fields;
    std::istringstream text(line);
    for (std::string field; std::getline(text, field, ',');) {
      fields.push_back(field);
    }
    table[fields.at(0)] = {Figures{"1", fields.at(1), fields.at(2)}, Figures{fields.at(3), fields.at(4), fields.at(5)}};
  }
  return table;
}

std::int32_t flagOf(Kind kind, const std::string& scale) {
  if (scale == "1") {
    return TFM_NO_DIV;
  }
  const bool isInverse = kind == Kind::complexInverse || kind == Kind::realInverse;
  return scale == "1/sqrt(n)" ? TFM_DIV_BY_SQRTN : isInverse ? TFM_DIV_INV_BY_N : TFM_DIV_FWD_BY_N;
}

// ---- Routines on numbers in the order of their definition

std::vector<std::size_t> positions(const Family& family, int n, bool inSpectrum) {
  std::vector<std::size_t> at;
  if (!inSpectrum) {
    for (int i = 0; i < (family.isComplex() ? 2 * n : n); ++i) {
      at.push_back(static_cast<std::size_t>(i));
    }
    return at;
  }
  for (int k = 0; 2 * k <= n; ++k) {
    const Slot slot = spectrumSlot(family.format, n, k);
    at.push_back(static_cast<std::size_t>(slot.re));
    if (k != 0 && 2 * k != n) {
      at.push_back(static_cast<std::size_t>(slot.im));
    }
  }
  return at;
}

template <class Real>
class Routine {
public:
  explicit Routine(const Entry& entry)
      : entry_(entry), from_(positions(entry.family, entry.n, entry.family.kind == Kind::realInverse)),
        to_(positions(entry.family, entry.n, entry.family.kind == Kind::realForward)), source_(entry.sourceReals()),
        destination_(entry.destinationReals()) {}

  template <class Number, class Result>
  void operator()(const std::vector<Number>& numbers, std::int32_t flag, std::vector<Result>& results) {
    for (std::size_t i = 0; i < from_.size(); ++i) {
      source_[from_[i]] = numbers[i];
    }
    if (entry_(source_.data(), destination_.data(), flag) != tfmStsOk) {
      throw std::runtime_error(entry_.name() + " refused its arguments");
    }
    results.resize(to_.size());
    for (std::size_t i = 0; i < to_.size(); ++i) {
      results[i] = destination_[to_[i]];
    }
  }

  [[nodiscard]] const Entry& entry() const { return entry_; }

private:
  Entry entry_;
  std::vector<std::size_t> from_;
  std::vector<std::size_t> to_;
  std::vector<Real> source_;
  std::vector<Real> destination_;
};

template <class Real>
std::vector<Routine<Real>> routines(Kind kind, int n) {
  std::vector<Routine<Real>> found;
  for (const Family& family : families()) {
    if (family.kind == kind && family.realBytes == sizeof(Real)) {
      found.emplace_back(Entry{family, n});
    }
  }
  return found;
}

// The largest singular value of the transform without its scale.
double norm(Kind kind, int n) {
  return std::sqrt(static_cast<double>(kind == Kind::realInverse && n > 2 ? 2 * n : n));
}

// ---- Vectors

// Normal numbers, of which a vector takes some neighbours.
template <class Real>
class Noise {
public:
  Noise() {
    Random random(1);
    const auto uniform = [&] { return std::ldexp(static_cast<double>(random.bits() >> 11) + 0.5, -53); };
    for (std::size_t i = 0; i < numbers_.size(); i += 2) {
      const double radius = std::sqrt(-2 * std::log(uniform()));
      const double angle = 2 * std::numbers::pi * uniform();
      numbers_[i] = static_cast<Real>(radius * std::cos(angle));
      numbers_[i + 1] = static_cast<Real>(radius * std::sin(angle));
    }
  }

  Real number(Random& random) const { return numbers_[random.bits() % numbers_.size()]; }

  void fill(std::vector<Real>& x, Random& random) const {
    std::copy_n(&numbers_[random.bits() % (numbers_.size() - x.size())], x.size(), x.begin());
  }

private:
  std::vector<Real> numbers_ = std::vector<Real>(std::size_t{1} << 20);
};

// ---- Measurement of one transform, in all formats of its spectrum

struct Measured {
  double meanSquare = 0;
  double worst = 0;
};

template <class Real>
class Measurement {
public:
  Measurement(Kind kind, int n, const Table& table, const Noise<Real>& noise)
      : kind_(kind), n_(n), noise_(noise), routines_(routines<Real>(kind, n)), definition_(kind, n),
        doubles_(routines<double>(kind, n).front()), x_(static_cast<std::size_t>(isComplex() ? 2 * n : n)),
        random_(static_cast<std::uint64_t>(n)) {
    for (std::size_t s = 0; s < kScales; ++s) {
      const Figures& figures = table.at(routines_.front().entry().name())[s];
      scales_[s].flag = flagOf(kind, figures.scale);
      scales_[s].exact = static_cast<Wide>(exactScale(routines_.front().entry().family, n, scales_[s].flag));
    }
    measured_.resize(routines_.size());
  }

  void run(int vectors) {
    average(vectors);
    for (std::size_t s = 0; s < kScales; ++s) {
      trySparse(s);
      tryTones(s);
      climb(s);
      x_ = scales_[s].worstX;
      tryX(s, routines_.size());
    }
  }

  void print(const Table& table) const {
    for (std::size_t r = 0; r < routines_.size(); ++r) {
      const std::string name = routines_[r].entry().name();
      for (std::size_t s = 0; s < kScales; ++s) {
        const auto& [scale, bound, predicted] = table.at(name)[s];
        const auto& [meanSquare, worst] = measured_[r][s];
        std::cout << name << ',' << scale << ',' << bound << ',' << predicted << ',' << std::sqrt(meanSquare) << ','
                  << worst << '\n';
      }
    }
  }

private:
  static constexpr std::size_t kScales = 2;
  using Wide = std::conditional_t<std::is_same_v<Real, double>, long double, double>;
  struct Scale {
    std::int32_t flag;
    Wide exact;
    double worst = 0;         // of the first routine
    std::vector<Real> worstX; // where
  };

  [[nodiscard]] bool isComplex() const { return kind_ == Kind::complexForward || kind_ == Kind::complexInverse; }

  // The exact result for x_, without scale, and the unit in which its errors count.
  void setExact() {
    if constexpr (std::is_same_v<Real, double>) {
      definition_(x_, exact_);
    } else {
      doubles_(x_, TFM_NO_DIV, exact_);
    }
    double sum = 0;
    for (const Real value : x_) {
      sum += static_cast<double>(value) * static_cast<double>(value);
    }
    squaredUnit_ = sum * norm(kind_, n_) * norm(kind_, n_) * kUnit * kUnit;
  }

  // The squared error of a routine for x_.
  double squaredError(Routine<Real>& routine, std::size_t s) {
    routine(x_, scales_[s].flag, computed_);
    Wide sum = 0;
    for (std::size_t i = 0; i < exact_.size(); ++i) {
      const Wide difference = computed_[i] - scales_[s].exact * exact_[i];
      sum += difference * difference;
    }
    const auto scale = static_cast<double>(scales_[s].exact);
    return static_cast<double>(sum) / (scale * scale);
  }

  void average(int vectors) {
    double units = 0;
    for (int i = 0; i < vectors; ++i) {
      noise_.fill(x_, random_);
      setExact();
      units += squaredUnit_;
      for (std::size_t r = 0; r < routines_.size(); ++r) {
        for (std::size_t s = 0; s < kScales; ++s) {
          const double error = squaredError(routines_[r], s);
          measured_[r][s].meanSquare += error;
          note(r, s, error);
        }
      }
    }
    for (auto& ofScales : measured_) {
      for (Measured& m : ofScales) {
        m.meanSquare /= units;
      }
    }
  }

  void note(std::size_t r, std::size_t s, double error) {
    const double relative = std::sqrt(error / squaredUnit_);
    measured_[r][s].worst = std::max(measured_[r][s].worst, relative);
    if (r == 0 && relative > scales_[s].worst) {
      scales_[s].worst = relative;
      scales_[s].worstX = x_;
    }
  }

  // The first routines, which differ in the format of a spectrum.
  void tryX(std::size_t s, std::size_t routines) {
    setExact();
    for (std::size_t r = 0; r < routines && squaredUnit_ != 0; ++r) {
      note(r, s, squaredError(routines_[r], s));
    }
  }

  void trySparse(std::size_t s) {
    constexpr int kVectors = 200;
    for (int i = 0; i < kVectors; ++i) {
      std::ranges::fill(x_, Real(0));
      for (std::uint64_t numbers = 1 + random_.bits() % 3; numbers > 0; --numbers) {
        x_[random_.bits() % x_.size()] = noise_.number(random_);
      }
      tryX(s, routines_.size());
    }
  }

  // Periodic numbers: where values repeat, so do their errors.
  void tryTones(std::size_t s) {
    constexpr int kVectors = 200;
    for (int i = 0; i < kVectors; ++i) {
      const Real amplitude = noise_.number(random_);
      const Real phase = noise_.number(random_) * 4;
      const std::size_t frequency = random_.bits() % x_.size();
      for (std::size_t j = 0; j < x_.size(); ++j) {
        const auto turns = static_cast<Real>(j * frequency % x_.size()) / static_cast<Real>(x_.size());
        x_[j] = amplitude * std::cos(2 * std::numbers::pi_v<Real> * turns + phase);
      }
      tryX(s, routines_.size());
    }
  }

  // Changes that make the error no smaller stay.
  void climb(std::size_t s) {
    constexpr int kSteps = 2000;
    for (int step = 0; step < kSteps; ++step) {
      x_ = scales_[s].worstX;
      for (std::uint64_t changes = 1 + random_.bits() % 2; changes > 0; --changes) {
        change(x_[random_.bits() % x_.size()]);
      }
      tryX(s, 1);
    }
  }

  void change(Real& value) {
    switch (random_.bits() % 4) {
    case 0: value = noise_.number(random_); break;
    case 1: value = -value; break;
    case 2: value *= 1 + noise_.number(random_) / 64; break;
    default: value *= 1 + noise_.number(random_) / 4096;
    }
  }

  static constexpr double kUnit = static_cast<double>(std::numeric_limits<Real>::epsilon()) / 2;

  Kind kind_;
  int n_;
  const Noise<Real>& noise_;
  std::vector<Routine<Real>> routines_;
  Definition<long double> definition_;
  Routine<double> doubles_;
  std::array<Scale, kScales> scales_;
  std::vector<std::array<Measured, kScales>> measured_; // by routine
  std::vector<Real> x_;
  Random random_;
  std::vector<Wide> exact_;
  std::vector<Real> computed_;
  double squaredUnit_ = 0;
};

constexpr int kOutputs = 128000; // at least

template <class Real>
void measureAll(const std::string& type, const Table& table, int vectors) {
  constexpr std::size_t kLengths = kLongest - kShortest + 1;
  constexpr std::size_t kKinds = 5;
  Progress progress("measuring " + type, kKinds * kLengths);
  std::size_t done = 0;
  const Noise<Real> noise;
  for (const Kind kind :
       {Kind::complexForward, Kind::complexInverse, Kind::realForward, Kind::realInverse, Kind::hartley}) {
    for (int n = kShortest; n <= kLongest; ++n) {
      Measurement<Real> measurement(kind, n, table, noise);
      measurement.run(std::max(vectors, kOutputs / n));
      measurement.print(table);
      progress.reach(++done);
    }
  }
}

} // namespace
} // namespace tfmgen::test

int main(int argc, char** argv) {
  const int vectors = argc == 3 ? static_cast<int>(std::strtol(argv[2], nullptr, 10)) : 0;
  if (vectors < 1) {
    std::cerr << "usage: measure_errors FIGURES.csv VECTORS\n";
    return 2;
  }
  try {
    const tfmgen::test::Table table = tfmgen::test::readTable(argv[1]);
    std::cout << "name,scale,bound,predicted,measured,worst\n";
    tfmgen::test::measureAll<float>("f32", table, vectors);
    tfmgen::test::measureAll<double>("f64", table, vectors);
  } catch (const std::exception& error) {
    std::cerr << "measure_errors: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
