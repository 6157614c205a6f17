#include "routine.hpp"

#include <algorithm>
#include <iterator>

namespace bench {

std::string_view shortName(Family family) {
  constexpr std::array<std::string_view, kFamilies.size()> names{"cfwd", "cinv", "rfwd", "rinv", "dht"};
  return names[static_cast<std::size_t>(family)];
}

std::size_t numberCount(Family family, int n) {
  const bool isComplex = family == Family::complexForward || family == Family::complexInverse;
  return static_cast<std::size_t>(isComplex ? 2 * n : n);
}

namespace {

// Element of number i of a half spectrum: 0 is the real bin 0, 2k-1 and 2k are re and im of bin k, n-1 is the real bin
// n/2 of even n.
std::size_t halfSpectrumPosition(Layout layout, std::size_t i, std::size_t n) {
  switch (layout) {
  case Layout::ccs: return i == 0 ? 0 : i + 1;
  case Layout::perm:
    if (n % 2 != 0 || i == 0) {
      return i;
    }
    return i == n - 1 ? 1 : i + 1;
  case Layout::halfComplex: return i % 2 != 0 || i == 0 ? (i + 1) / 2 : n - i / 2;
  default: return i;
  }
}

} // namespace

std::vector<std::size_t> positions(Layout layout, int n) {
  const auto length = static_cast<std::size_t>(n);
  std::vector<std::size_t> result(layout == Layout::complex ? 2 * length : length);
  for (std::size_t i = 0; i < result.size(); ++i) {
    result[i] = halfSpectrumPosition(layout, i, length);
  }
  return result;
}

template <class T>
std::vector<Routine> peerRoutines(Family family, int n, const Arrays<T>& arrays) {
  std::vector<Routine> routines;
#ifdef BENCH_FFTW
  addFftw(family, n, arrays, routines);
#endif
#ifdef BENCH_KISSFFT
  addKissfft(family, n, arrays, routines);
#endif
#ifdef BENCH_AV_TX
  addAvTx(family, n, arrays, routines);
#endif
  return routines;
}

template <class T>
std::vector<Routine> allRoutines(Family family, int n, const Arrays<T>& arrays) {
  std::vector<Routine> routines;
  addTfmgen(family, n, arrays, routines);
  std::vector<Routine> peers = peerRoutines(family, n, arrays);
  std::move(peers.begin(), peers.end(), std::back_inserter(routines));
  return routines;
}

template <class T>
void load(const Routine& routine, int n, const std::vector<T>& numbers, const Arrays<T>& arrays) {
  std::fill_n(arrays.src(), Arrays<T>::kSize, T(0));
  const auto at = positions(routine.in, n);
  for (std::size_t i = 0; i < at.size(); ++i) {
    arrays.src()[at[i]] = numbers[i];
  }
}

template <class T>
std::vector<T> result(const Routine& routine, int n, const Arrays<T>& arrays) {
  const auto at = positions(routine.out, n);
  std::vector<T> numbers(at.size());
  std::transform(at.begin(), at.end(), numbers.begin(), [&](std::size_t i) { return arrays.dst()[i]; });
  return numbers;
}

template std::vector<Routine> peerRoutines(Family, int, const Arrays<double>&);
template std::vector<Routine> peerRoutines(Family, int, const Arrays<float>&);
template std::vector<Routine> allRoutines(Family, int, const Arrays<float>&);
template std::vector<Routine> allRoutines(Family, int, const Arrays<double>&);
template void load(const Routine&, int, const std::vector<float>&, const Arrays<float>&);
template void load(const Routine&, int, const std::vector<double>&, const Arrays<double>&);
template std::vector<float> result(const Routine&, int, const Arrays<float>&);
template std::vector<double> result(const Routine&, int, const Arrays<double>&);

} // namespace bench
