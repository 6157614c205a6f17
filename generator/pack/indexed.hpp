#pragma once

#include <utility>
#include <vector>

namespace tfmgen::pack {

// A vector with whole numbers for indices, as values, operations and lanes have.
template <class T>
class Indexed {
public:
  Indexed() = default;
  explicit Indexed(int size, const T& value = {}) : items_(static_cast<std::size_t>(size), value) {}

  T& operator[](int i) { return items_[static_cast<std::size_t>(i)]; }
  const T& operator[](int i) const { return items_[static_cast<std::size_t>(i)]; }
  [[nodiscard]] int size() const { return static_cast<int>(items_.size()); }
  [[nodiscard]] bool empty() const { return items_.empty(); }
  T& back() { return items_.back(); }
  int push(T item) { // its index
    items_.push_back(std::move(item));
    return size() - 1;
  }

  auto begin() { return items_.begin(); }
  auto end() { return items_.end(); }
  [[nodiscard]] auto begin() const { return items_.begin(); }
  [[nodiscard]] auto end() const { return items_.end(); }

private:
  std::vector<T> items_;
};

} // namespace tfmgen::pack
