// Arrays beside inaccessible pages: the processor reports the first byte read or written outside.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) (static_cast<void>(address), static_cast<void>(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) (static_cast<void>(address), static_cast<void>(size))
#endif

namespace tfmgen::test {

enum class Edge { start, end };

// One accessible page between two inaccessible ones. In a sanitizer build the rest of the page is closed as well.
class GuardedPage {
public:
  GuardedPage() : size_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
    void* const block = mmap(nullptr, 3 * size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    page_ = static_cast<std::byte*>(block) + size_;
    if (block == MAP_FAILED || mprotect(page_, size_, PROT_READ | PROT_WRITE) != 0) {
      std::perror("guarded page");
      std::abort();
    }
  }
  ~GuardedPage() {
    ASAN_UNPOISON_MEMORY_REGION(page_, size_);
    munmap(page_ - size_, 3 * size_);
  }
  GuardedPage(const GuardedPage&) = delete;
  GuardedPage& operator=(const GuardedPage&) = delete;

  // An array of `bytes` bytes, `displacement` bytes away from the inaccessible page in front of it or behind it. It
  // takes the place of the array asked for before.
  std::byte* array(std::size_t bytes, Edge edge, std::size_t displacement) {
    const std::size_t offset = edge == Edge::start ? displacement : size_ - bytes - displacement;
    ASAN_POISON_MEMORY_REGION(page_, size_);
    ASAN_UNPOISON_MEMORY_REGION(page_ + offset, bytes);
    return page_ + offset;
  }

private:
  std::size_t size_;
  std::byte* page_ = nullptr;
};

} // namespace tfmgen::test
