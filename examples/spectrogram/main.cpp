// Draws the spectrogram of a recording.
//
//   spectrogram RECORDING PICTURE.png [LENGTH]
//
// LENGTH is the number of samples of a frame, 2 to 64; more show finer frequencies and coarser times.

#include "common/parse_number.hpp"
#include "picture.hpp"
#include "recording.hpp"
#include "spectrum.hpp"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

constexpr int kDefaultLength = 64;

int parseLength(const std::string& text) {
  const auto length = parseNumber<int>(text);
  if (!length) {
    throw std::invalid_argument("not a length: " + text);
  }
  return *length;
}

// The bin of most power over all frames, without bin 0, which holds the recording's offset.
std::size_t strongestBin(const Spectrogram& spectrogram) {
  std::vector<double> sums(spectrogram.bins());
  for (std::size_t i = 0; i < spectrogram.power.size(); ++i) {
    sums[i % sums.size()] += static_cast<double>(spectrogram.power[i]);
  }
  return static_cast<std::size_t>(std::max_element(sums.begin() + 1, sums.end()) - sums.begin());
}

void draw(const std::string& recordingPath, const std::string& picturePath, int length) {
  const Recording recording = readRecording(recordingPath);
  std::error_code none;
  if (std::filesystem::equivalent(recordingPath, picturePath, none)) {
    throw std::invalid_argument("the picture would replace the recording");
  }
  const Spectrogram spectrogram = analyse(recording.samples, length);
  const std::string name = std::filesystem::path(recordingPath).filename().string();
  writePicture(spectrogram, recording.sampleRate,
               name + ", frames of " + std::to_string(length) + " samples, hop " + std::to_string(spectrogram.hop),
               picturePath);

  const double rate = recording.sampleRate;
  const double binWidth = rate / length;
  const std::size_t strongest = strongestBin(spectrogram);
  std::printf("%s: %zu samples at %d Hz, %.2f s\n", recordingPath.c_str(), recording.samples.size(),
              recording.sampleRate, static_cast<double>(recording.samples.size()) / rate);
  std::printf("%zu frames of length %d, hop %d, %zu bins of %.1f Hz\n", spectrogram.frames, length, spectrogram.hop,
              spectrogram.bins(), binWidth);
  std::printf("time per transform: %.1f ns in one batch, %.1f ns call by call\n", spectrogram.nanoseconds.inBatch,
              spectrogram.nanoseconds.singly);
  std::printf("strongest component: %.1f Hz (bin %zu)\n", static_cast<double>(strongest) * binWidth, strongest);
  std::printf("%s: %d x %d pixels\n", picturePath.c_str(), kPicture.width, kPicture.height);
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 3 || argc > 4) {
    std::cerr << "usage: spectrogram RECORDING PICTURE.png [LENGTH]\n";
    return 2;
  }
  try {
    draw(argv[1], argv[2], argc > 3 ? parseLength(argv[3]) : kDefaultLength);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "spectrogram: " << error.what() << '\n';
    return 1;
  }
}
