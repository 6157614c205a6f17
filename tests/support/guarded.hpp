// Arrays beside inaccessible pages: the processor reports the first byte read or written outside.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <utility>

#ifdef __has_feature // of clang
#define TFMGEN_TEST_HAS_FEATURE(feature) __has_feature(feature)
#else
#define TFMGEN_TEST_HAS_FEATURE(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || TFMGEN_TEST_HAS_FEATURE(address_sanitizer)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) (static_cast<void>(address), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) (static_cast<void>(address), static_cast<void>(size))
#endif

namespace tfmgen::test {

enum class Edge { start, end };

// Accessible pages between two inaccessible ones, room for `room` bytes. In the beginning all bits are set: reals are
// NaNs.
class GuardedMemory {
public:
  explicit GuardedMemory(std::size_t room)
      : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))), size_((room + page_ - 1) / page_ * page_) {
    void* const map = mmap(nullptr, size_ + 2 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (map == MAP_FAILED) {
      std::perror("guarded memory");
      std::abort();
    }
    begin_ = static_cast<std::byte*>(map) + page_;
    protect(PROT_READ | PROT_WRITE);
    std::memset(begin_, 0xFF, size_);
  }
  ~GuardedMemory() {
    if (begin_ != nullptr) {
      ASAN_UNPOISON_MEMORY_REGION(begin_, size_);
      munmap(begin_ - page_, size_ + 2 * page_);
    }
  }
  GuardedMemory(GuardedMemory&& other) noexcept
      : page_(other.page_), size_(other.size_), begin_(std::exchange(other.begin_, nullptr)) {}
  GuardedMemory(const GuardedMemory&) = delete;
  GuardedMemory& operator=(const GuardedMemory&) = delete;
  GuardedMemory& operator=(GuardedMemory&&) = delete;

  // An array of `bytes` bytes, `displacement` bytes away from the inaccessible page in front of it or behind it. It
  // takes the place of the array asked for before. In a sanitizer build all around it is closed as well.
  template <class Element = std::byte>
  Element* array(std::size_t bytes, Edge edge, std::size_t displacement = 0) {
    const std::size_t offset = edge == Edge::start ? displacement : size_ - bytes - displacement;
    ASAN_POISON_MEMORY_REGION(begin_, size_);
    ASAN_UNPOISON_MEMORY_REGION(begin_ + offset, bytes);
    return reinterpret_cast<Element*>(begin_ + offset);
  }

  // All of the memory, nothing of it closed any more.
  std::span<std::byte> all() {
    ASAN_UNPOISON_MEMORY_REGION(begin_, size_);
    return {begin_, size_};
  }

  void makeReadOnly() { protect(PROT_READ); }

private:
  void protect(int access) {
    if (size_ != 0 && mprotect(begin_, size_, access) != 0) {
      std::perror("guarded memory");
      std::abort();
    }
  }

  std::size_t page_;
  std::size_t size_; // whole pages
  std::byte* begin_ = nullptr;
};

} // namespace tfmgen::test
