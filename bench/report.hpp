// Ratios of measured cases to the best peer and to the marks.
#pragma once

#include "measure.hpp"

#include <iosfwd>
#include <map>
#include <tuple>

namespace bench {

// Best time known with 128-bit registers for a transform, as core cycles of another machine, and the time there of the
// best plan of a library that can be linked here: its time in this run carries the mark over.
struct Mark {
  double cycles;
  std::string peerLibrary;
  double peerCycles;
};

using Marks = std::map<std::tuple<std::string, std::string, int>, Mark>; // family, type, n

// Throws std::runtime_error when the file cannot be read or has another form than marks.csv.
Marks readMarks(const std::string& path);

// What is not known is NaN.
struct Row {
  Family family;
  std::string type;
  int n;
  Measurement ours;
  Measurement bestPeer;
  double mark; // nanoseconds

  [[nodiscard]] double ratioToPeer() const { return ours.nanoseconds / bestPeer.nanoseconds; }
  [[nodiscard]] double ratioToMark() const { return ours.nanoseconds / mark; }
};

// A row for each routine of ours, the worst ratio to the best peer first, rows without a peer last.
std::vector<Row> rows(const std::vector<Case>& cases, const Marks& marks);

void printTable(std::ostream& out, const std::vector<Row>& rows, bool coreCycles);
void printSummary(std::ostream& out, const std::vector<Row>& rows); // by family and type, and in all
void writeCsv(std::ostream& out, const std::vector<Row>& rows);

} // namespace bench
