#pragma once

#include <string>
#include <vector>

struct Recording {
  int sampleRate; // Hz
  std::vector<float> samples;
};

// Reads any file that libsndfile knows, the mean of its channels. Throws std::runtime_error, with the file's name in
// the message, when the file cannot be read, holds no sample, or a sample that is not a finite number.
Recording readRecording(const std::string& path);
