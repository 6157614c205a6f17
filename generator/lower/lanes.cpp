#include "lanes.hpp"

#include <algorithm>

namespace tfmgen::lower {

namespace {

// A register and two of its lanes.
struct Half {
  Ref value;
  int first;
  int second;
};

Half gatherHalf(Graph& g, std::span<const Lane> wanted) {
  const auto [a, first] = wanted.front();
  const auto [b, second] = wanted.back();
  if (a == b) {
    return {a, first, second};
  }
  if (first == second) { // as in a transposition: the other lane of this half serves the next column
    const Ref pairs = g.shuffle(a, b, first < 2 ? kUnpackLow : kUnpackHigh);
    return {pairs, 2 * (first % 2), 2 * (first % 2) + 1};
  }
  const int i = first & 2;
  const int j = second & 2;
  return {g.shuffle(a, b, selector(i, i + 1, j, j + 1)), first % 2, 2 + second % 2};
}

} // namespace

Ref gather(Graph& g, std::span<const Lane> wanted) {
  const Ref only = wanted.front().value;
  const bool isInPlace =
      std::ranges::all_of(wanted, [&, lane = 0](const Lane& w) mutable { return w.value == only && w.lane == lane++; });
  if (isInPlace) {
    return only;
  }
  const Half low = gatherHalf(g, wanted.first(std::min(wanted.size(), kLanes / 2)));
  if (wanted.size() > kLanes / 2) {
    const Half high = gatherHalf(g, wanted.subspan(kLanes / 2));
    return g.shuffle(low.value, high.value, selector(low.first, low.second, high.first, high.second));
  }
  if (low.first == 0 && low.second == 1) {
    return low.value;
  }
  return g.shuffle(low.value, low.value, selector(low.first, low.second, low.first, low.second));
}

Elements::Elements(const std::vector<Packed>& registers) {
  for (const Packed& packed : registers) {
    put(packed);
  }
}

void Elements::put(const Packed& packed) {
  for (std::size_t lane = 0; lane < packed.elements.size(); ++lane) {
    places_[packed.elements[lane]] = {packed.value, static_cast<int>(lane)};
  }
}

Complex Elements::gather(Graph& g, std::span<const int> elements) const {
  std::vector<Lane> re;
  std::vector<Lane> im;
  for (const int element : elements) {
    const auto found = places_.find(element);
    const Place place = found != places_.end() ? found->second : Place{{}, 0};
    re.push_back({place.value.re, place.lane});
    im.push_back({place.value.im, place.lane});
  }
  const Ref real = lower::gather(g, re);
  return {real, lower::gather(g, im)};
}

Complex multiply(Graph& g, std::span<const number::Complex> factors, const Complex& z) {
  transform::LaneFactors lanes{};
  std::ranges::transform(factors, lanes.re.begin(), &number::Complex::re);
  std::ranges::transform(factors, lanes.im.begin(), &number::Complex::im);
  return transform::multiply(g, lanes, z);
}

std::vector<std::vector<int>> laneGroups(int count) {
  std::vector<std::vector<int>> groups;
  for (int i = 0; i < count; ++i) {
    if (i % static_cast<int>(kLanes) == 0) {
      groups.emplace_back();
    }
    groups.back().push_back(i);
  }
  return groups;
}

} // namespace tfmgen::lower
