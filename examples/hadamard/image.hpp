#pragma once

#include <cstddef>
#include <string>
#include <vector>

// Grey levels from 0 (black) to 1 (white), row by row from the top.
struct Image {
  std::size_t width = 0;
  std::size_t height = 0;
  std::vector<float> pixels;
};

// Reads a PNG and turns its colours to grey. Throws std::runtime_error.
Image readPng(const std::string& path);

// The middle square of the image, in size x size pixels, each the mean of what it covers. Throws std::runtime_error
// when the square has fewer pixels than that.
Image squareOf(const Image& image, std::size_t size);
