// What a kernel computes where nothing is rounded but its constants.
#pragma once

#include "exact.hpp"
#include "program.hpp"

#include <Eigen/Core>

namespace tfmgen::error {

// Rows are contiguous: a step is a row.
using Matrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

// Sums run in quadruple precision, so that every entry is the exact one rounded to double.
struct Linear {
  Matrix forms;         // of steps: the value as a linear form of the source
  Matrix sensitivities; // of steps: change of each output, before the scale, with the value
  QuadMatrix outputs;   // before the scale, as linear forms of the source
};

Linear linear(const Program& program);

} // namespace tfmgen::error
