// An MDCT round trip on a WAV file: analysis, an optional quantisation of the coefficients, synthesis. Prints the
// signal-to-noise ratio and the time taken, and writes the result as WAV.
#include "common/parse_number.hpp"
#include "common/progress.hpp"
#include "common/replace_file.hpp"
#include "lapped.hpp"

#include <sndfile.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr const char* kUsage = "usage: mdct [--frame N] [--quantise STEP] INPUT.wav OUTPUT.wav\n"
                               "  --frame N        frame length, a power of two (default 1024)\n"
                               "  --quantise STEP  round coefficients to multiples of STEP; full scale is 1\n";

struct Arguments {
  std::int32_t frame = 1024;
  double step = 0; // 0: no quantisation
  std::string input;
  std::string output;
};

template <class Number>
Number valueOf(std::string_view option, std::string_view text) {
  const auto value = parseNumber<Number>(text);
  if (!value) {
    throw std::invalid_argument(std::string(option) + ": '" + std::string(text) + "' is not a number");
  }
  return *value;
}

Arguments parseArguments(const std::vector<std::string_view>& words) {
  Arguments arguments;
  std::vector<std::string> files;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    if (!word.starts_with("--")) {
      files.emplace_back(word);
      continue;
    }
    if (i + 1 == words.size()) {
      throw std::invalid_argument(std::string(word) + " takes a value");
    }
    if (word == "--frame") {
      arguments.frame = valueOf<std::int32_t>(word, words[++i]);
    } else if (word == "--quantise") {
      arguments.step = valueOf<double>(word, words[++i]);
      if (!(arguments.step > 0) || !std::isfinite(arguments.step)) {
        throw std::invalid_argument("--quantise: the step must be positive");
      }
    } else {
      throw std::invalid_argument("unknown option " + std::string(word));
    }
  }
  if (files.size() != 2) {
    throw std::invalid_argument("an input and an output file are needed");
  }
  arguments.input = files[0];
  arguments.output = files[1];
  return arguments;
}

using SoundFile = std::unique_ptr<SNDFILE, int (*)(SNDFILE*)>;

SoundFile open(const std::string& path, int mode, SF_INFO& info) {
  SoundFile file(sf_open(path.c_str(), mode, &info), sf_close);
  if (!file) {
    throw std::runtime_error(path + ": " + sf_strerror(nullptr));
  }
  return file;
}

struct Sound {
  SF_INFO info{};
  std::vector<double> samples; // channels interleaved, full scale 1
};

Sound read(const std::string& path) {
  Sound sound;
  const SoundFile file = open(path, SFM_READ, sound.info);
  sound.samples.resize(static_cast<std::size_t>(sound.info.frames * sound.info.channels));
  if (sound.info.frames == 0 ||
      sf_readf_double(file.get(), sound.samples.data(), sound.info.frames) != sound.info.frames) {
    throw std::runtime_error(path + ": no samples, or fewer than its header tells");
  }
  return sound;
}

void write(const std::string& path, const Sound& sound) {
  SF_INFO info = sound.info;
  info.format = SF_FORMAT_WAV | (info.format & SF_FORMAT_SUBMASK);
  if (sf_format_check(&info) == 0) {
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_24;
  }
  replaceFile(path, [&](const std::string& part) {
    SoundFile file = open(part, SFM_WRITE, info);
    sf_command(file.get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    if (sf_writef_double(file.get(), sound.samples.data(), sound.info.frames) != sound.info.frames ||
        sf_close(file.release()) != 0) {
      throw std::runtime_error(path + ": cannot be written");
    }
  });
}

// One channel, there and back.
void roundTrip(std::vector<double>& channel, const Arguments& arguments, LappedTransform& transform) {
  const auto n = static_cast<std::size_t>(arguments.frame);
  const std::size_t frames = (channel.size() + n - 1) / n + 1;
  std::vector<double> padded((frames + 1) * n); // a frame in front: every sample lies in two blocks
  std::copy(channel.begin(), channel.end(), padded.begin() + static_cast<std::ptrdiff_t>(n));
  std::vector<double> result(padded.size());
  std::vector<double> coefficients(n);
  Progress progress("transforming", frames);
  for (std::size_t start = 0; start < frames * n; start += n) {
    progress.reach(start / n);
    transform.analyse(&padded[start], coefficients.data());
    if (arguments.step > 0) {
      for (double& value : coefficients) {
        value = std::nearbyint(value / arguments.step) * arguments.step;
      }
    }
    transform.synthesise(coefficients.data(), &result[start]);
  }
  std::copy_n(result.begin() + static_cast<std::ptrdiff_t>(n), channel.size(), channel.begin());
}

void roundTrip(Sound& sound, const Arguments& arguments) {
  LappedTransform transform(arguments.frame);
  const auto channels = static_cast<std::size_t>(sound.info.channels);
  std::vector<double> channel(static_cast<std::size_t>(sound.info.frames));
  for (std::size_t c = 0; c < channels; ++c) {
    for (std::size_t i = 0; i < channel.size(); ++i) {
      channel[i] = sound.samples[i * channels + c];
    }
    roundTrip(channel, arguments, transform);
    for (std::size_t i = 0; i < channel.size(); ++i) {
      sound.samples[i * channels + c] = channel[i];
    }
  }
}

// In decibels; infinite for equal sounds.
double signalToNoise(const std::vector<double>& signal, const std::vector<double>& result) {
  double power = 0;
  double noise = 0;
  for (std::size_t i = 0; i < signal.size(); ++i) {
    power += signal[i] * signal[i];
    noise += (result[i] - signal[i]) * (result[i] - signal[i]);
  }
  return 10 * std::log10(power / noise);
}

void run(const Arguments& arguments) {
  const Sound original = read(arguments.input);
  Sound result = original;
  const auto start = std::chrono::steady_clock::now();
  roundTrip(result, arguments);
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  write(arguments.output, result);
  const double seconds = static_cast<double>(original.info.frames) / original.info.samplerate;
  std::printf("frames of %d, signal-to-noise ratio %.1f dB, %.2f ms for %.2f s of sound\n", arguments.frame,
              signalToNoise(original.samples, result.samples), 1000 * time.count(), seconds);
}

} // namespace

int main(int argc, char** argv) {
  try {
    run(parseArguments({argv + 1, argv + argc}));
  } catch (const std::invalid_argument& error) {
    std::fprintf(stderr, "mdct: %s\n%s", error.what(), kUsage);
    return 2;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mdct: %s\n", error.what());
    return 1;
  }
  return 0;
}
