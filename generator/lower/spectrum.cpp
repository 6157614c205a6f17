#include "spectrum.hpp"

namespace tfmgen::lower {

int elementOf(Format format, int i, int length) {
  const bool isLast = i == length - 1 && length % 2 == 0; // R(n/2)
  switch (format) {
  case Format::ccs: return i == 0 ? 0 : i + 1;
  case Format::perm:
    if (length % 2 == 0 && i > 0) {
      return isLast ? 1 : i + 1;
    }
    break;
  case Format::plain:
  case Format::pack: break;
  }
  return i;
}

int elementCount(Format format, int length) {
  return format == Format::ccs ? 2 * (length / 2 + 1) : length;
}

std::vector<int> zeroElements(Format format, int length) {
  if (format != Format::ccs) {
    return {};
  }
  return length % 2 == 0 ? std::vector{1, length + 1} : std::vector{1};
}

} // namespace tfmgen::lower
