#include "plan.hpp"

#include <initializer_list>
#include <string_view>
#include <utility>

namespace tfmgen::plan {

namespace {

PlanPtr make(auto form) {
  return std::make_shared<const Plan>(Plan{std::move(form)});
}

OddPlanPtr makeOdd(auto form) {
  return std::make_shared<const OddPlan>(OddPlan{std::move(form)});
}

bool isComposite(const Plan& plan) {
  return std::holds_alternative<GoodThomas>(plan.form) || std::holds_alternative<CooleyTukey>(plan.form) ||
         std::holds_alternative<Pairs>(plan.form);
}

std::string concatenated(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) {
    text += part;
  }
  return text;
}

std::string describeFactor(const Plan& plan) {
  return isComposite(plan) ? concatenated({"(", describe(plan), ")"}) : describe(plan);
}

} // namespace

PlanPtr direct(int length) {
  return make(Direct{length});
}

PlanPtr powerOfTwo(int length, OddHalf oddHalf) {
  return make(PowerOfTwo{length, oddHalf});
}

PlanPtr goodThomas(PlanPtr first, PlanPtr second) {
  return make(GoodThomas{std::move(first), std::move(second)});
}

PlanPtr goodThomas(PlanPtr first, PlanPtr second, PlanPtr third) {
  return goodThomas(goodThomas(std::move(first), std::move(second)), std::move(third));
}

PlanPtr cooleyTukey(PlanPtr first, PlanPtr second, Merge mergeSine) {
  return make(CooleyTukey{std::move(first), std::move(second), mergeSine});
}

PlanPtr pairs(PlanPtr sums, OddPlanPtr differences) {
  return make(Pairs{std::move(sums), std::move(differences)});
}

PlanPtr rader(int length, int primitiveRoot, PlanPtr analysis, PlanPtr synthesis, Merge mergeAnalysis,
              Merge mergeSynthesis) {
  return make(Rader{length, primitiveRoot, std::move(analysis), std::move(synthesis), mergeAnalysis, mergeSynthesis});
}

PlanPtr chirp(int length, PlanPtr convolution) {
  return make(Chirp{length, std::move(convolution)});
}

PlanPtr byData(PlanPtr onReal, PlanPtr onComplex) {
  return make(ByData{std::move(onReal), std::move(onComplex)});
}

OddPlanPtr oddGoodThomas(PlanPtr first) {
  return makeOdd(OddGoodThomas{std::move(first)});
}

OddPlanPtr oddCooleyTukey(PlanPtr first, Merge mergeSine) {
  return makeOdd(OddCooleyTukey{std::move(first), mergeSine});
}

OddPlanPtr oddByThree(PlanPtr onComplex, OddPlanPtr onReal) {
  return makeOdd(OddByThree{std::move(onComplex), std::move(onReal)});
}

int length(const Plan& plan) {
  return std::visit(Overload{[](const GoodThomas& p) { return length(*p.first) * length(*p.second); },
                             [](const CooleyTukey& p) { return length(*p.first) * length(*p.second); },
                             [](const Pairs& p) { return 2 * length(*p.sums); },
                             [](const ByData& p) { return length(*p.onReal); }, [](const auto& p) { return p.length; }},
                    plan.form);
}

std::string describe(const Plan& plan) {
  const Overload text{[](const Direct& p) { return std::to_string(p.length); },
                      [](const PowerOfTwo& p) { return std::to_string(p.length); },
                      [](const GoodThomas& p) {
                        return concatenated({"GT ", describeFactor(*p.first), ".", describeFactor(*p.second)});
                      },
                      [](const CooleyTukey& p) {
                        return concatenated({"CT ", describeFactor(*p.first), "x", describeFactor(*p.second)});
                      },
                      [](const Pairs& p) {
                        return concatenated({"pairs, ", describe(*p.sums)});
                      },
                      [](const Rader& p) {
                        const std::string forth = describe(*p.analysis);
                        const std::string back = describe(*p.synthesis);
                        return concatenated({"Rader ", std::to_string(p.length), " (", forth,
                                             forth == back ? "" : " | ", forth == back ? "" : back, ")"});
                      },
                      [](const Chirp& p) {
                        return concatenated({"Chirp ", std::to_string(p.length), " (", describe(*p.convolution), ")"});
                      },
                      [](const ByData& p) { return describe(*p.onReal); }};
  return std::visit(text, plan.form);
}

} // namespace tfmgen::plan
