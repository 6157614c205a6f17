// What the routines for batches are told apart by.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tfmgen::batch {

inline constexpr int kShortest = 2;
inline constexpr int kLongest = 64;

enum class Transform { complexForward, complexInverse, realForward, realInverse, hartley };

// Of the half spectrum of a real signal; `plain` where there is none.
enum class Format { plain, ccs, pack, perm };

constexpr bool isComplex(Transform transform) {
  return transform == Transform::complexForward || transform == Transform::complexInverse;
}

// Up to this length, three frames in one piece are faster one by one than in a group of four: as measured.
constexpr int longestSingly(Transform transform) {
  return isComplex(transform) ? 24 : 32;
}

// Elements of a half spectrum of n samples.
constexpr int spectrumLength(Format format, int n) {
  return format == Format::ccs ? n / 2 * 2 + 2 : n;
}

// Of odd lengths no bin is its own mirror but the first: Perm is Pack.
constexpr Format storedAs(Format format, int n) {
  return format == Format::perm && n % 2 != 0 ? Format::pack : format;
}

constexpr int sourceLength(Transform transform, Format format, int n) {
  return transform == Transform::realInverse ? spectrumLength(format, n) : n;
}

constexpr int destinationLength(Transform transform, Format format, int n) {
  return transform == Transform::realForward ? spectrumLength(format, n) : n;
}

} // namespace tfmgen::batch
