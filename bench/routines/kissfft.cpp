#include "routine.hpp"

#include <kiss_fft.h>
#include <kiss_fftr.h>
#include <kissfft.hh>

namespace bench {

namespace {

void add(const char* name, Layout in, Layout out, std::function<void(std::int64_t)> repeat,
         std::vector<Routine>& routines) {
  routines.push_back({name, "kissfft", in, out, std::move(repeat)});
}

void addComplex(bool inverse, int n, const Arrays<float>& arrays, std::vector<Routine>& routines) {
  const std::shared_ptr<kiss_fft_state> plan(kiss_fft_alloc(n, inverse ? 1 : 0, nullptr, nullptr), kiss_fft_free);
  auto* const src = reinterpret_cast<kiss_fft_cpx*>(arrays.src());
  auto* const dst = reinterpret_cast<kiss_fft_cpx*>(arrays.dst());
  add("kiss_fft", Layout::complex, Layout::complex, backToBack([=] { kiss_fft(plan.get(), src, dst); }), routines);
}

// The packaged C library has floats only; doubles go through its C++ header.
void addComplex(bool inverse, int n, const Arrays<double>& arrays, std::vector<Routine>& routines) {
  const auto plan = std::make_shared<const kissfft<double>>(static_cast<std::size_t>(n), inverse);
  auto* const src = reinterpret_cast<std::complex<double>*>(arrays.src());
  auto* const dst = reinterpret_cast<std::complex<double>*>(arrays.dst());
  add("kissfft.hh", Layout::complex, Layout::complex, backToBack([=] { plan->transform(src, dst); }), routines);
}

void addReal(bool inverse, int n, const Arrays<float>& arrays, std::vector<Routine>& routines) {
  const std::shared_ptr<kiss_fftr_state> plan(kiss_fftr_alloc(n, inverse ? 1 : 0, nullptr, nullptr), kiss_fft_free);
  if (inverse) {
    auto* const src = reinterpret_cast<kiss_fft_cpx*>(arrays.src());
    const auto call = [=, dst = arrays.dst()] { kiss_fftri(plan.get(), src, dst); };
    add("kiss_fftri", Layout::ccs, Layout::real, backToBack(call), routines);
  } else {
    auto* const dst = reinterpret_cast<kiss_fft_cpx*>(arrays.dst());
    const auto call = [=, src = arrays.src()] { kiss_fftr(plan.get(), src, dst); };
    add("kiss_fftr", Layout::real, Layout::ccs, backToBack(call), routines);
  }
}

void addReal(bool inverse, int n, const Arrays<double>& arrays, std::vector<Routine>& routines) {
  if (inverse) {
    return; // the header has no inverse real transform
  }
  const auto plan = std::make_shared<const kissfft<double>>(static_cast<std::size_t>(n / 2), false);
  auto* const dst = reinterpret_cast<std::complex<double>*>(arrays.dst());
  const auto call = [=, src = arrays.src()] { plan->transform_real(src, dst); };
  add("kissfft.hh-real", Layout::real, Layout::perm, backToBack(call), routines);
}

} // namespace

template <class T>
void addKissfft(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines) {
  if (family == Family::complexForward || family == Family::complexInverse) {
    addComplex(family == Family::complexInverse, n, arrays, routines);
  } else if (family != Family::hartley && n % 2 == 0) { // its real transforms are of even length only
    addReal(family == Family::realInverse, n, arrays, routines);
  }
}

template void addKissfft(Family, int, const Arrays<float>&, std::vector<Routine>&);
template void addKissfft(Family, int, const Arrays<double>&, std::vector<Routine>&);

} // namespace bench
