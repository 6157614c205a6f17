#include "batch.hpp"

#include <cstring>

namespace tfmgen::batch {

namespace {

constexpr std::size_t kRoom = (kLongest + 2) * sizeof(Tfm64fc); // of any frame

// A frame of elements side by side: the caller's own, or a copy.
class Frame {
public:
  Frame(int length, std::size_t elementBytes) : length_(length), elementBytes_(elementBytes) {}

  const std::byte* gather(const std::byte* first, std::ptrdiff_t step) {
    if (step == 1) {
      return first;
    }
    for (int i = 0; i < length_; ++i) {
      std::memcpy(at(i), first + offset(i, step), elementBytes_);
    }
    return copy_;
  }

  std::byte* place(std::byte* first, std::ptrdiff_t step) { return step == 1 ? first : copy_; }

  void scatter(std::byte* first, std::ptrdiff_t step) {
    for (int i = 0; step != 1 && i < length_; ++i) {
      std::memcpy(first + offset(i, step), at(i), elementBytes_);
    }
  }

private:
  std::byte* at(int i) { return copy_ + static_cast<std::size_t>(i) * elementBytes_; }
  [[nodiscard]] std::ptrdiff_t offset(int i, std::ptrdiff_t step) const {
    return i * step * static_cast<std::ptrdiff_t>(elementBytes_);
  }

  int length_;
  std::size_t elementBytes_;
  alignas(16) std::byte copy_[kRoom];
};

} // namespace

void transformSingly(const Batch& batch) {
  const Family& family = *batch.family;
  const auto bytes = static_cast<std::ptrdiff_t>(family.elementBytes);
  Frame source(batch.src.length, family.elementBytes);
  Frame destination(batch.dst.length, family.elementBytes);
  for (std::int64_t f = 0; f < batch.count; ++f) {
    const std::byte* const src = source.gather(batch.src.first + f * batch.src.distance * bytes, batch.src.step);
    std::byte* const dst = batch.dst.first + f * batch.dst.distance * bytes;
    family.single(src, destination.place(dst, batch.dst.step), batch.length, batch.flag);
    destination.scatter(dst, batch.dst.step);
  }
}

} // namespace tfmgen::batch
