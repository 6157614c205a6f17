// Measures the rounding error of every DFT and Hartley routine and of the peers that were found.
//
//   accuracy_report REPORT.md DATA [VECTORS]
//
// Writes the report, and the data of its plot: family/type, length, ours, fftw, kissfft, av_tx in a line, "-" for none.

#include "common/progress.hpp"
#include "reference.hpp"

#include <fstream>
#include <iomanip>
#include <iostream>
#include <limits>
#include <map>
#include <optional>
#include <sstream>

namespace {

using namespace bench;

constexpr double kBar = 1.3; // more than this times the error of the best peer is pointed out at composite lengths
constexpr double kMeaningless = 1e5; // units; a peer beyond does not compute this transform at this length
constexpr std::array<const char*, 3> kPeers{"fftw", "kissfft", "av_tx"};

constexpr std::string_view title(Family family) {
  constexpr std::array<std::string_view, kFamilies.size()> titles{
      "Complex DFT, forward", "Complex DFT, inverse", "Real DFT, forward", "Real DFT, inverse", "Hartley transform"};
  return titles[static_cast<std::size_t>(family)];
}

// Root mean square of the relative L2 error over random vectors, in units of half the distance from 1 to the next
// number of the sample type (2^-24, 2^-53).
struct Errors {
  int n;
  std::vector<std::pair<std::string, double>> ours; // by name of routine
  std::map<std::string, double> peers;              // by library, the least of its routines

  [[nodiscard]] double worstOfOurs() const {
    double worst = 0;
    for (const auto& [name, error] : ours) {
      worst = std::max(worst, error);
    }
    return worst;
  }

  [[nodiscard]] std::optional<double> ratioToBestPeer() const {
    const auto best =
        std::min_element(peers.begin(), peers.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
    return best == peers.end() ? std::nullopt : std::optional(worstOfOurs() / best->second);
  }
};

struct Series {
  Family family;
  std::string type;
  std::vector<Errors> lengths;
};

int largestPrimeFactor(int n) {
  for (int p = 2; p * p <= n; ++p) {
    if (n % p == 0) {
      return largestPrimeFactor(n / p);
    }
  }
  return n;
}

bool isComposite(int n) {
  return largestPrimeFactor(n) != n;
}

bool isOverBar(const Errors& errors) {
  return isComposite(errors.n) && errors.ratioToBestPeer() > kBar;
}

template <class T>
Errors measure(Family family, int n, int vectors) {
  const Arrays<T> arrays;
  const std::vector<Routine> routines = allRoutines(family, n, arrays);
  const Reference<WideFor<T>> reference(n);
  std::mt19937_64 engine(static_cast<std::uint64_t>(n));
  std::vector<double> sums(routines.size());
  for (int i = 0; i < vectors; ++i) {
    const std::vector<T> numbers = randomNumbers<T>(numberCount(family, n), engine);
    const auto exact = reference(family, numbers);
    for (std::size_t r = 0; r < routines.size(); ++r) {
      load(routines[r], n, numbers, arrays);
      routines[r].repeat(1);
      const double error = relativeError(result(routines[r], n, arrays), exact);
      sums[r] += error * error;
    }
  }

  Errors errors{n, {}, {}};
  for (std::size_t r = 0; r < routines.size(); ++r) {
    const double unit = static_cast<double>(std::numeric_limits<T>::epsilon()) / 2;
    const double rms = std::sqrt(sums[r] / vectors) / unit;
    if (isOurs(routines[r])) {
      errors.ours.emplace_back(routines[r].name, rms);
    } else if (rms < kMeaningless) {
      const auto peer = errors.peers.try_emplace(routines[r].library, rms).first;
      peer->second = std::min(peer->second, rms);
    }
  }
  return errors;
}

template <class T>
Series measureLengths(Family family, int vectors) {
  Series series{family, std::string(kTypeName<T>), {}};
  Progress progress(std::string(shortName(family)) + ' ' + series.type, kLongest - kShortest + 1);
  for (int n = kShortest; n <= kLongest; ++n) {
    progress.reach(static_cast<std::size_t>(n - kShortest));
    Errors errors = measure<T>(family, n, vectors);
    if (!errors.ours.empty()) {
      series.lengths.push_back(std::move(errors));
    }
  }
  return series;
}

std::string fixed(std::optional<double> value, const char* none) {
  if (!value) {
    return none;
  }
  std::ostringstream text;
  text << std::fixed << std::setprecision(3) << *value;
  return text.str();
}

std::optional<double> peerError(const Errors& errors, const std::string& library) {
  const auto peer = errors.peers.find(library);
  return peer == errors.peers.end() ? std::nullopt : std::optional(peer->second);
}

void writeSummary(std::ostream& out, const std::vector<Series>& all) {
  out << "| Transform | Samples | Composite lengths within " << kBar
      << " of the best peer | Beyond, with ratio and largest prime factor | Worst ratio at a prime |\n"
      << "|---|---|---|---|---|\n";
  for (const Series& series : all) {
    int composite = 0;
    int within = 0;
    std::string beyond;
    std::optional<double> worstPrime;
    for (const Errors& errors : series.lengths) {
      const auto ratio = errors.ratioToBestPeer();
      if (!ratio) {
        continue;
      }
      if (!isComposite(errors.n)) {
        worstPrime = std::max(worstPrime, ratio);
        continue;
      }
      ++composite;
      if (!isOverBar(errors)) {
        ++within;
      } else {
        beyond += (beyond.empty() ? "" : "; ") + std::to_string(errors.n) + " (" + fixed(ratio, "") + ", " +
                  std::to_string(largestPrimeFactor(errors.n)) + ")";
      }
    }
    out << "| " << title(series.family) << " | " << series.type << " | " << within << " of " << composite << " | "
        << (beyond.empty() ? "none" : beyond) << " | " << fixed(worstPrime, "-") << " |\n";
  }
}

void writeTable(std::ostream& out, const Series& series) {
  out << "\n### " << title(series.family) << ", " << series.type << "\n\n| Length |";
  for (const auto& [name, error] : series.lengths.front().ours) {
    out << ' ' << name << " |";
  }
  for (const char* peer : kPeers) {
    out << ' ' << peer << " |";
  }
  out << " Ratio to best peer | |\n|---|";
  for (std::size_t i = 0; i < series.lengths.front().ours.size() + kPeers.size() + 1; ++i) {
    out << "---:|";
  }
  out << "---|\n";
  for (const Errors& errors : series.lengths) {
    out << "| " << errors.n << " |";
    for (const auto& [name, error] : errors.ours) {
      out << ' ' << fixed(error, "") << " |";
    }
    for (const char* peer : kPeers) {
      out << ' ' << fixed(peerError(errors, peer), "-") << " |";
    }
    out << ' ' << fixed(errors.ratioToBestPeer(), "-") << " | "
        << (isOverBar(errors)       ? "over the bar"
            : isComposite(errors.n) ? ""
                                    : "prime")
        << " |\n";
  }
}

void writeReport(std::ostream& out, const std::vector<Series>& all, int vectors) {
  out << "# Accuracy\n\n"
      << "Written by `accuracy_report` (`cmake --build --preset bench --target accuracy`).\n\n"
      << "Each figure is the root mean square, over " << vectors
      << " vectors uniform in [-1, 1], of the relative error\n"
      << "in the L2 norm, in units of 2^-24 for 32-bit samples (f32) and of 2^-53 for 64-bit samples (f64). The\n"
      << "reference is the definition of the transform, in 64 bits of significand for f32 and in 113 for f64. Spectra "
         "of\n"
      << "real signals count each number that a half spectrum holds once. Peers meet the same vectors in the same\n"
      << "program; FFTW stands for the least error of its estimated, measured and patient plans. The ratio is that of\n"
      << "the worst of our routines in the row to the best peer. At prime lengths it is reported without a bar, "
         "because\n"
      << "the algorithm that a length is bound to sets the limit there.\n\n"
      << "![Error by length](accuracy.svg)\n\n";
  writeSummary(out, all);
  for (const Series& series : all) {
    writeTable(out, series);
  }
}

void writeData(std::ostream& out, const std::vector<Series>& all) {
  for (const Series& series : all) {
    for (const Errors& errors : series.lengths) {
      out << shortName(series.family) << '/' << series.type << ' ' << errors.n << ' '
          << fixed(errors.worstOfOurs(), "-");
      for (const char* peer : kPeers) {
        out << ' ' << fixed(peerError(errors, peer), "-");
      }
      out << '\n';
    }
  }
}

} // namespace

int main(int argc, char** argv) {
  const int vectors = argc > 3 ? static_cast<int>(std::strtol(argv[3], nullptr, 10)) : 1000;
  if (argc < 3 || argc > 4 || vectors < 1) {
    std::cerr << "usage: accuracy_report REPORT.md DATA [VECTORS]\n";
    return 2;
  }
  std::vector<Series> all;
  for (const Family family : kFamilies) {
    all.push_back(measureLengths<float>(family, vectors));
    all.push_back(measureLengths<double>(family, vectors));
  }
  std::erase_if(all, [](const Series& series) { return series.lengths.empty(); });

  std::ofstream report(argv[1]);
  std::ofstream data(argv[2]);
  writeReport(report, all, vectors);
  writeData(data, all);
  if (!report.flush() || !data.flush()) {
    std::cerr << "cannot write " << argv[1] << " or " << argv[2] << '\n';
    return 1;
  }
  return 0;
}
