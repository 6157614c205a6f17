#include "cases.hpp"

#include <algorithm>
#include <cstring>

namespace tfmgen::test {
namespace {

constexpr std::size_t kDisplacements = 16;

// Frames in an array whose every element is laid out as its family wants it.
class Frames {
public:
  Frames(const TfmbLayout& layout, std::size_t length, std::int64_t count, std::size_t elementBytes)
      : layout_(layout), extent_(layout, length, count), elementBytes_(elementBytes) {}

  [[nodiscard]] std::size_t bytes() const { return extent_.elements() * elementBytes_; }
  [[nodiscard]] std::size_t first() const { return offset(0); }

  void gather(const std::byte* memory, std::int64_t frame, std::vector<std::byte>& elements) const {
    for (std::size_t i = 0; i * elementBytes_ < elements.size(); ++i) {
      std::memcpy(elements.data() + i * elementBytes_, memory + at(frame, i), elementBytes_);
    }
  }
  void scatter(const std::vector<std::byte>& elements, std::int64_t frame, std::byte* memory) const {
    for (std::size_t i = 0; i * elementBytes_ < elements.size(); ++i) {
      std::memcpy(memory + at(frame, i), elements.data() + i * elementBytes_, elementBytes_);
    }
  }

private:
  [[nodiscard]] std::size_t offset(std::ptrdiff_t element) const {
    return static_cast<std::size_t>(element - extent_.least) * elementBytes_;
  }
  [[nodiscard]] std::size_t at(std::int64_t frame, std::size_t i) const {
    return offset(frame * layout_.distance + static_cast<std::ptrdiff_t>(i) * layout_.step);
  }

  TfmbLayout layout_;
  Extent extent_;
  std::size_t elementBytes_;
};

// Long arrays repeat their numbers, at a distance that no layout has.
template <class Real>
void fillReals(std::vector<std::byte>& bytes, Random& random, Numbers numbers) {
  constexpr std::size_t period = 1499 * sizeof(Real);
  for (std::size_t i = 0; i < std::min(bytes.size(), period); i += sizeof(Real)) {
    const Real x = drawn<Real>(random, numbers);
    std::memcpy(bytes.data() + i, &x, sizeof x);
  }
  for (std::size_t i = period; i < bytes.size(); i += period) {
    std::memcpy(bytes.data() + i, bytes.data(), std::min(period, bytes.size() - i));
  }
}

template <class Real>
bool areNaNs(const std::byte* a, const std::byte* b) {
  Real x;
  Real y;
  std::memcpy(&x, a, sizeof x);
  std::memcpy(&y, b, sizeof y);
  return std::isnan(x) && std::isnan(y);
}

} // namespace

void fill(std::vector<std::byte>& bytes, std::size_t realBytes, Random& random, Numbers numbers) {
  realBytes == sizeof(float) ? fillReals<float>(bytes, random, numbers) : fillReals<double>(bytes, random, numbers);
}

::testing::AssertionResult sameNumbers(const std::byte* expected, const std::byte* actual, std::size_t bytes,
                                       std::size_t realBytes) {
  if (std::memcmp(expected, actual, bytes) == 0) {
    return ::testing::AssertionSuccess();
  }
  for (std::size_t i = 0; i < bytes; i += realBytes) {
    const bool areSame = std::memcmp(expected + i, actual + i, realBytes) == 0 ||
                         (realBytes == sizeof(float) ? areNaNs<float>(expected + i, actual + i)
                                                     : areNaNs<double>(expected + i, actual + i));
    if (!areSame) {
      return sameBits(expected + i, actual + i, realBytes, realBytes) << " at real number " << i / realBytes;
    }
  }
  return ::testing::AssertionSuccess();
}

std::ostream& operator<<(std::ostream& out, const BatchCase& c) {
  return out << c.family.name << ", length " << c.n << ", " << c.count << " frames from {" << c.src.step << ", "
             << c.src.distance << "} to {" << c.dst.step << ", " << c.dst.distance << "}, flag " << c.flag
             << ", numbers " << static_cast<int>(c.numbers) << (c.isInPlace ? ", in place" : "");
}

::testing::AssertionResult agrees(const BatchCase& c, int bytes, std::uint64_t seed) {
  const Family& single = c.family.single;
  const std::size_t sourceLength = c.family.sourceLength(c.n);
  const std::size_t destinationLength = c.family.destinationLength(c.n);
  const std::size_t room = c.isInPlace ? std::max(sourceLength, destinationLength) : 0;
  const Frames from(c.src, std::max(sourceLength, room), c.count, single.elementBytes());
  const Frames to(c.dst, std::max(destinationLength, room), c.count, single.elementBytes());

  Random random(seed);
  std::vector<std::byte> source(from.bytes());
  std::vector<std::byte> expected(to.bytes());
  fill(source, single.realBytes, random, c.numbers);
  fill(expected, single.realBytes, random, Numbers::uniform); // shows in gaps
  if (c.isInPlace) {
    expected = source;
  }

  const std::size_t sourceDisplacement = random.bits() % kDisplacements;
  const std::size_t displacement = random.bits() % kDisplacements;
  std::vector<std::byte> sourceMemory(source.size() + kDisplacements);
  std::vector<std::byte> memory(expected.size() + kDisplacements);
  std::byte* const src = sourceMemory.data() + sourceDisplacement;
  std::byte* const dst = memory.data() + displacement;
  std::copy(source.begin(), source.end(), src);
  std::copy(expected.begin(), expected.end(), dst);

  std::vector<std::byte> in(sourceLength * single.elementBytes());
  std::vector<std::byte> out(destinationLength * single.elementBytes());
  for (std::int64_t f = 0; f < c.count; ++f) {
    from.gather(source.data(), f, in);
    if (single.general(in.data(), out.data(), c.n, c.flag) != tfmStsOk) {
      return ::testing::AssertionFailure() << "the single call fails: " << c;
    }
    to.scatter(out, f, expected.data());
  }

  const void* const first = c.isInPlace ? dst + to.first() : src + from.first();
  const TfmStatus status =
      batch::call(c.family.internal, first, c.src, dst + to.first(), c.dst, c.n, c.count, c.flag, bytes);
  if (status != tfmStsOk) {
    return ::testing::AssertionFailure() << "status " << status << ": " << c;
  }
  const auto result = sameNumbers(expected.data(), dst, expected.size(), single.realBytes);
  return result ? result
                : ::testing::AssertionFailure() << c << ", registers of " << bytes << " bytes: " << result.message();
}

std::vector<int> widths() {
  std::vector<int> present{0};
  for (const int width : batch::kWidths) {
    if (batch::processorHas(width)) {
      present.push_back(width);
    }
  }
  return present;
}

} // namespace tfmgen::test
