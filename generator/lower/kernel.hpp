// A kernel in terms of registers and memory, ready for an order and for text.
#pragma once

#include "graph/graph.hpp"

#include <vector>

namespace tfmgen::lower {

// Which elements of a caller's array one register takes, and by which accesses.
struct Access {
  enum class Width {
    whole,  // one access for the whole register: element `first`, or the adjacent elements `first` and `second`
    halves, // one access for each half: element `first` and element `second`
    low,    // one access for the low half: element `first`
  };
  Width width;
  int first;
  int second = 0;
  constexpr bool operator==(const Access&) const = default;
};

struct Store {
  graph::Ref value;
  Access to;
};

struct Kernel {
  graph::Graph graph;
  std::vector<Access> loads; // by the tag of the load
  std::vector<Store> stores;
  graph::NodeId lastStep;     // nodes from here on belong to the last step of an output
  bool storesInOrder = false; // whether the stores keep their order

  [[nodiscard]] std::vector<graph::Ref> outputs() const {
    std::vector<graph::Ref> refs;
    for (const Store& store : stores) {
      refs.push_back(store.value);
    }
    return refs;
  }
};

} // namespace tfmgen::lower
