#include "real.hpp"

#include "packed.hpp"
#include "scalars.hpp"

#include <algorithm>
#include <sstream>
#include <vector>

namespace tfmgen::print {

namespace {

struct Names {
  const char* kernel; // with the length behind it
  const char* family;
  const char* direction;
  bool readsSpectrum;
  bool writesSpectrum;
};

Names names(lower::Transform transform) {
  switch (transform) {
  case lower::Transform::forward: return {"Forward", "DFTFwd_RToSpectrum", "forward", false, true};
  case lower::Transform::inverse: return {"Inverse", "DFTInv_SpectrumToR", "inverse", true, false};
  case lower::Transform::hartley: break;
  }
  return {"Hartley", "Hartley", "none", false, false};
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

std::string sampleType(const RealEntry& entry) {
  return entry.sampleBits == 32 ? "Tfm32f" : "Tfm64f";
}

// The formats of a length whose bodies are the same: of odd lengths pack and perm.
std::vector<lower::Format> formatsOf(const RealEntry& entry, int length) {
  using enum lower::Format;
  return entry.format == pack && length % 2 != 0 ? std::vector{pack, perm} : std::vector{entry.format};
}

std::string packedText(const std::string& kernel, int length, const RealEntry& entry) {
  const std::string sample = sampleType(entry);
  const std::string format = spectrum(entry.format, length);
  std::ostringstream text;
  text << "\n// " << packedSummary(*entry.packed) << '\n'
       << specialised(kernel, sample, format, packedStatements(entry.packed->code));
  for (const lower::Format same : formatsOf(entry, length)) {
    if (same != entry.format) {
      std::ostringstream call;
      call << "  run<" << sample << ", " << format << ">(x, y, s);\n";
      text << '\n' << specialised(kernel, sample, spectrum(same, length), call.str());
    }
  }
  return text.str();
}

std::string entryText(lower::Transform transform, int length, const RealEntry& entry) {
  std::string text;
  for (const lower::Format format : formatsOf(entry, length)) {
    text += "TFMGEN_DEFINE_REAL(" + entryName(transform, format, length, entry.sampleBits) + ", " + sampleType(entry) +
            ", " + names(transform).kernel + std::to_string(length) + ", " + spectrum(format, length) + ")\n";
  }
  return text;
}

} // namespace

Piece realPiece(const lower::RealKernel& kernel, lower::Transform transform, int length, const std::string& plan,
                std::span<const RealEntry> entries) {
  const Names name = names(transform);
  const std::string structName = name.kernel + std::to_string(length);
  const graph::Counts counts = transform::count(kernel.body);
  const bool hasScalarEntry = std::ranges::any_of(entries, [](const RealEntry& entry) { return !entry.packed; });
  std::ostringstream text;
  text << "\nnamespace tfmgen {\nnamespace {\n\n"
       << "// Plan " << plan << (transform == lower::Transform::inverse ? ", transposed: " : ": ") << counts.additions
       << " additions, " << counts.multiplications << " multiplications.\n"
       << "struct " << structName << " : Real<" << length << ", Direction::" << name.direction << "> {\n"
       << "  template <class T, class Spectrum>\n"
       << "  TFMGEN_INLINE static void run(const T* x, T* y, T s)";
  if (hasScalarEntry) {
    text << " {\n" << scalarStatements(kernel, {name.readsSpectrum, name.writesSpectrum}) << "  }\n};\n";
  } else {
    text << ";\n};\n";
  }
  for (const RealEntry& entry : entries) {
    if (entry.packed) {
      text << packedText(structName, length, entry);
    }
  }
  text << "\n} // namespace\n} // namespace tfmgen\n\n";
  std::size_t routines = 0;
  for (const RealEntry& entry : entries) {
    text << entryText(transform, length, entry);
    routines += formatsOf(entry, length).size();
  }
  return {text.str(), static_cast<int>(routines) * (counts.additions + counts.multiplications)};
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
