// Indices of transforms are signed, as in n - k or -k modulo n; those of containers are not.
#pragma once

#include <concepts>
#include <iterator>
#include <ranges>
#include <stdexcept>

namespace tfmgen::number {

// Element k of a range. Throws std::out_of_range where there is none.
template <std::ranges::random_access_range Range>
constexpr decltype(auto) at(Range&& range, std::signed_integral auto k) {
  if (k < 0 || k >= std::ranges::ssize(range)) {
    throw std::out_of_range("no element of this index");
  }
  return std::ranges::begin(range)[k];
}

} // namespace tfmgen::number
