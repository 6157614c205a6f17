// Arrays of samples for peers that want them aligned.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace bench {

// 64-byte aligned. A small signal, so that repeated calls stay finite.
template <class T>
class Samples {
public:
  explicit Samples(int count)
      : count_(static_cast<std::size_t>(count)), data_(static_cast<T*>(std::aligned_alloc(kAlignment, bytes()))) {
    fill();
  }
  [[nodiscard]] T* get() const { return data_.get(); }
  void fill() const {
    for (std::size_t i = 0; i < count_; ++i) {
      data_.get()[i] = static_cast<T>(static_cast<int>(i % 17) - 8) / 16;
    }
  }

private:
  static constexpr std::size_t kAlignment = 64;
  [[nodiscard]] std::size_t bytes() const { return (count_ * sizeof(T) + kAlignment - 1) / kAlignment * kAlignment; }

  struct Free {
    void operator()(T* block) const { std::free(block); }
  };
  std::size_t count_;
  std::unique_ptr<T, Free> data_;
};

} // namespace bench
