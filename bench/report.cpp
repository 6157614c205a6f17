#include "report.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace bench {

namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

// The best of one library's routines, or of all when `library` is empty.
Measurement fastest(const std::vector<Measurement>& peers, const std::string& library) {
  Measurement best{"-", "", kUnknown, kUnknown};
  for (const Measurement& peer : peers) {
    if ((library.empty() || peer.library == library) && !(peer.nanoseconds >= best.nanoseconds)) {
      best = peer;
    }
  }
  return best;
}

double carriedMark(const Case& measured, const Marks& marks) {
  const auto mark = marks.find({std::string(shortName(measured.family)), measured.type, measured.n});
  if (mark == marks.end()) {
    return kUnknown;
  }
  const double peerTime = fastest(measured.peers, mark->second.peerLibrary).nanoseconds;
  return mark->second.cycles * peerTime / mark->second.peerCycles;
}

template <class... Values>
std::string format(const char* pattern, Values... values) {
  std::array<char, 256> line{};
  const int length = std::snprintf(line.data(), line.size(), pattern, values...);
  return {line.data(), std::min(line.size() - 1, static_cast<std::size_t>(length))};
}

std::string cell(const char* pattern, double value, const char* otherwise) {
  return std::isnan(value) ? otherwise : format(pattern, value);
}

struct Tally {
  int compared = 0;
  int faster = 0;
  int marked = 0;
  int reached = 0;

  void count(const Row& row) {
    compared += std::isnan(row.ratioToPeer()) ? 0 : 1;
    faster += row.ratioToPeer() < 1 ? 1 : 0;
    marked += std::isnan(row.ratioToMark()) ? 0 : 1;
    reached += row.ratioToMark() <= 1 ? 1 : 0;
  }

  [[nodiscard]] std::string text() const {
    return format("faster than every peer at %4d of %4d, at or below the mark at %4d of %4d", faster, compared, reached,
                  marked);
  }
};

} // namespace

Marks readMarks(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  if (!std::getline(file, line) || line != "family,type,n,peer_128bit_cycles,debian_peer,debian_peer_cycles") {
    throw std::runtime_error("no table of marks: " + path);
  }
  Marks marks;
  while (std::getline(file, line)) {
    std::replace(line.begin(), line.end(), ',', ' ');
    std::istringstream fields(line);
    std::string family;
    std::string type;
    std::string peer;
    int n = 0;
    Mark mark{};
    if (!(fields >> family >> type >> n >> mark.cycles >> peer >> mark.peerCycles)) {
      throw std::runtime_error("malformed line of marks: " + line);
    }
    mark.peerLibrary = peer.starts_with("fftw") ? "fftw" : "av_tx";
    marks[{family, type, n}] = mark;
  }
  return marks;
}

std::vector<Row> rows(const std::vector<Case>& cases, const Marks& marks) {
  std::vector<Row> result;
  for (const Case& measured : cases) {
    const Measurement best = fastest(measured.peers, "");
    const double mark = carriedMark(measured, marks);
    for (const Measurement& ours : measured.ours) {
      result.push_back({measured.family, measured.type, measured.n, ours, best, mark});
    }
  }
  const auto key = [](const Row& row) { return std::isnan(row.ratioToPeer()) ? 0 : row.ratioToPeer(); };
  std::stable_sort(result.begin(), result.end(), [&](const Row& a, const Row& b) { return key(a) > key(b); });
  return result;
}

void printTable(std::ostream& out, const std::vector<Row>& rows, bool coreCycles) {
  out << format("%-20s %-4s %3s %9s %9s %9s  %-18s %9s %8s %9s %8s\n", "routine", "type", "n", "ns", "TSC cyc",
                "core cyc", "best peer", "peer ns", "to peer", "mark ns", "to mark");
  for (const Row& row : rows) {
    const double ns = row.ours.nanoseconds;
    out << format("%-20s %-4s %3d %9.2f %9.1f ", row.ours.name.c_str(), row.type.c_str(), row.n, ns,
                  ns * ticksPerNanosecond())
        << cell("%9.1f  ", coreCycles ? row.ours.coreCycles : kUnknown, "        -  ")
        << format("%-18s ", row.bestPeer.name.c_str()) << cell("%9.2f ", row.bestPeer.nanoseconds, "        - ")
        << cell("%8.3f ", row.ratioToPeer(), "       - ") << cell("%9.2f ", row.mark, "        - ")
        << cell("%8.3f", row.ratioToMark(), "       -") << '\n';
  }
}

void printSummary(std::ostream& out, const std::vector<Row>& rows) {
  std::map<std::pair<Family, std::string>, Tally> groups;
  Tally all;
  for (const Row& row : rows) {
    groups[{row.family, row.type}].count(row);
    all.count(row);
  }
  for (const auto& [group, tally] : groups) {
    out << format("%-5s %-4s ", std::string(shortName(group.first)).c_str(), group.second.c_str()) << tally.text()
        << '\n';
  }
  out << "all        " << all.text() << '\n';
}

void writeCsv(std::ostream& out, const std::vector<Row>& rows) {
  out << "routine,type,n,ns,core_cycles,best_peer,best_peer_ns,mark_ns\n";
  for (const Row& row : rows) {
    out << row.ours.name << ',' << row.type << ',' << row.n << ',' << row.ours.nanoseconds << ',' << row.ours.coreCycles
        << ',' << row.bestPeer.name << ',' << cell("%.6g", row.bestPeer.nanoseconds, "") << ','
        << cell("%.6g", row.mark, "") << '\n';
  }
}

} // namespace bench
