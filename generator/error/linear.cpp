#include "linear.hpp"

#include <algorithm>
#include <functional>

namespace tfmgen::error {

namespace {

using Row = std::vector<Quad>;

// Most factors are 1 or -1, and products of this precision are slow.
void addTo(Row& sum, double factor, const Row& row) {
  if (factor == 1) {
    std::ranges::transform(sum, row, sum.begin(), std::plus{});
  } else if (factor == -1) {
    std::ranges::transform(sum, row, sum.begin(), std::minus{});
  } else if (factor != 0) {
    std::ranges::transform(sum, row, sum.begin(), [f = Quad{factor}](Quad a, Quad b) { return a + f * b; });
  }
}

Matrix rounded(const QuadMatrix& rows, std::size_t columns) {
  Matrix m(static_cast<Eigen::Index>(rows.size()), static_cast<Eigen::Index>(columns));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::ranges::transform(rows[i], m.row(static_cast<Eigen::Index>(i)).data(),
                           [](Quad x) { return static_cast<double>(x); });
  }
  return m;
}

QuadMatrix zeros(std::size_t rows, std::size_t columns) {
  QuadMatrix out(rows, Row(columns));
  return out;
}

} // namespace

Linear linear(const Program& program) {
  const std::vector<Step>& steps = program.steps();
  const std::vector<Output>& outputs = program.outputs();

  QuadMatrix forms = zeros(steps.size(), program.inputs());
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (i < program.inputs()) {
      forms[i][i] = 1;
    }
    for (const Term& term : {steps[i].left, steps[i].right}) {
      addTo(forms[i], term.factor, forms[term.step]);
    }
  }

  QuadMatrix results = zeros(outputs.size(), program.inputs());
  QuadMatrix sensitivities = zeros(steps.size(), outputs.size());
  for (std::size_t k = 0; k < outputs.size(); ++k) {
    const Term& value = outputs[k].value;
    addTo(results[k], value.factor, forms[value.step]);
    sensitivities[value.step][k] += Quad{value.factor};
  }
  for (std::size_t i = steps.size(); i-- > 0;) { // users come behind their operands
    for (const Term& term : {steps[i].left, steps[i].right}) {
      addTo(sensitivities[term.step], term.factor, sensitivities[i]);
    }
  }
  return {rounded(forms, program.inputs()), rounded(sensitivities, outputs.size()), std::move(results)};
}

} // namespace tfmgen::error
