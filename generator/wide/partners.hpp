// Which lanes of a kernel are the two parts of one complex number.
#pragma once

#include "lanes.hpp"

#include <optional>
#include <vector>

namespace tfmgen::wide {

// The other part of a lane. Every value of a complex transform is a part of a complex-linear function of the input:
// when the input is multiplied by i, a real part becomes minus the imaginary part of the same function. So the parts
// are found by evaluating the kernel on some input and on i times that input, whatever its plan is.
class Partners {
public:
  explicit Partners(const Lanes& lanes);

  // The node whose lane l is the other part of lane l of `node`; the node itself where its lanes 2l and 2l+1 are the
  // parts of a number. None where there is neither.
  [[nodiscard]] std::optional<int> node(int node) const { return number::at(partners_, node); }
  // Sign apart.
  [[nodiscard]] std::optional<Lane> lane(const Lane& lane) const;

private:
  std::vector<std::optional<int>> partners_;
};

} // namespace tfmgen::wide
