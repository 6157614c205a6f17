#include "real.hpp"

#include "packed.hpp"
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

std::string spectrum(lower::Format format, int length) {
  const std::string n = "<" + std::to_string(length) + ">";
  switch (format) {
  case lower::Format::ccs: return "Ccs" + n;
  case lower::Format::pack: return "Pack" + n;
  case lower::Format::perm: return "Perm" + n;
  case lower::Format::plain: break;
  }
  return "NoSpectrum";
}

std::string specialised(const std::string& kernel, const std::string& sample, const std::string& spectrum,
                        const std::string& statements) {
  return "template <>\nTFMGEN_INLINE inline void " + kernel + "::run<" + sample + ", " + spectrum + ">(const " +
         sample + "* x, " + sample + "* y, " + sample + " s) {\n" + statements + "}\n";
}

std::string packedText(const std::string& kernel, int length, const PackedEntry& entry) {
  const std::string sample = entry.sampleBits == 32 ? "Tfm32f" : "Tfm64f";
  const std::string format = spectrum(entry.format, length);
  std::ostringstream text;
  text << "\n// " << packedSummary(entry.packed) << '\n'
       << specialised(kernel, sample, format, packedStatements(entry.packed.code));
  if (entry.format == lower::Format::pack && length % 2 != 0) {
    text << '\n'
         << specialised(kernel, sample, spectrum(lower::Format::perm, length),
                        "  run<" + sample + ", " + format + ">(x, y, s);\n");
  }
  return text.str();
}

// Whether some entry is left to the scalar text: of two sample types in one format or three.
bool hasScalarEntry(lower::Transform transform, int length, std::span<const PackedEntry> packed) {
  const std::size_t formats = transform == lower::Transform::hartley ? 1 : length % 2 != 0 ? 2 : 3;
  return packed.size() < 2 * formats;
}

} // namespace

Piece realPiece(const lower::RealKernel& kernel, lower::Transform transform, int length, const std::string& plan,
                std::span<const PackedEntry> packed) {
  const Names name = names(transform);
  const std::string structName = name.kernel + std::to_string(length);
  const graph::Counts counts = transform::count(kernel.body);
  std::ostringstream text;
  text << "\nnamespace tfmgen {\nnamespace {\n\n"
       << "// Plan " << plan << (transform == lower::Transform::inverse ? ", transposed: " : ": ") << counts.additions
       << " additions, " << counts.multiplications << " multiplications.\n"
       << "struct " << structName << " : Real<" << length << ", Direction::" << name.direction << "> {\n"
       << "  template <class T, class Spectrum>\n"
       << "  TFMGEN_INLINE static void run(const T* x, T* y, T s)";
  if (hasScalarEntry(transform, length, packed)) {
    text << " {\n" << scalarStatements(kernel, {name.readsSpectrum, name.writesSpectrum}) << "  }\n};\n";
  } else {
    text << ";\n};\n";
  }
  for (const PackedEntry& entry : packed) {
    text << packedText(structName, length, entry);
  }
  text << "\n} // namespace\n} // namespace tfmgen\n\n"
       << "TFMGEN_DEFINE_" << name.macro << "(" << length << ")\n";
  return {text.str(), name.entries * (counts.additions + counts.multiplications)};
}

std::string kernelName(lower::Transform transform, int length) {
  return std::string(names(transform).family) + "_" + std::to_string(length);
}

std::string entryName(lower::Transform transform, lower::Format format, int length, int sampleBits) {
  const std::string suffix = "_" + std::to_string(length) + "_" + std::to_string(sampleBits) + "f";
  if (transform == lower::Transform::hartley) {
    return "Hartley" + suffix;
  }
  const std::string name = format == lower::Format::ccs ? "CCS" : format == lower::Format::pack ? "Pack" : "Perm";
  return (transform == lower::Transform::forward ? "DFTFwd_RTo" + name : "DFTInv_" + name + "ToR") + suffix;
}

std::string realPreamble() {
  return "// Made by tfmgen-generator from the plans of real transforms; changes belong there.\n"
         "#include \"dft_real/bodies.hpp\"\n"
         "#include \"kernel/packed.hpp\"\n";
}

} // namespace tfmgen::print
