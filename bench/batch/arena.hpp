// Frames for all contenders of one case.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <random>
#include <vector>

namespace bench {

enum class Family { complexForward, realForward, realInverse, hartley };
enum class Arrangement { contiguous, interleaved };

struct CaseId {
  Family family;
  int bits; // of a real number
  Arrangement arrangement;
  int count;
  int n;
};

// Arrays at a cache line, large enough for spectra in CCS format of either arrangement.
template <class T>
class Arena {
public:
  Arena(int n, int count) : size_(static_cast<std::size_t>(2 * n + 2) * static_cast<std::size_t>(count)) {
    std::mt19937 random(1); // NOLINT(cert-msc32-c, cert-msc51-cpp): the same samples in every run
    std::uniform_real_distribution<T> uniform(-1, 1);
    for (std::size_t i = 0; i < size_; ++i) {
      original_.push_back(uniform(random));
    }
    src_ = allocate();
    dst_ = allocate();
    restore();
    std::copy(original_.begin(), original_.end(), dst_.get());
  }

  [[nodiscard]] T* src() const { return src_.get(); }
  [[nodiscard]] T* dst() const { return dst_.get(); }
  // Some inverse transforms of peers overwrite their source.
  void restore() const { std::copy(original_.begin(), original_.end(), src_.get()); }

private:
  static constexpr std::align_val_t kLine{64};
  struct Free {
    void operator()(T* p) const { ::operator delete[](p, kLine); }
  };
  using Pointer = std::unique_ptr<T[], Free>; // NOLINT(modernize-avoid-c-arrays)

  [[nodiscard]] Pointer allocate() const { return Pointer(new (kLine) T[size_]); }

  std::size_t size_;
  std::vector<T> original_;
  Pointer src_;
  Pointer dst_;
};

} // namespace bench
