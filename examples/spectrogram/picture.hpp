#pragma once

#include "common/canvas.hpp"
#include "spectrum.hpp"

#include <string>

inline constexpr PictureSize kPicture{1200, 620};
inline constexpr Rectangle kPlot{90, 50, 980, 500}; // where power is drawn within the picture

// Writes a PNG with time from left to right, frequency from bottom to top and power as colour, 80 dB from black to
// light yellow. Bins and frames become blocks of pixels; where there are more frames than columns, a column shows the
// mean of several. A file that was there is replaced only by a complete picture. Throws std::runtime_error.
void writePicture(const Spectrogram& spectrogram, int sampleRate, const std::string& title, const std::string& path);
