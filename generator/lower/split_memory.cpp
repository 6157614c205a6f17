#include "split_memory.hpp"

#include <algorithm>
#include <map>

namespace tfmgen::lower {

Complex SplitLoads::lanes(std::span<const int> elements) {
  graph::Graph& g = kernel_.graph;
  const Pair low = pair(elements.first(std::min<std::size_t>(elements.size(), 2)));
  const Pair high = elements.size() > 2 ? pair(elements.subspan(2)) : low;
  const auto parts = [&](int offset) {
    return g.shuffle(
        low.value, high.value,
        selector(2 * low.first + offset, 2 * low.second + offset, 2 * high.first + offset, 2 * high.second + offset));
  };
  if (elements.size() == 1 && low.first == 0) {
    return {low.value, parts(1)}; // the real part is in place
  }
  const Ref re = parts(0);
  return {re, parts(1)};
}

SplitLoads::Pair SplitLoads::pair(std::span<const int> elements) {
  const int first = elements.front();
  const int second = elements.back();
  if (grouping_ == Grouping::singles) {
    return elements.size() == 1 ? Pair{load({Access::Width::low, first}), 0, 1}
                                : Pair{load({Access::Width::halves, first, second}), 0, 1};
  }
  const Ref a = pairOf(first);
  if (elements.size() == 1) {
    const bool isAlone = first % 2 == 0 && first + 1 == length_;
    return {a, first % 2, isAlone ? 1 : first % 2};
  }
  const Ref b = pairOf(second);
  if (a == b) {
    return {a, first % 2, second % 2};
  }
  const int i = 2 * (first % 2);
  const int j = 2 * (second % 2);
  return {kernel_.graph.shuffle(a, b, selector(i, i + 1, j, j + 1)), 0, 1};
}

Ref SplitLoads::pairOf(int element) {
  const int first = element - element % 2;
  return first + 1 < length_ ? load({Access::Width::whole, first, first + 1}) : load({Access::Width::low, first});
}

Ref SplitLoads::load(const Access& from) {
  auto found = std::ranges::find(kernel_.loads, from);
  if (found == kernel_.loads.end()) {
    found = kernel_.loads.insert(found, from);
  }
  return kernel_.graph.load(static_cast<int>(found - kernel_.loads.begin()));
}

void SplitStores::put(const Packed& bins) {
  const auto& [value, elements] = bins;
  const auto middle = elements.begin() + std::min<std::ptrdiff_t>(2, std::ssize(elements));
  put(kernel_.graph.shuffle(value.re, value.im, kUnpackLow), {elements.begin(), middle});
  if (middle != elements.end()) {
    put(kernel_.graph.shuffle(value.re, value.im, kUnpackHigh), {middle, elements.end()});
  }
}

void SplitStores::put(Ref interleaved, const std::vector<int>& elements) {
  registers_.push_back({interleaved, elements});
}

void SplitStores::finish(int length, int parted) {
  if (grouping_ == Grouping::pairs) {
    finishPairs(length, parted);
    return;
  }
  for (const auto& [value, elements] : registers_) {
    const Access to = elements.size() == 1 ? Access{Access::Width::low, elements[0]}
                                           : Access{Access::Width::halves, elements[0], elements[1]};
    kernel_.stores.push_back({kernel_.graph.scale(value), to});
  }
}

void SplitStores::finishAsPut() {
  for (const auto& [value, elements] : registers_) {
    kernel_.stores.push_back({kernel_.graph.scale(value), {Access::Width::whole, elements[0], elements[1]}});
  }
  kernel_.storesInOrder = true;
}

void SplitStores::finishPairs(int length, int parted) {
  graph::Graph& g = kernel_.graph;
  std::map<int, Place> places;
  for (const auto& [value, elements] : registers_) {
    for (std::size_t half = 0; half < elements.size(); ++half) {
      places[elements[half]] = {value, static_cast<int>(half)};
    }
  }
  for (int k = 0; k < length; k += 2) {
    const auto& [a, i] = places.at(k);
    if (k + 1 == length) {
      kernel_.stores.push_back({g.scale(a), {Access::Width::low, k}});
      continue;
    }
    const auto& [b, j] = places.at(k + 1);
    const bool isPair = a == b && i == 0 && j == 1;
    const Ref value = isPair ? a : g.shuffle(a, b, selector(2 * i, 2 * i + 1, 2 * j, 2 * j + 1));
    const auto width = k == parted ? Access::Width::halves : Access::Width::whole;
    kernel_.stores.push_back({g.scale(value), {width, k, k + 1}});
  }
}

} // namespace tfmgen::lower
