// A batch whose arguments have been checked, and what works on it.
#pragma once

#include "family.hpp"
#include "tfmgen.h"

namespace tfmgen::batch {

// One of the eighteen transforms.
struct Family {
  using Single = TfmStatus(const void* src, void* dst, std::int32_t len, std::int32_t flag);
  using ScaleOf = bool(std::int32_t flag, double& scale); // of the sample type; false for a flag that is none

  Transform transform;
  Format format;
  bool isDouble;
  Single* single;         // one frame, its elements side by side
  ScaleOf* const* scales; // of lengths from the shortest on
  int elementBytes = (isDouble ? 8 : 4) * (isComplex(transform) ? 2 : 1);
  int blockFrames = !isDouble ? 4 : isComplex(transform) ? 1 : 2; // in 16 bytes of a register
};

// Element n of frame f at first + (f * distance + n * step) elements.
template <class Byte>
struct Side {
  Byte* first;
  std::ptrdiff_t step;
  std::ptrdiff_t distance;
};

// Plain data: code for one width must not share a function with code for another.
struct Batch {
  const Family* family;
  int length; // of the transform
  std::int32_t flag;
  double scale; // of the sample type
  bool isInPlace;
  Side<const std::byte> src;
  Side<std::byte> dst;
  std::int64_t count;
};

// Transforms frames from the front with registers of so many bytes, and returns how many. What it leaves behind is
// better done by narrower registers, or frame by frame.
template <int bytes>
std::int64_t transformGroups(const Batch& batch);

// Every frame by a call of its own.
void transformSingly(const Batch& batch);

} // namespace tfmgen::batch
