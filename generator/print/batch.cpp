#include "batch.hpp"

#include "scalars.hpp"
#include "vectors.hpp"

#include <sstream>
#include <vector>

namespace tfmgen::print {

namespace {

struct Names {
  const char* transform;
  std::vector<const char*> formats;
  ScalarForm form;
};

Names names(lower::Transform transform) {
  switch (transform) {
  case lower::Transform::forward: return {"realForward", {"ccs", "pack", "perm"}, {false, true}};
  case lower::Transform::inverse: return {"realInverse", {"ccs", "pack", "perm"}, {true, false}};
  case lower::Transform::hartley: break;
  }
  return {"hartley", {"plain"}, {}};
}

// Kernel<kBytes, Transform::hartley, Tfm32f, 15
std::string arguments(const char* transform, const std::string& sample, int length) {
  return std::string("<kBytes, Transform::") + transform + ", " + sample + ", " + std::to_string(length) + ">";
}

std::string inNamespace(const std::string& text) {
  return "\nnamespace tfmgen::batch {\n" + text + "\n} // namespace tfmgen::batch\n";
}

std::string comment(int length, const std::string& plan, const graph::Counts& c) {
  std::ostringstream text;
  text << "\n// Length " << length << ", plan " << plan << ": " << c.multiplications << " multiplications, "
       << c.additions << " additions.\n";
  return text.str();
}

std::string kernelText(const std::string& head, const char* constant, const std::string& statements) {
  return head + " {\n  using Constant = " + constant +
         ";\n  template <class T, class Spectrum, class Source, class Destination>\n" +
         "  TFMGEN_INLINE static void run(const Source& x, const Destination& y, T s) {\n" + statements + "  }\n};\n";
}

std::string routines(const Names& name, const std::string& sample, int length) {
  std::string text = "template struct InRows" + arguments(name.transform, sample, length) + ";\n";
  for (const char* format : name.formats) {
    if (std::string(format) != "perm" || length % 2 == 0) { // else it is Pack
      text += "template struct InFrames" +
              arguments(name.transform, std::string("Format::") + format + ", " + sample, length) + ";\n";
    }
  }
  return text;
}

} // namespace

Piece batchPiece(const BatchComplex32& k, int registers) {
  const graph::Counts c = transform::count(k.kernel.body);
  const Names name{k.sign == transform::RootSign::forward ? "complexForward" : "complexInverse", {"plain"}, {}};
  ScalarForm form;
  form.storesParts = true;
  form.constants = k.isDouble ? Precision::twofold : Precision::single;
  form.registers = registers - 2;
  return {inNamespace(comment(k.length, k.plan, c) +
                      kernelText("template <>\nstruct Kernel" + arguments(name.transform, "Tfm32f", k.length),
                                 k.isDouble ? "double" : "float", scalarStatements(k.kernel, form)) +
                      routines(name, "Tfm32f", k.length)),
          c.multiplications + c.additions};
}

Piece batchComplex64Piece(const lower::Kernel& kernel, int length, const std::string& plan, int registers) {
  const graph::Counts c = graph::count(kernel.graph, kernel.outputs());
  const std::string place = arguments("complexForward", "Tfm64f", length);
  std::string text = comment(length, plan, c);
  text += "template <>\nstruct Kernel" + place +
          " {\n  template <class V, class Access, class Source, class Destination>\n" +
          "  TFMGEN_INLINE static void run(const Source& x, const Destination& y, V s) {\n" +
          vectorStatements(kernel, {Precision::twofold, 2, true, registers - 1}) + "  }\n};\n";
  text += "template struct InRows" + place + ";\n";
  text += "template struct InPieces<kBytes, " + std::to_string(length) + ">;\n";
  for (const char* transform : {"complexForward", "complexInverse"}) {
    text += "template struct InFrames" + arguments(transform, "Format::plain, Tfm64f", length) + ";\n";
  }
  return {inNamespace(text), c.multiplications + c.additions};
}

Piece batchRealPiece(const lower::RealKernel& kernel, lower::Transform transform, int length, const std::string& plan,
                     int registers) {
  const graph::Counts c = transform::count(kernel.body);
  Names name = names(transform);
  name.form.registers = registers - 2;
  return {inNamespace(comment(length, plan, c) +
                      kernelText("template <class Real>\nstruct Kernel" + arguments(name.transform, "Real", length),
                                 "double", scalarStatements(kernel, name.form)) +
                      routines(name, "Tfm32f", length) + routines(name, "Tfm64f", length)),
          2 * (c.multiplications + c.additions)};
}

std::string batchPreamble() {
  return "// Made by tfmgen-generator; changes belong there.\n"
         "#include \"kernels.hpp\"\n";
}

} // namespace tfmgen::print
