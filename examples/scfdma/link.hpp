#pragma once

#include "tfmbatch.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// A radio link by single-carrier frequency-division multiple access, which spreads every symbol over all carriers of a
// resource block by a DFT before they become a wave: the wave's power varies far less than that of plain OFDM, which a
// battery-powered transmitter likes.
struct LinkSettings {
  int carriers; // of the resource block, at most 64
  std::size_t slots;
  double signalToNoise; // dB
  std::uint64_t seed;
};

struct LinkResult {
  std::size_t bits;
  std::size_t errors;
  double peakToAverage;          // of the wave's power, dB, exceeded by a thousandth of its samples
  double peakToAverageUnspread;  // the same without the DFT
  double nanoseconds;            // to spread the symbols of one block
  std::vector<Tfm32fc> received; // carriers behind the channel, equalised
  std::vector<Tfm32fc> despread; // the symbols that come out of them
};

// Sends random bits as QPSK symbols over a channel with echoes and noise. Throws std::runtime_error where there is no
// transform of so many carriers.
LinkResult transmit(const LinkSettings& settings);
