// The definition, for 2 and the odd primes up to 11. Sums and differences of mirrored samples halve the products: with
// a[m] = x[m] + x[p-m] and b[m] = x[m] - x[p-m],
//   Re X[k] = x[0] + sum of a[m] cos(2 pi m k / p),   Im X[k] = -(sum of b[m] sin(2 pi m k / p)).
#include "analysis.hpp"
#include "number/roots.hpp"

#include <algorithm>
#include <array>

namespace tfmgen::transform {

namespace {

// The differences that real kernels take as x[p-m] - x[m].
bool isReversed(std::size_t p, std::size_t m) {
  constexpr std::array<std::array<std::size_t, 3>, 5> kReversed{{{5, 2, 0}, {7, 2, 3}, {11, 2, 5}}};
  return std::ranges::any_of(kReversed, [&](const auto& row) { return row[0] == p && (row[1] == m || row[2] == m); });
}

// x0 + sum of terms, with x0 in the place that the style gives it.
Ref cosineSum(Analysis& a, Ref x0, std::vector<graph::Term> terms) {
  const bool startsPositive = terms.front().factor > 0;
  auto place = terms.begin();
  if (startsPositive) {
    place = a.style == DirectStyle::realSamples ? terms.end() : terms.begin() + 1;
  }
  terms.insert(place, {1, x0});
  return a.g.sumOfProducts(terms);
}

// minus the sum of the sine terms. Real kernels write the sum of the negated terms.
Product negatedSineSum(Analysis& a, std::vector<graph::Term> terms) {
  if (terms.size() == 1) {
    return {-terms[0].factor, terms[0].value};
  }
  if (a.style == DirectStyle::complexSamples) {
    return -a.g.sumOfProducts(terms);
  }
  for (graph::Term& term : terms) {
    term.factor = -term.factor;
  }
  return a.g.sumOfProducts(terms);
}

} // namespace

Bins analyseForm(Analysis& a, const plan::Direct& form, const Samples& x, long u) {
  Graph& g = a.g;
  const int p = form.length;
  if (p == 2) {
    return {{g.add(x[0], x[1]), {}}, {g.subtract(x[0], x[1]), {}}};
  }
  const std::size_t half = x.size() / 2;
  Samples sums;
  Samples differences;
  for (std::size_t m = 1; m <= half; ++m) {
    const Ref mirrored = x[x.size() - m];
    sums.push_back(g.add(x[m], mirrored));
    const bool reversed = a.style == DirectStyle::realSamples && isReversed(x.size(), m);
    differences.push_back(reversed ? -g.subtract(mirrored, x[m]) : g.subtract(x[m], mirrored));
  }
  Bins out{{g.add(x[0], g.sum(sums)), {}}};
  for (std::size_t k = 1; k <= half; ++k) {
    std::vector<graph::Term> cosines;
    std::vector<graph::Term> sines;
    for (std::size_t m = 1; m <= half; ++m) {
      const auto [c, s] = number::root(u * static_cast<long>(m * k), p);
      cosines.push_back({c, sums[m - 1]});
      sines.push_back({s, differences[m - 1]});
    }
    out.push_back({cosineSum(a, x[0], cosines), negatedSineSum(a, sines)});
  }
  return out;
}

} // namespace tfmgen::transform
