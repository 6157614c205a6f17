/** @file
 * tfmbatch for C++20: the functions of tfmgen.hpp for many frames in one call.
 *
 * A batch is a range of arrays, or a Frames that tells where the frames lie:
 *
 *     std::vector<std::array<std::complex<float>, 48>> in(1000), out(1000);
 *     tfmgen::dft(in, out);
 *
 *     std::vector<float> recording(16000), spectra(999 * 66);
 *     const tfmgen::Frames<const float> frames(recording.data(), {.step = 1, .distance = 16}, 64, 997);
 *     tfmgen::realDft<tfmgen::Format::ccs>(frames, tfmgen::Frames<float>(std::span(spectra).first(997 * 66), 66));
 *
 * Every frame gets the bits that a call for it alone gives. What is allowed to overlap is told in tfmbatch.h. */
#ifndef TFMBATCH_HPP
#define TFMBATCH_HPP

#include <tfmbatch.h>
#include <tfmgen.hpp>

#include <array>

namespace tfmgen {

/** `count` frames of `length` elements of type T, const T for those that are only read: element n of frame f is
 * `data[f * layout.distance + n * layout.step]`. */
template <class T>
requires Real<std::remove_const_t<T>> || Complex<std::remove_const_t<T>>
class Frames {
public:
  constexpr Frames(T* data, TfmbLayout layout, std::size_t length, std::size_t count) noexcept
      : data_(data), layout_(layout), length_(length), count_(count) {}

  /** Frames one behind the other, as many as there is room for. */
  constexpr Frames(std::span<T> elements, std::size_t length) noexcept
      : Frames(elements.data(), {1, static_cast<std::int64_t>(length)}, length,
               length == 0 ? 0 : elements.size() / length) {}

  /** `count` interleaved frames: element n of every frame, then element n + 1. */
  static constexpr Frames interleaved(std::span<T> elements, std::size_t count) noexcept {
    return Frames(elements.data(), {static_cast<std::int64_t>(count), 1}, count == 0 ? 0 : elements.size() / count,
                  count);
  }

  [[nodiscard]] constexpr T* data() const noexcept { return data_; }
  [[nodiscard]] constexpr TfmbLayout layout() const noexcept { return layout_; }
  [[nodiscard]] constexpr std::size_t length() const noexcept { return length_; }
  [[nodiscard]] constexpr std::size_t count() const noexcept { return count_; }

private:
  T* data_;
  TfmbLayout layout_;
  std::size_t length_;
  std::size_t count_;
};

namespace detail {

template <class T>
constexpr Frames<T> framesOf(const Frames<T>& frames) noexcept {
  return frames;
}

template <class T, std::size_t N>
constexpr Frames<T> framesOf(std::span<std::array<T, N>> frames) noexcept {
  static_assert(sizeof(std::array<T, N>) == N * sizeof(T));
  return {frames.empty() ? nullptr : frames.front().data(), {1, N}, N, frames.size()};
}

template <class T, std::size_t N>
constexpr Frames<const T> framesOf(std::span<const std::array<T, N>> frames) noexcept {
  return {frames.empty() ? nullptr : frames.front().data(), {1, N}, N, frames.size()};
}

template <std::ranges::contiguous_range R>
constexpr auto framesOf(R& frames) noexcept requires requires {
  framesOf(std::span<std::remove_reference_t<std::ranges::range_reference_t<R>>>(frames));
}
{ return framesOf(std::span<std::remove_reference_t<std::ranges::range_reference_t<R>>>(frames)); }

} // namespace detail

/** Frames, or a contiguous range of std::array. */
template <class R>
concept Batch = requires(R& batch) {
  detail::framesOf(batch);
};

/** The type of a batch's elements, const where they are only read. */
template <Batch R>
using BatchElement = std::remove_pointer_t<decltype(detail::framesOf(std::declval<R&>()).data())>;

template <class Out, class In>
concept Batches = Batch<const In> && Batch<Out> && !std::is_const_v<BatchElement<Out>> &&
                  std::same_as<std::remove_const_t<BatchElement<const In>>, BatchElement<Out>>;

/** Where the transforms of a batch of complex frames can be written. */
template <class Out, class In>
concept ComplexBatchResult = Batches<Out, In> && Complex<BatchElement<Out>>;

/** Where the transforms of a batch of real frames can be written. */
template <class Out, class In>
concept RealBatchResult = Batches<Out, In> && Real<BatchElement<Out>>;

namespace detail {

/** The entry of a family for batches of samples of type T. */
template <Family family, class T>
struct BatchEntry;

#define TFMGEN_DETAIL_BATCH(kind, family, letter)                                                                      \
  template <>                                                                                                          \
  struct BatchEntry<Family::kind, float> {                                                                             \
    using Sample = Tfm32f##letter;                                                                                     \
    static constexpr auto call = tfmb##family##_32f##letter;                                                           \
  };                                                                                                                   \
  template <>                                                                                                          \
  struct BatchEntry<Family::kind, double> {                                                                            \
    using Sample = Tfm64f##letter;                                                                                     \
    static constexpr auto call = tfmb##family##_64f##letter;                                                           \
  };
TFMGEN_DETAIL_BATCH(dft, DFTFwd_CToC, c)
TFMGEN_DETAIL_BATCH(inverseDft, DFTInv_CToC, c)
TFMGEN_DETAIL_BATCH(toCcs, DFTFwd_RToCCS, )
TFMGEN_DETAIL_BATCH(toPack, DFTFwd_RToPack, )
TFMGEN_DETAIL_BATCH(toPerm, DFTFwd_RToPerm, )
TFMGEN_DETAIL_BATCH(fromCcs, DFTInv_CCSToR, )
TFMGEN_DETAIL_BATCH(fromPack, DFTInv_PackToR, )
TFMGEN_DETAIL_BATCH(fromPerm, DFTInv_PermToR, )
TFMGEN_DETAIL_BATCH(hartley, Hartley, )
#undef TFMGEN_DETAIL_BATCH

/** Transforms batches whose frames have the lengths of a signal and of its transform. */
template <Family family, class In, class Out>
Status callBatch(const In& inRange, Out& outRange, std::size_t length, bool fits, Scale scale) noexcept {
  const auto in = framesOf(inRange);
  const auto out = framesOf(outRange);
  using Element = std::remove_const_t<typename std::remove_pointer_t<decltype(out.data())>>;
  using Entry = BatchEntry<family, RealOf<Element>>;
  return Status{Entry::call(arrayOf<typename Entry::Sample>(in.data()), in.layout(),
                            arrayOf<typename Entry::Sample>(out.data()), out.layout(),
                            lengthArgument(length, fits && in.count() == out.count()),
                            static_cast<std::int64_t>(in.count()), static_cast<std::int32_t>(scale))};
}

template <Batch R>
std::size_t frameLength(R& batch) noexcept {
  return framesOf(batch).length();
}

} // namespace detail

/** The forward DFT of every frame. */
template <class In, ComplexBatchResult<In> Out>
Status tryDft(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  const std::size_t length = detail::frameLength(in);
  return detail::callBatch<detail::Family::dft>(in, out, length, detail::frameLength(out) == length, scale);
}

/** The forward DFT of every frame. */
template <class In, ComplexBatchResult<In> Out>
void dft(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryDft(in, out, scale));
}

/** The inverse DFT of every frame. */
template <class In, ComplexBatchResult<In> Out>
Status tryInverseDft(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  const std::size_t length = detail::frameLength(in);
  return detail::callBatch<detail::Family::inverseDft>(in, out, length, detail::frameLength(out) == length, scale);
}

/** The inverse DFT of every frame. */
template <class In, ComplexBatchResult<In> Out>
void inverseDft(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryInverseDft(in, out, scale));
}

/** The half spectrum of every frame of real samples, as an array of real numbers. */
template <Format format, class In, RealBatchResult<In> Out>
Status tryRealDft(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  const std::size_t length = detail::frameLength(in);
  const bool fits = detail::frameLength(out) == spectrumLength(format, length);
  return detail::callBatch<detail::forward(format)>(in, out, length, fits, scale);
}

/** The half spectrum of every frame of real samples, as an array of real numbers. */
template <Format format, class In, RealBatchResult<In> Out>
void realDft(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryRealDft<format>(in, out, scale));
}

/** The real samples of every half spectrum. */
template <Format format, class In, RealBatchResult<In> Out>
Status tryInverseRealDft(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  const std::size_t length = detail::frameLength(out);
  const bool fits = detail::frameLength(in) == spectrumLength(format, length);
  return detail::callBatch<detail::inverse(format)>(in, out, length, fits, scale);
}

/** The real samples of every half spectrum. */
template <Format format, class In, RealBatchResult<In> Out>
void inverseRealDft(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryInverseRealDft<format>(in, out, scale));
}

/** The Hartley transform of every frame. */
template <class In, RealBatchResult<In> Out>
Status tryHartley(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  const std::size_t length = detail::frameLength(in);
  return detail::callBatch<detail::Family::hartley>(in, out, length, detail::frameLength(out) == length, scale);
}

/** The Hartley transform of every frame. */
template <class In, RealBatchResult<In> Out>
void hartley(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryHartley(in, out, scale));
}

} // namespace tfmgen

#endif
