// Frames and rows between inaccessible pages: nothing outside them is read or written.
#include "cases.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

namespace tfmgen::test {
namespace {

// Pages between inaccessible ones.
class Pages {
public:
  explicit Pages(std::size_t count)
      : page_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))), size_((2 * count + 1) * page_) {
    void* const map = mmap(nullptr, size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (map == MAP_FAILED) {
      std::abort();
    }
    begin_ = static_cast<std::byte*>(map);
    for (std::size_t i = 0; i < count; ++i) {
      if (mprotect(at(i), page_, PROT_READ | PROT_WRITE) != 0) {
        std::abort();
      }
    }
  }
  ~Pages() { munmap(begin_, size_); }
  Pages(const Pages&) = delete;
  Pages& operator=(const Pages&) = delete;

  // `bytes` bytes at the beginning or at the end of page i.
  [[nodiscard]] std::byte* piece(std::size_t i, std::size_t bytes, bool atEnd) const {
    return at(i) + (atEnd ? page_ - bytes : 0);
  }
  [[nodiscard]] std::size_t distance() const { return 2 * page_; }

private:
  [[nodiscard]] std::byte* at(std::size_t i) const { return begin_ + (2 * i + 1) * page_; }

  std::size_t page_;
  std::size_t size_;
  std::byte* begin_;
};

class BatchMemory : public ::testing::TestWithParam<bool> {};

TEST_P(BatchMemory, FramesOnPagesOfTheirOwn) {
  constexpr std::size_t frames = 37;
  const bool atEnd = GetParam();
  const Pages sources(frames);
  const Pages destinations(frames);
  for (const BatchFamily& family : batchFamilies()) {
    const Family& single = family.single;
    const TfmbLayout layout{1, static_cast<std::int64_t>(sources.distance() / single.elementBytes())};
    for (int n = kShortest; n <= kLongest; ++n) {
      std::vector<std::byte> frame(family.sourceLength(n) * single.elementBytes());
      std::vector<std::byte> result(family.destinationLength(n) * single.elementBytes());
      Random random(4);
      std::vector<std::vector<std::byte>> expected;
      for (std::size_t f = 0; f < frames; ++f) {
        fill(frame, single.realBytes, random, Numbers::uniform);
        std::copy(frame.begin(), frame.end(), sources.piece(f, frame.size(), atEnd));
        single.general(frame.data(), result.data(), n, TFM_DIV_BY_SQRTN);
        expected.push_back(result);
      }
      for (const int bytes : widths()) {
        for (const std::int64_t count : {std::int64_t{13}, static_cast<std::int64_t>(frames)}) {
          ASSERT_EQ(batch::call(family.internal, sources.piece(0, frame.size(), atEnd), layout,
                                destinations.piece(0, result.size(), atEnd), layout, n, count, TFM_DIV_BY_SQRTN, bytes),
                    tfmStsOk);
        }
        for (std::size_t f = 0; f < frames; ++f) {
          ASSERT_TRUE(sameBits(expected[f].data(), destinations.piece(f, result.size(), atEnd), result.size(),
                               single.realBytes))
              << family.name << ", length " << n << ", frame " << f << ", registers of " << bytes << " bytes";
        }
      }
    }
  }
}

// What is written is a matter of other tests; here an access outside ends the program.
TEST_P(BatchMemory, RowsOnPagesOfTheirOwn) {
  constexpr std::size_t rows = kLongest + 2;
  const Pages sources(rows);
  const Pages destinations(rows);
  for (const BatchFamily& family : batchFamilies()) {
    const std::size_t elementBytes = family.single.elementBytes();
    const TfmbLayout layout{static_cast<std::int64_t>(sources.distance() / elementBytes), 1};
    for (const std::size_t count : {std::size_t{5}, std::size_t{19}, std::size_t{37}}) {
      const std::byte* const src = sources.piece(0, count * elementBytes, GetParam());
      std::byte* const dst = destinations.piece(0, count * elementBytes, GetParam());
      for (int n = kShortest; n <= kLongest; ++n) {
        for (const int bytes : widths()) {
          ASSERT_EQ(batch::call(family.internal, src, layout, dst, layout, n, static_cast<std::int64_t>(count),
                                TFM_NO_DIV, bytes),
                    tfmStsOk);
        }
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(PageEdge, BatchMemory, ::testing::Bool(),
                         [](const auto& edge) { return edge.param ? "End" : "Beginning"; });

} // namespace
} // namespace tfmgen::test
