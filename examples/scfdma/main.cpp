// Sends random bits over a noisy radio channel by SC-FDMA, in resource blocks of several sizes, and counts the errors.
//
//   scfdma PICTURE.png [SIGNAL_TO_NOISE [SLOTS]]
//
// SIGNAL_TO_NOISE in dB, 12 by default. The picture shows the carriers of the largest block before they are despread, a
// cloud, and the symbols that come out, four clear points.

#include "common/parse_number.hpp"
#include "constellation.hpp"
#include "link.hpp"

#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

constexpr int kBlockSizes[] = {12, 24, 36, 48, 60};
constexpr double kDefaultSignalToNoise = 12;
constexpr std::size_t kDefaultSlots = 100;
constexpr std::size_t kMostSlots = 100000;

double parseSignalToNoise(const std::string& text) {
  const auto value = parseNumber<double>(text);
  if (!value || !(*value >= -100 && *value <= 200)) {
    throw std::invalid_argument("not a ratio in dB: " + text);
  }
  return *value;
}

std::size_t parseSlots(const std::string& text) {
  const auto value = parseNumber<std::size_t>(text);
  if (!value || *value == 0 || *value > kMostSlots) {
    throw std::invalid_argument("not a number of slots: " + text);
  }
  return *value;
}

void run(const std::string& picture, double signalToNoise, std::size_t slots) {
  std::printf("carriers       bits   errors  error rate  peak to average (without spreading)  ns to spread a block\n");
  LinkResult result{};
  for (const int carriers : kBlockSizes) {
    result = transmit({carriers, slots, signalToNoise, 1});
    std::printf("%8d %10zu %8zu  %10.2e  %6.1f dB (%.1f dB) %34.1f\n", carriers, result.bits, result.errors,
                static_cast<double>(result.errors) / static_cast<double>(result.bits), result.peakToAverage,
                result.peakToAverageUnspread, result.nanoseconds);
  }
  writeConstellations(result.received, result.despread, picture);
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 2 || argc > 4) {
    std::cerr << "usage: scfdma PICTURE.png [SIGNAL_TO_NOISE [SLOTS]]\n";
    return 2;
  }
  try {
    run(argv[1], argc > 2 ? parseSignalToNoise(argv[2]) : kDefaultSignalToNoise,
        argc > 3 ? parseSlots(argv[3]) : kDefaultSlots);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "scfdma: " << error.what() << '\n';
    return 1;
  }
}
