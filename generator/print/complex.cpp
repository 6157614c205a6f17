#include "complex.hpp"

#include "vectors.hpp"

#include <sstream>

namespace tfmgen::print {

namespace {

bool isForward(const ComplexKernel& k) {
  return k.sign == transform::RootSign::forward;
}

std::string sampleType(const ComplexKernel& k) {
  return k.sampleBits == 32 ? "Tfm32fc" : "Tfm64fc";
}

VectorType vectorType(const ComplexKernel& k) {
  return k.sampleBits == 32 ? VectorType{Precision::single, 4} : VectorType{Precision::twofold, 2};
}

} // namespace

std::string kernelName(const ComplexKernel& k) {
  std::ostringstream name;
  name << (isForward(k) ? "DFTFwd_CToC_" : "DFTInv_CToC_") << k.length << '_' << k.sampleBits << "fc";
  return name.str();
}

Piece complexPiece(const ComplexKernel& k, Bodies bodies) {
  const std::vector<graph::Ref> outputs = k.kernel.outputs();
  const graph::Counts counts = graph::count(k.kernel.graph, outputs);
  const std::string name = kernelName(k);
  const std::string sample = sampleType(k);
  const char* real = k.sampleBits == 32 ? "Tfm32f" : "Tfm64f";

  std::ostringstream text;
  text << "\nnamespace tfmgen {\nnamespace {\n\n// Length " << k.length << (isForward(k) ? ", forward" : ", inverse")
       << ", plan " << k.plan << ": " << counts.multiplications << " multiplications, " << counts.additions
       << " additions, " << counts.shuffles << " shuffles, " << counts.rotations << " rotations.\n"
       << "struct " << name << " : Complex<" << sample << ", " << k.length
       << ", Direction::" << (isForward(k) ? "forward" : "inverse") << "> {\n"
       << "  template <class Access>\n"
       << "  [[gnu::always_inline]] static inline void run(const " << real << "* x, " << real << "* y, V s) {\n"
       << vectorStatements(k.kernel, vectorType(k), vectorOrder(k.kernel)) << "  }\n};\n\n"
       << "} // namespace\n} // namespace tfmgen\n\n"
       << "TfmStatus tfmg" << name << "(const " << sample << "* pSrc, " << sample << "* pDst, int32_t flag) {\n"
       << "  return tfmgen::" << (bodies == Bodies::inOneFunction ? "bodiesInOneFunction" : "bodiesInTwoFunctions")
       << "<tfmgen::" << name << ">(pSrc, pDst, flag);\n}\n";
  return {text.str(), counts.multiplications + counts.additions + counts.shuffles + counts.rotations};
}

std::string complexPreamble() {
  return "// Made by tfmgen-generator from the plans of complex transforms; changes belong there.\n"
         "#include \"dft_complex/bodies.hpp\"\n";
}

} // namespace tfmgen::print
