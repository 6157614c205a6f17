#pragma once

#include "common/write_png.hpp"
#include "spectrum.hpp"

#include <string>

// Writes a PNG with time from left to right, frequency from bottom to top and power as colour, 80 dB from black to
// light yellow. Bins and frames become blocks of pixels; where there are more frames than columns, a column shows the
// mean of several. A file that was there is replaced only by a complete picture. Throws std::runtime_error.
PictureSize writePicture(const Spectrogram& spectrogram, const std::string& path);
