// Batches in C++ give every frame the bits that a call for it alone gives.
#include "bits.hpp"
#include "random.hpp"

#include <tfmbatch.hpp>

#include <gtest/gtest.h>

#include <array>
#include <complex>
#include <span>
#include <vector>

namespace {

using tfmgen::Format;
using tfmgen::Frames;
using tfmgen::Scale;
using tfmgen::Status;
using tfmgen::test::Spread;

template <class T>
class BatchInterface : public testing::Test {};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(BatchInterface, Types);

template <class T>
testing::AssertionResult same(const std::vector<T>& expected, const std::vector<T>& actual) {
  return tfmgen::test::sameBits(expected.data(), actual.data(), expected.size() * sizeof(T), sizeof(T));
}

TYPED_TEST(BatchInterface, ComplexFramesInArrays) {
  using T = TypeParam;
  using Frame = std::array<std::complex<T>, 12>;
  tfmgen::test::Random random(1);
  std::vector<Frame> in(37);
  for (Frame& frame : in) {
    for (std::complex<T>& x : frame) {
      x = {random.real<T>(Spread::uniform), random.real<T>(Spread::uniform)};
    }
  }
  std::vector<Frame> out(in.size());
  std::vector<Frame> back(in.size());
  tfmgen::dft(in, out, Scale::bySqrtN);
  tfmgen::inverseDft(std::span<const Frame>(out), std::span(back), Scale::bySqrtN);
  for (std::size_t f = 0; f < in.size(); ++f) {
    Frame expected;
    tfmgen::dft(in[f], expected, Scale::bySqrtN);
    EXPECT_TRUE(tfmgen::test::sameBits(expected.data(), out[f].data(), sizeof expected, sizeof(T))) << f;
    tfmgen::inverseDft(out[f], expected, Scale::bySqrtN);
    EXPECT_TRUE(tfmgen::test::sameBits(expected.data(), back[f].data(), sizeof expected, sizeof(T))) << f;
  }
}

template <Format format, class T>
void expectRealFrames() {
  constexpr std::size_t length = 15;
  constexpr std::size_t count = 21;
  constexpr std::size_t bins = tfmgen::spectrumLength(format, length);
  // Frames that overlap, to spectra that interleave, and back to frames one behind the other.
  std::vector<T> recording = tfmgen::test::Random(2).reals<T>(length + (count - 1) * 4, Spread::uniform);
  std::vector<T> spectra(bins * count);
  std::vector<T> back(length * count);
  std::vector<T> expectedSpectra(spectra.size());
  std::vector<T> expectedBack(back.size());
  const auto interleaved = Frames<T>::interleaved(spectra, count);
  tfmgen::realDft<format>(Frames<const T>(recording.data(), {.step = 1, .distance = 4}, length, count), interleaved);
  tfmgen::inverseRealDft<format>(interleaved, Frames<T>(back, length), Scale::inverseByN);
  for (std::size_t f = 0; f < count; ++f) {
    std::array<T, bins> bin;
    tfmgen::realDft<format, length>(std::span(recording).subspan(4 * f).template first<length>(), bin);
    for (std::size_t i = 0; i < bins; ++i) {
      expectedSpectra[i * count + f] = bin[i];
    }
    tfmgen::inverseRealDft<format>(bin, std::span(expectedBack).subspan(f * length, length), Scale::inverseByN);
  }
  EXPECT_TRUE(same(expectedSpectra, spectra));
  EXPECT_TRUE(same(expectedBack, back));
}

TYPED_TEST(BatchInterface, RealFrames) {
  expectRealFrames<Format::ccs, TypeParam>();
  expectRealFrames<Format::pack, TypeParam>();
  expectRealFrames<Format::perm, TypeParam>();
}

TYPED_TEST(BatchInterface, HartleyFramesInPlace) {
  using T = TypeParam;
  std::vector<T> x = tfmgen::test::Random(3).reals<T>(std::size_t{64} * 9, Spread::uniform);
  std::vector<T> expected(x.size());
  for (std::size_t f = 0; f < 9; ++f) {
    tfmgen::hartley(std::span(x).subspan(64 * f, 64), std::span(expected).subspan(64 * f, 64));
  }
  const Frames<T> frames(x, 64);
  tfmgen::hartley(frames, frames);
  EXPECT_TRUE(same(expected, x));
}

TEST(BatchErrors, FramesThatDoNotFit) {
  std::vector<float> x(1000);
  std::vector<float> y(1000);
  const auto frames = [](std::vector<float>& v, std::size_t length, std::size_t count) {
    return Frames<float>(std::span(v).first(length * count), length);
  };
  EXPECT_EQ(tfmgen::tryHartley(frames(x, 16, 4), frames(y, 16, 4)), Status::ok);
  EXPECT_EQ(tfmgen::tryHartley(frames(x, 16, 4), frames(y, 16, 3)), Status::badSize);
  EXPECT_EQ(tfmgen::tryHartley(frames(x, 16, 4), frames(y, 15, 4)), Status::badSize);
  EXPECT_EQ(tfmgen::tryHartley(frames(x, 65, 4), frames(y, 65, 4)), Status::badSize);
  EXPECT_EQ(tfmgen::tryRealDft<Format::ccs>(frames(x, 16, 4), frames(y, 16, 4)), Status::badSize);
  EXPECT_THROW(tfmgen::realDft<Format::pack>(frames(x, 16, 4), frames(y, 18, 4)), tfmgen::Error);
  EXPECT_EQ(tfmgen::tryHartley(frames(x, 16, 4), frames(y, 16, 4), Scale{3}), Status::badFlag);
}

} // namespace
