#include "link.hpp"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <stdexcept>
#include <string>

namespace {

constexpr int kCarriers = 64; // of the wave
constexpr int kPrefix = 8;    // samples in front of a symbol that repeat its end, longer than the echoes
constexpr int kFrame = kCarriers + kPrefix;
constexpr std::size_t kSymbolsPerSlot = 14;

using Complexes = std::vector<Tfm32fc>;

// The direct path and its echoes, one sample apart.
constexpr std::array<Tfm32fc, 4> kChannel{{{0.9F, 0}, {0.25F, 0.2F}, {-0.15F, 0.1F}, {0.05F, -0.05F}}};

Tfm32fc product(Tfm32fc a, Tfm32fc b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

void check(TfmStatus status) {
  if (status != tfmStsOk) {
    throw std::runtime_error("a transform returns the status " + std::to_string(status));
  }
}

// How the arrays lie. Symbols stand block by block. Carriers stand as a grid, all blocks of carrier 0 first: what is
// done to a carrier, such as equalising it, goes through memory in one piece, and the rest of the grid stays zero.
// Waves stand symbol by symbol, room for the prefix in front.
struct Layouts {
  TfmbLayout symbols;
  TfmbLayout grid;
  TfmbLayout wave{1, kFrame};

  Layouts(int carriers, std::size_t blocks) : symbols{1, carriers}, grid{static_cast<std::int64_t>(blocks), 1} {}
};

class Link {
public:
  Link(int carriers, std::size_t blocks)
      : carriers_(carriers), blocks_(blocks), layouts_(carriers, blocks),
        firstCarrier_(static_cast<std::size_t>(kCarriers - carriers) / 2) {}

  [[nodiscard]] Complexes spread(const Complexes& symbols) const {
    Complexes grid(kCarriers * blocks_);
    check(tfmbDFTFwd_CToC_32fc(symbols.data(), layouts_.symbols, block(grid), layouts_.grid, carriers_, count(),
                               TFM_DIV_BY_SQRTN));
    return grid;
  }

  // The symbols themselves as carriers, as plain OFDM has them.
  [[nodiscard]] Complexes unspread(const Complexes& symbols) const {
    Complexes grid(kCarriers * blocks_);
    for (std::size_t i = 0; i < symbols.size(); ++i) {
      const auto carriers = static_cast<std::size_t>(carriers_);
      block(grid)[i % carriers * blocks_ + i / carriers] = symbols[i];
    }
    return grid;
  }

  [[nodiscard]] Complexes modulate(const Complexes& grid) const {
    Complexes wave(kFrame * blocks_);
    check(tfmbDFTInv_CToC_32fc(grid.data(), layouts_.grid, wave.data() + kPrefix, layouts_.wave, kCarriers, count(),
                               TFM_DIV_BY_SQRTN));
    for (auto symbol = wave.begin(); symbol != wave.end(); symbol += kFrame) {
      std::copy_n(symbol + kCarriers, kPrefix, symbol);
    }
    return wave;
  }

  [[nodiscard]] Complexes demodulate(const Complexes& wave) const {
    Complexes grid(kCarriers * blocks_);
    check(tfmbDFTFwd_CToC_32fc(wave.data() + kPrefix, layouts_.wave, grid.data(), layouts_.grid, kCarriers, count(),
                               TFM_DIV_BY_SQRTN));
    return grid;
  }

  // Undoes the channel, carrier by carrier.
  void equalise(Complexes& grid) const {
    for (std::size_t k = 0; k < kCarriers; ++k) {
      std::complex<double> gain = 0;
      for (std::size_t delay = 0; delay < kChannel.size(); ++delay) {
        const double phase = -2 * std::numbers::pi * static_cast<double>(k * delay) / kCarriers;
        gain += std::complex<double>(kChannel[delay].re, kChannel[delay].im) * std::polar(1.0, phase);
      }
      const std::complex<double> inverse = 1.0 / gain;
      const Tfm32fc factor{static_cast<float>(inverse.real()), static_cast<float>(inverse.imag())};
      const auto row = grid.begin() + static_cast<std::ptrdiff_t>(k * blocks_);
      std::transform(row, row + static_cast<std::ptrdiff_t>(blocks_), row,
                     [factor](Tfm32fc x) { return product(factor, x); });
    }
  }

  [[nodiscard]] Complexes despread(const Complexes& grid) const {
    Complexes symbols(static_cast<std::size_t>(carriers_) * blocks_);
    check(tfmbDFTInv_CToC_32fc(block(grid), layouts_.grid, symbols.data(), layouts_.symbols, carriers_, count(),
                               TFM_DIV_BY_SQRTN));
    return symbols;
  }

  // The carriers of the block alone.
  [[nodiscard]] Complexes carriersOf(const Complexes& grid) const {
    return {block(grid), block(grid) + static_cast<std::size_t>(carriers_) * blocks_};
  }

private:
  [[nodiscard]] std::int64_t count() const { return static_cast<std::int64_t>(blocks_); }

  [[nodiscard]] Tfm32fc* block(Complexes& grid) const { return grid.data() + firstCarrier_ * blocks_; }
  [[nodiscard]] const Tfm32fc* block(const Complexes& grid) const { return grid.data() + firstCarrier_ * blocks_; }

  int carriers_;
  std::size_t blocks_;
  Layouts layouts_;
  std::size_t firstCarrier_;
};

// Echoes, then noise of the given power.
Complexes throughChannel(const Complexes& wave, double noisePower, std::mt19937_64& random) {
  std::normal_distribution<float> noise(0, static_cast<float>(std::sqrt(noisePower / 2)));
  Complexes received(wave.size());
  for (std::size_t i = 0; i < wave.size(); ++i) {
    received[i] = {noise(random), noise(random)};
    for (std::size_t delay = 0; delay <= std::min(i, kChannel.size() - 1); ++delay) {
      const Tfm32fc echo = product(kChannel[delay], wave[i - delay]);
      received[i].re += echo.re;
      received[i].im += echo.im;
    }
  }
  return received;
}

double power(Tfm32fc x) {
  return static_cast<double>(x.re) * x.re + static_cast<double>(x.im) * x.im;
}

double meanPower(const Complexes& wave) {
  double sum = 0;
  for (const Tfm32fc x : wave) {
    sum += power(x);
  }
  return sum / static_cast<double>(wave.size());
}

double peakToAverage(const Complexes& wave) {
  std::vector<double> powers(wave.size());
  std::transform(wave.begin(), wave.end(), powers.begin(), power);
  const auto peak = powers.end() - 1 - static_cast<std::ptrdiff_t>(powers.size() / 1000);
  std::nth_element(powers.begin(), peak, powers.end());
  return 10 * std::log10(*peak / meanPower(wave));
}

// Two bits a symbol, by the signs of its parts.
Complexes randomSymbols(std::size_t count, std::mt19937_64& random) {
  constexpr float amplitude = std::numbers::sqrt2_v<float> / 2;
  Complexes symbols(count);
  for (Tfm32fc& symbol : symbols) {
    const std::uint64_t bits = random();
    symbol = {(bits & 1) != 0 ? amplitude : -amplitude, (bits & 2) != 0 ? amplitude : -amplitude};
  }
  return symbols;
}

std::size_t wrongBits(const Complexes& sent, const Complexes& received) {
  std::size_t wrong = 0;
  for (std::size_t i = 0; i < sent.size(); ++i) {
    wrong += (sent[i].re < 0) != (received[i].re < 0) ? 1 : 0;
    wrong += (sent[i].im < 0) != (received[i].im < 0) ? 1 : 0;
  }
  return wrong;
}

} // namespace

LinkResult transmit(const LinkSettings& settings) {
  std::mt19937_64 random(settings.seed);
  const std::size_t blocks = settings.slots * kSymbolsPerSlot;
  const Link link(settings.carriers, blocks);
  const Complexes symbols = randomSymbols(static_cast<std::size_t>(settings.carriers) * blocks, random);

  const auto start = std::chrono::steady_clock::now();
  const Complexes grid = link.spread(symbols);
  const std::chrono::duration<double, std::nano> elapsed = std::chrono::steady_clock::now() - start;

  const Complexes wave = link.modulate(grid);
  const double noisePower = meanPower(symbols) * std::pow(10.0, -settings.signalToNoise / 10);
  Complexes received = link.demodulate(throughChannel(wave, noisePower, random));
  link.equalise(received);
  Complexes despread = link.despread(received);
  return {2 * symbols.size(),
          wrongBits(symbols, despread),
          peakToAverage(wave),
          peakToAverage(link.modulate(link.unspread(symbols))),
          elapsed.count() / static_cast<double>(blocks),
          link.carriersOf(received),
          std::move(despread)};
}
