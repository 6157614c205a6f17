#include "real.hpp"

#include "scalars.hpp"

#include <sstream>

namespace tfmgen::print {

namespace {

struct Names {
  const char* kernel; // with the length behind it
  const char* family;
  const char* macro;
  const char* direction;
  bool readsSpectrum;
  bool writesSpectrum;
  int entries; // kernels made from the text
};

Names names(lower::Transform transform) {
  switch (transform) {
  case lower::Transform::forward: return {"Forward", "DFTFwd_RToSpectrum", "FORWARD", "forward", false, true, 6};
  case lower::Transform::inverse: return {"Inverse", "DFTInv_SpectrumToR", "INVERSE", "inverse", true, false, 6};
  case lower::Transform::hartley: break;
  }
  return {"Hartley", "Hartley", "HARTLEY", "none", false, false, 2};
}

} // namespace

Piece realPiece(const lower::RealKernel& kernel, lower::Transform transform, int length, const std::string& plan) {
  const Names name = names(transform);
  const graph::Counts counts = transform::count(kernel.body);
  std::ostringstream text;
  text << "\nnamespace tfmgen {\nnamespace {\n\n"
       << "// Plan " << plan << (transform == lower::Transform::inverse ? ", transposed: " : ": ") << counts.additions
       << " additions, " << counts.multiplications << " multiplications.\n"
       << "struct " << name.kernel << length << " : Real<" << length << ", Direction::" << name.direction << "> {\n"
       << "  template <class T, class Spectrum>\n"
       << "  TFMGEN_INLINE static void run(const T* x, T* y, T s) {\n"
       << scalarStatements(kernel, {name.readsSpectrum, name.writesSpectrum}) << "  }\n};\n\n"
       << "} // namespace\n} // namespace tfmgen\n\n"
       << "TFMGEN_DEFINE_" << name.macro << "(" << length << ")\n";
  return {text.str(), name.entries * (counts.additions + counts.multiplications)};
}

std::string kernelName(lower::Transform transform, int length) {
  return std::string(names(transform).family) + "_" + std::to_string(length);
}

std::string realPreamble() {
  return "// Made by tfmgen-generator from the plans of real transforms; changes belong there.\n"
         "#include \"dft_real/bodies.hpp\"\n";
}

} // namespace tfmgen::print
