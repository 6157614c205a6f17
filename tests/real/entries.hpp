// Real and Hartley transforms by kind, format and length.
#pragma once

#include "families.hpp"

#include <algorithm>

namespace tfmgen::test {

inline constexpr std::array<Format, 3> kFormats = {Format::ccs, Format::pack, Format::perm};

template <class Real>
Entry entry(Kind kind, Format format, int n) {
  const auto family = std::ranges::find_if(
      families(), [&](const Family& f) { return f.kind == kind && f.format == format && f.realBytes == sizeof(Real); });
  return {*family, n};
}

template <class Real>
std::vector<Real> run(const Entry& entry, const std::vector<Real>& source, std::int32_t flag) {
  std::vector<Real> result(entry.destinationReals());
  EXPECT_EQ(source.size(), entry.sourceReals());
  EXPECT_EQ(entry(source.data(), result.data(), flag), tfmStsOk);
  return result;
}

// Moves the bins of a spectrum of n samples from one format to another; what CCS holds besides is `filler`.
template <class Real>
std::vector<Real> repacked(const std::vector<Real>& spectrum, int n, Format from, Format to, Real filler) {
  std::vector<Real> out(static_cast<std::size_t>(to == Format::ccs ? 2 * (n / 2 + 1) : n), filler);
  for (int k = 0; 2 * k <= n; ++k) {
    const Slot source = spectrumSlot(from, n, k);
    const Slot target = spectrumSlot(to, n, k);
    out.begin()[target.re] = spectrum.begin()[source.re];
    if (k != 0 && 2 * k != n) {
      out.begin()[target.im] = spectrum.begin()[source.im];
    }
  }
  return out;
}

} // namespace tfmgen::test
