#include "table.hpp"

#include "analysis.hpp"

#include <sstream>
#include <variant>
#include <vector>

namespace tfmgen::error {

namespace {

struct Row {
  Figures unscaled;
  Scale scale;
  Figures scaled;
};

Row row(const Program& program, const Exact& exact, int length) {
  const Analysis analysis(program, exact);
  const Figures unscaled = analysis.figures(kUnscaled);
  const auto scaled = [&](const Scale& scale) { return Row{unscaled, scale, analysis.figures(scale)}; };
  const Row byLength = scaled(reciprocal(length, program.sampleBits()));
  const Row byRoot = scaled(reciprocalRoot(length, program.sampleBits()));
  return byRoot.scaled.bound > byLength.scaled.bound ? byRoot : byLength;
}

std::string line(const std::string& name, const Row& row) {
  std::ostringstream text;
  text << name << ',' << row.unscaled.bound << ',' << row.unscaled.predicted << ',' << row.scale.name << ','
       << row.scaled.bound << ',' << row.scaled.predicted << '\n';
  return text.str();
}

std::vector<std::string> entries(lower::Transform transform) {
  switch (transform) {
  case lower::Transform::forward: return {"tfmgDFTFwd_RToCCS_", "tfmgDFTFwd_RToPack_", "tfmgDFTFwd_RToPerm_"};
  case lower::Transform::inverse: return {"tfmgDFTInv_CCSToR_", "tfmgDFTInv_PackToR_", "tfmgDFTInv_PermToR_"};
  case lower::Transform::hartley: break;
  }
  return {"tfmgHartley_"};
}

} // namespace

std::string tableLine(const print::ComplexKernel& kernel) {
  const auto elements = static_cast<std::size_t>(kernel.length);
  const auto* vectors = std::get_if<lower::Kernel>(&kernel.kernel);
  const Program steps = vectors != nullptr
                            ? program(*vectors, elements, kernel.sampleBits)
                            : program(std::get<lower::RealKernel>(kernel.kernel), 2 * elements, kernel.sampleBits);
  return line("tfmg" + print::kernelName(kernel), row(steps, exactComplex(kernel.length, kernel.sign), kernel.length));
}

std::string tableLines(const lower::RealKernel& kernel, lower::Transform transform, int length) {
  const Exact exact = exactReal(length, transform);
  std::string lines;
  for (const int sampleBits : {32, 64}) {
    const Row figures = row(program(kernel, static_cast<std::size_t>(length), sampleBits), exact, length);
    for (const std::string& entry : entries(transform)) {
      lines += line(entry + std::to_string(length) + '_' + std::to_string(sampleBits) + 'f', figures);
    }
  }
  return lines;
}

} // namespace tfmgen::error
