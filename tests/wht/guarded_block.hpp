// Blocks of any size with an inaccessible page on either side.
#pragma once

#include "guarded.hpp"

#include <cstdint>
#include <cstring>
#include <utility>

namespace tfmgen::test {

class GuardedBlock {
public:
  // `bytes` bytes that begin or end at an inaccessible page, `displacement` bytes away from it. All bits are set:
  // floating- point numbers in it are NaNs.
  GuardedBlock(std::size_t bytes, Edge edge, std::size_t displacement = 0)
      : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
        inner_((bytes + displacement + page_ - 1) / page_ * page_) {
    void* const map = mmap(nullptr, inner_ + 2 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (map == MAP_FAILED) {
      std::perror("guarded block");
      std::abort();
    }
    map_ = static_cast<std::byte*>(map);
    if (inner_ != 0 && mprotect(map_ + page_, inner_, PROT_READ | PROT_WRITE) != 0) {
      std::perror("guarded block");
      std::abort();
    }
    begin_ = map_ + page_ + (edge == Edge::start ? displacement : inner_ - bytes - displacement);
    std::memset(begin_, 0xFF, bytes);
  }
  ~GuardedBlock() {
    if (map_ != nullptr) {
      munmap(map_, inner_ + 2 * page_);
    }
  }
  GuardedBlock(GuardedBlock&& other) noexcept
      : page_(other.page_), inner_(other.inner_), map_(std::exchange(other.map_, nullptr)), begin_(other.begin_) {}
  GuardedBlock(const GuardedBlock&) = delete;
  GuardedBlock& operator=(const GuardedBlock&) = delete;
  GuardedBlock& operator=(GuardedBlock&&) = delete;

  [[nodiscard]] std::byte* begin() const { return begin_; }
  template <class Real>
  [[nodiscard]] Real* array() const {
    return reinterpret_cast<Real*>(begin_);
  }

private:
  std::size_t page_;
  std::size_t inner_; // accessible bytes, whole pages
  std::byte* map_ = nullptr;
  std::byte* begin_ = nullptr;
};

} // namespace tfmgen::test
