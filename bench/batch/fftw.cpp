#include "contenders.hpp"
#include "fftw_api.hpp"

namespace bench {

namespace {

constexpr double kMostSecondsOfPlanning = 4;

template <class T>
typename Fftw<T>::Plan* plan(const CaseId& id, const Arena<T>& arena, unsigned flags) {
  using Api = Fftw<T>;
  const bool isContiguous = id.arrangement == Arrangement::contiguous;
  const int stride = isContiguous ? 1 : id.count;
  const auto distance = [isContiguous](int length) { return isContiguous ? length : 1; };
  const int bins = id.n / 2 + 1;
  auto* const src = reinterpret_cast<typename Api::Complex*>(arena.src());
  auto* const dst = reinterpret_cast<typename Api::Complex*>(arena.dst());
  switch (id.family) {
  case Family::complexForward:
    return Api::manyComplexPlan(1, &id.n, id.count, src, nullptr, stride, distance(id.n), dst, nullptr, stride,
                                distance(id.n), FFTW_FORWARD, flags);
  case Family::realForward:
    return Api::manyRealToComplexPlan(1, &id.n, id.count, arena.src(), nullptr, stride, distance(id.n), dst, nullptr,
                                      stride, distance(bins), flags);
  case Family::realInverse:
    return Api::manyComplexToRealPlan(1, &id.n, id.count, src, nullptr, stride, distance(bins), arena.dst(), nullptr,
                                      stride, distance(id.n), flags);
  case Family::hartley: break;
  }
  const fftw_r2r_kind kind = FFTW_DHT;
  return Api::manyRealToRealPlan(1, &id.n, id.count, arena.src(), nullptr, stride, distance(id.n), arena.dst(), nullptr,
                                 stride, distance(id.n), &kind, flags);
}

} // namespace

template <class T>
void addFftw(const CaseId& id, const Arena<T>& arena, const Planning& planning, std::vector<Contender>& contenders) {
  using Api = Fftw<T>;
  Api::limitTime(kMostSecondsOfPlanning);
  const auto add = [&](std::string_view name, unsigned flags) {
    const std::string file = planning.plans + std::string(name);
    const bool isKept = !planning.plans.empty();
    Api::forgetWisdom();
    const bool isKnown = isKept && Api::readWisdom(file.c_str()) != 0;
    if (auto* const made = plan<T>(id, arena, flags)) {
      const std::shared_ptr<typename Api::Plan> shared(made, Api::destroy);
      contenders.push_back({std::string(name), [shared] { Api::execute(shared.get()); }});
    }
    if (isKept && !isKnown) {
      Api::writeWisdom(file.c_str());
    }
    arena.restore();
  };
  add(kMeasured, FFTW_MEASURE);
  if (planning.isPatient) {
    add(kPatient, FFTW_PATIENT);
  }
}

template void addFftw<float>(const CaseId&, const Arena<float>&, const Planning&, std::vector<Contender>&);
template void addFftw<double>(const CaseId&, const Arena<double>&, const Planning&, std::vector<Contender>&);

} // namespace bench
