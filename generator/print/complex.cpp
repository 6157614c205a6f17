#include "complex.hpp"

#include "elements.hpp"
#include "packed.hpp"
#include "scalars.hpp"
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

// The function `run` of a kernel.
std::string runText(const ComplexKernel& k) {
  std::ostringstream text;
  if (k.packed) {
    text << "  // " << packedSummary(*k.packed) << '\n'
         << "  TFMGEN_INLINE static void run(const Tfm64f* x, Tfm64f* y, Tfm64f s) {\n"
         << packedStatements(k.packed->code);
  } else if (const auto* vectors = std::get_if<lower::Kernel>(&k.kernel)) {
    const char* real = k.sampleBits == 32 ? "Tfm32f" : "Tfm64f";
    text << "  template <class Access>\n"
         << "  TFMGEN_INLINE static void run(const " << real << "* x, " << real << "* y, V s) {\n"
         << vectorStatements(*vectors, vectorType(k));
  } else if (const auto* wide = std::get_if<WideKernel>(&k.kernel)) {
    text << "  TFMGEN_INLINE static void run(const Tfm32f* x, Tfm32f* y, Tfm32f scale) {\n"
         << elementStatements(wide->program, wide->registers);
  } else {
    text << "  template <class T>\n"
         << "  TFMGEN_INLINE static void run(const T* x, T* y, T s) {\n"
         << scalarStatements(std::get<lower::RealKernel>(k.kernel), {});
  }
  text << "  }\n";
  return text.str();
}

const char* entryBody(Bodies bodies) {
  switch (bodies) {
  case Bodies::one: return "oneBody";
  case Bodies::inOneFunction: return "bodiesInOneFunction";
  case Bodies::inTwoFunctions: break;
  }
  return "bodiesInTwoFunctions";
}

} // namespace

std::string kernelName(const ComplexKernel& k) {
  std::ostringstream name;
  name << (isForward(k) ? "DFTFwd_CToC_" : "DFTInv_CToC_") << k.length << '_' << k.sampleBits << "fc";
  return name.str();
}

graph::Counts counts(const ComplexKernel& k) {
  if (const auto* vectors = std::get_if<lower::Kernel>(&k.kernel)) {
    return graph::count(vectors->graph, vectors->outputs());
  }
  if (const auto* wide = std::get_if<WideKernel>(&k.kernel)) {
    return wide::count(wide->program);
  }
  return transform::count(std::get<lower::RealKernel>(k.kernel).body);
}

Piece complexPiece(const ComplexKernel& k) {
  const graph::Counts c = counts(k);
  const std::string name = kernelName(k);
  const std::string sample = sampleType(k);

  std::ostringstream text;
  text << "\nnamespace tfmgen {\nnamespace {\n\n// Length " << k.length << (isForward(k) ? ", forward" : ", inverse")
       << ", plan " << k.plan << ": " << c.multiplications << " multiplications, " << c.additions << " additions, "
       << c.shuffles << " shuffles, " << c.rotations << " rotations.\n"
       << "struct " << name << " : Complex<" << sample << ", " << k.length
       << ", Direction::" << (isForward(k) ? "forward" : "inverse") << "> {\n"
       << runText(k) << "};\n\n"
       << "} // namespace\n} // namespace tfmgen\n\n"
       << "TfmStatus tfmg" << name << "(const " << sample << "* pSrc, " << sample << "* pDst, int32_t flag) {\n"
       << "  return tfmgen::" << entryBody(k.packed ? Bodies::one : k.bodies) << "<tfmgen::" << name
       << ">(pSrc, pDst, flag);\n}\n";
  return {text.str(), c.multiplications + c.additions + c.shuffles + c.rotations};
}

std::string complexPreamble() {
  return "// Made by tfmgen-generator from the plans of complex transforms; changes belong there.\n"
         "#include \"dft_complex/bodies.hpp\"\n"
         "#include \"kernel/packed.hpp\"\n";
}

} // namespace tfmgen::print
