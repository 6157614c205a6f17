#include "recording.hpp"

#include <sndfile.h>

#include <cmath>
#include <memory>
#include <numeric>
#include <stdexcept>

Recording readRecording(const std::string& path) {
  SF_INFO info{};
  const std::unique_ptr<SNDFILE, decltype(&sf_close)> file(sf_open(path.c_str(), SFM_READ, &info), &sf_close);
  if (file == nullptr) {
    throw std::runtime_error("cannot read " + path + ": " + sf_strerror(nullptr));
  }
  // Blocks, not the length that the header tells: that of a broken file may be anything.
  constexpr sf_count_t block = 4096;
  const auto channels = static_cast<std::size_t>(info.channels);
  std::vector<float> buffer(block * channels);
  Recording recording{info.samplerate, {}};
  while (const sf_count_t frames = sf_readf_float(file.get(), buffer.data(), block)) {
    for (auto frame = buffer.cbegin(); frame != buffer.cbegin() + frames * info.channels; frame += info.channels) {
      const float sum = std::accumulate(frame, frame + info.channels, 0.0F);
      recording.samples.push_back(sum / static_cast<float>(channels));
      if (!std::isfinite(sum)) {
        throw std::runtime_error(path + " holds a sample that is not a finite number");
      }
    }
  }
  if (sf_error(file.get()) != SF_ERR_NO_ERROR) {
    throw std::runtime_error("cannot read " + path + ": " + sf_strerror(file.get()));
  }
  if (recording.samples.empty()) {
    throw std::runtime_error(path + " holds no samples");
  }
  return recording;
}
