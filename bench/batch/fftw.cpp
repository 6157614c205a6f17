#include "contenders.hpp"

#include <fftw3.h>

#include <type_traits>

namespace bench {

namespace {

// The interface exists once for each sample type, under names that differ in their prefix.
template <class T>
struct Fftw;

#define BENCH_FFTW_API(T, prefix)                                                                                      \
  template <>                                                                                                          \
  struct Fftw<T> {                                                                                                     \
    using Complex = prefix##_complex;                                                                                  \
    using Plan = std::remove_pointer_t<prefix##_plan>;                                                                 \
    static constexpr auto complex = &prefix##_plan_many_dft;                                                           \
    static constexpr auto realToComplex = &prefix##_plan_many_dft_r2c;                                                 \
    static constexpr auto complexToReal = &prefix##_plan_many_dft_c2r;                                                 \
    static constexpr auto realToReal = &prefix##_plan_many_r2r;                                                        \
    static constexpr auto execute = &prefix##_execute;                                                                 \
    static constexpr auto destroy = &prefix##_destroy_plan;                                                            \
    static constexpr auto forgetWisdom = &prefix##_forget_wisdom;                                                      \
    static constexpr auto limitTime = &prefix##_set_timelimit;                                                         \
  };
BENCH_FFTW_API(float, fftwf)
BENCH_FFTW_API(double, fftw)
#undef BENCH_FFTW_API

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
    return Api::complex(1, &id.n, id.count, src, nullptr, stride, distance(id.n), dst, nullptr, stride, distance(id.n),
                        FFTW_FORWARD, flags);
  case Family::realForward:
    return Api::realToComplex(1, &id.n, id.count, arena.src(), nullptr, stride, distance(id.n), dst, nullptr, stride,
                              distance(bins), flags);
  case Family::realInverse:
    return Api::complexToReal(1, &id.n, id.count, src, nullptr, stride, distance(bins), arena.dst(), nullptr, stride,
                              distance(id.n), flags);
  case Family::hartley: break;
  }
  const fftw_r2r_kind kind = FFTW_DHT;
  return Api::realToReal(1, &id.n, id.count, arena.src(), nullptr, stride, distance(id.n), arena.dst(), nullptr, stride,
                         distance(id.n), &kind, flags);
}

} // namespace

template <class T>
void addFftw(const CaseId& id, const Arena<T>& arena, bool isPatient, std::vector<Contender>& contenders) {
  using Api = Fftw<T>;
  Api::forgetWisdom();
  Api::limitTime(kMostSecondsOfPlanning);
  const auto add = [&](const char* name, unsigned flags) {
    if (auto* const made = plan<T>(id, arena, flags)) {
      const std::shared_ptr<typename Api::Plan> shared(made, Api::destroy);
      contenders.push_back({name, [shared] { Api::execute(shared.get()); }});
    }
    arena.restore();
  };
  add("fftw-measured", FFTW_MEASURE);
  if (isPatient) {
    add("fftw-patient", FFTW_PATIENT);
  }
}

template void addFftw<float>(const CaseId&, const Arena<float>&, bool, std::vector<Contender>&);
template void addFftw<double>(const CaseId&, const Arena<double>&, bool, std::vector<Contender>&);

} // namespace bench
