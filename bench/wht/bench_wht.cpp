// Times the Walsh-Hadamard transform of every order beside a plain loop and FFTW, whose real transform of rank m and
// length 2 in every direction is the same.
//
//   bench_wht [ROUNDS]
//
// Each round times all routines of an order one after the other; a figure is the least of its rounds. Columns: ticks of
// the time stamp counter a call; bytes read and written a tick; ticks over the bound of two 128-bit additions a tick,
// which is also the bound in core cycles when the core runs at the counter's rate; time over the mark for 128-bit
// registers; time of the peers over ours.

#include "loop.hpp"
#include "marks.hpp"
#include "timing.hpp"
#include "wht.hpp"

#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace {

constexpr int kOrders = tfmgen::test::kWhtOrders;

struct AlignedDelete {
  void operator()(void* block) const { ::operator delete (block, std::align_val_t{64}); }
};

template <class T>
using Block = std::unique_ptr<T[], AlignedDelete>;

template <class T>
Block<T> allocate(std::size_t count) {
  void* const block = ::operator new (std::max<std::size_t>(count, 1) * sizeof(T), std::align_val_t{64});
  std::memset(block, 0, count * sizeof(T));
  return Block<T>(static_cast<T*>(block));
}

using tfmgen::test::Wht;

// The two precisions of FFTW under one name.
template <class Real>
struct Fftw;

template <>
struct Fftw<float> {
  static constexpr const char* name = "32f";
  static constexpr auto plan = fftwf_plan_r2r;
  static constexpr auto execute = fftwf_execute;
  static constexpr auto destroy = fftwf_destroy_plan;
};

template <>
struct Fftw<double> {
  static constexpr const char* name = "64f";
  static constexpr auto plan = fftw_plan_r2r;
  static constexpr auto execute = fftw_execute;
  static constexpr auto destroy = fftw_destroy_plan;
};

// Ticks a call of about 20 microseconds of calls back to back.
template <class Routine>
double ticks(int order, const Routine& routine) {
  const int calls = std::max(1, (1 << 15) / (order << order));
  const std::uint64_t start = bench::timeStamp();
  for (int i = 0; i < calls; ++i) {
    routine();
    benchmark::ClobberMemory();
  }
  return static_cast<double>(bench::timeStamp() - start) / calls;
}

// Vector additions of the transform at two a cycle; the lowest orders work on single elements.
template <class Real>
double bound(int order) {
  const int lanes = static_cast<int>(16 / sizeof(Real));
  const bool scalar = (1 << order) < lanes * (sizeof(Real) == 4 ? 4 : 2) || order < 3;
  return static_cast<double>(order << order) / (scalar ? 2.0 : 2.0 * lanes);
}

template <class Real>
void compare(int order, int rounds) {
  using Peer = Fftw<Real>;
  const std::size_t n = std::size_t{1} << order;
  std::int32_t bytes = 0;
  Wht<Real>::bufferSize(order, &bytes);
  const auto src = allocate<Real>(n);
  const auto dst = allocate<Real>(n + 1);
  const auto buffer = allocate<std::uint8_t>(static_cast<std::size_t>(bytes));

  std::array<int, kOrders> twos{};
  twos.fill(2);
  std::array<fftw_r2r_kind, kOrders> kinds{};
  kinds.fill(FFTW_DHT);
  const auto plan = Peer::plan(order, twos.data(), src.get(), dst.get(), kinds.data(), FFTW_MEASURE);
  std::fill_n(src.get(), n, Real(1));

  constexpr double never = std::numeric_limits<double>::infinity();
  double aligned = never;
  double unaligned = never;
  double loop = never;
  double fftw = never;
  for (int round = 0; round < rounds; ++round) {
    aligned = std::min(
        aligned, ticks(order, [&] { Wht<Real>::general(src.get(), dst.get(), order, TFM_NO_DIV, buffer.get()); }));
    unaligned =
        std::min(unaligned,
                 ticks(order, [&] { Wht<Real>::general(src.get(), dst.get() + 1, order, TFM_NO_DIV, buffer.get()); }));
    loop = std::min(loop, ticks(order, [&] { loopWht(src.get(), dst.get(), order); }));
    fftw = std::min(fftw, ticks(order, [&] { Peer::execute(plan); }));
  }
  Peer::destroy(plan);
  const Mark& there = kMarks<Real>[static_cast<std::size_t>(order - 1)];
  const double mark = there.cycles * (there.carrier == Carrier::loop ? loop : fftw) / there.carrierCycles;
  std::printf("%s %5d %10.1f %10.1f %8.2f %8.2f %8.2f %9.2f %9.2f\n", Peer::name, order, aligned, unaligned,
              2.0 * static_cast<double>(n * sizeof(Real)) / aligned, aligned / bound<Real>(order), aligned / mark,
              loop / aligned, fftw / aligned);
}

} // namespace

int main(int argc, char** argv) {
  int rounds = 300;
  if (argc == 2) {
    const char* const end = argv[1] + std::strlen(argv[1]);
    const auto [rest, error] = std::from_chars(argv[1], end, rounds);
    if (error != std::errc{} || rest != end || rounds < 1) {
      rounds = 0;
    }
  }
  if (argc > 2 || rounds < 1) {
    std::fputs("usage: bench_wht [ROUNDS]\n", stderr);
    return 2;
  }
  std::puts("type order      ticks  unaligned  B/tick   /bound    /mark loop/ours FFTW/ours");
  for (int order = 1; order <= kOrders; ++order) {
    compare<float>(order, rounds);
  }
  for (int order = 1; order <= kOrders; ++order) {
    compare<double>(order, rounds);
  }
}
