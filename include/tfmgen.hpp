/** @file
 * tfmgen for C++20: the transforms of tfmgen.h over spans, arrays and vectors of float, double and std::complex.
 *
 * The header adds types to the C interface and nothing to its run time. A transform whose length is in its type is the
 * bare call of the routine of that length:
 *
 *     std::array<std::complex<float>, 53> x{}, X;
 *     tfmgen::dft(x, X);                                   // 53, from the arrays
 *     tfmgen::dft<53>(std::span(y).subspan<100, 53>(), X); // 53, named: anything else does not compile
 *
 * A length of run time is that of the arrays, which must agree:
 *
 *     std::vector<float> samples(n), spectrum(tfmgen::spectrumLength(tfmgen::Format::ccs, n));
 *     tfmgen::realDft<tfmgen::Format::ccs>(samples, spectrum);
 *
 * Every function has two forms. `dft` throws tfmgen::Error; `tryDft` is noexcept and returns the status. Nothing
 * allocates but the constructors of Dct4 and WalshHadamardBuffer. What a transform computes, which arrays may be the
 * same and what threads may share is told in tfmgen.h. */
#ifndef TFMGEN_HPP
#define TFMGEN_HPP

#include <tfmgen.h>

#include <bit>
#include <complex>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <ranges>
#include <span>
#include <type_traits>
#include <utility>

namespace tfmgen {

// ---- Statuses, scale, formats ---------------------------------------------------------------------------------------

/** What a call has come to. */
enum class [[nodiscard]] Status : std::int32_t{
    ok = tfmStsOk,
    badArgument = tfmStsBadArg, ///< the plan is none
    badSize = tfmStsBadSize, ///< there is no transform of this length, or the arrays do not have the lengths they must
    nullPointer = tfmStsNullPtr,
    badFlag = tfmStsBadFlag ///< the scale is none of the enumerators of Scale
};

/** What went wrong, in words. */
constexpr const char* describe(Status status) noexcept {
  switch (status) {
  case Status::ok: return "tfmgen: no error";
  case Status::badArgument: return "tfmgen: the plan is in no state that a plan has";
  case Status::badSize: return "tfmgen: no transform has this length, or the arrays have other lengths";
  case Status::nullPointer: return "tfmgen: an array or a plan is missing";
  case Status::badFlag: return "tfmgen: no such scale";
  }
  return "tfmgen: unknown status";
}

/** Thrown for every status but Status::ok. */
class Error : public std::exception {
public:
  explicit Error(Status status) noexcept : status_(status) {}
  [[nodiscard]] Status status() const noexcept { return status_; }
  [[nodiscard]] const char* what() const noexcept override { return describe(status_); }

private:
  Status status_;
};

/** The factor of every output. Transforms without a direction divide by N for either of the first two. */
enum class Scale : std::int32_t {
  forwardByN = TFM_DIV_FWD_BY_N, ///< 1/N in forward transforms, 1 in inverse ones
  inverseByN = TFM_DIV_INV_BY_N, ///< 1 in forward transforms, 1/N in inverse ones
  bySqrtN = TFM_DIV_BY_SQRTN,    ///< 1/sqrt(N)
  none = TFM_NO_DIV              ///< 1
};

/** How the half spectrum of a real signal lies in memory: see the table in tfmgen.h. */
enum class Format { ccs, pack, perm };

/** Real numbers that the half spectrum of `length` samples takes. */
constexpr std::size_t spectrumLength(Format format, std::size_t length) noexcept {
  return format == Format::ccs ? length / 2 * 2 + 2 : length;
}

/** The version record of the library that is loaded. */
inline const TfmLibVersion& version() noexcept {
  return *tfmgenGetLibVersion();
}

// ---- What transforms accept -----------------------------------------------------------------------------------------

/** Real samples. */
template <class T>
concept Real = std::same_as<T, float> || std::same_as<T, double>;

/** Complex samples. */
template <class T>
concept Complex = std::same_as<T, std::complex<float>> || std::same_as<T, std::complex<double>>;

/** An array of samples, one behind the other: std::array, std::vector, std::span, a built-in array. */
template <class R>
concept Signal = std::ranges::contiguous_range<R> && std::ranges::sized_range<R> &&
    (Real<std::ranges::range_value_t<R>> || Complex<std::ranges::range_value_t<R>>);

/** The type of an array's samples. */
template <Signal R>
using SampleOf = std::ranges::range_value_t<R>;

template <class R>
concept RealSignal = Signal<R> && Real<SampleOf<R>>;

template <class R>
concept ComplexSignal = Signal<R> && Complex<SampleOf<R>>;

/** A result can be written there, in samples of type T. */
template <class R, class T>
concept ResultOf = Signal<R> && std::same_as<std::remove_reference_t<std::ranges::range_reference_t<R>>, T>;

/** The length that the type of an array tells, std::dynamic_extent for that of a vector. */
template <Signal R>
inline constexpr std::size_t extentOf = decltype(std::span(std::declval<R&>()))::extent;

/** An array has this length by its type; std::dynamic_extent leaves it open. */
template <class R, std::size_t Length>
concept HasLength = Signal<R> &&(Length == std::dynamic_extent || extentOf<R> == Length);

/** Where the types of two arrays tell their lengths, they tell the same. */
template <class R, class S>
concept SameLength = Signal<R> && Signal<S> &&
    (extentOf<R> == extentOf<S> || extentOf<R> == std::dynamic_extent || extentOf<S> == std::dynamic_extent);

/** Complex and real DFT and Hartley transform have lengths from 2 to 64. */
template <std::size_t Length>
concept DftLength = Length == std::dynamic_extent || (Length >= 2 && Length <= 64);

/** The Walsh-Hadamard transform has powers of two from 2 to 8192. */
template <std::size_t Length>
concept WalshHadamardLength = Length == std::dynamic_extent ||
                              (Length >= 2 && Length <= 8192 && std::has_single_bit(Length));

/** The Walsh-Hadamard transform of lengths above 128, and of lengths that only run time tells, takes a buffer. */
template <std::size_t Length>
concept NeedsNoBuffer = Length <= 128;

namespace detail {

/** Elements of a half spectrum of `length` samples in an array of type R. */
template <Signal R, Format format>
constexpr std::size_t spectrumElements(std::size_t length) noexcept {
  return spectrumLength(format, length) / (Complex<SampleOf<R>> ? 2 : 1);
}

/** The same where the length may be left open. */
template <Signal R, Format format, std::size_t Length>
inline constexpr std::size_t spectrumExtent = Length == std::dynamic_extent ? Length
                                                                            : spectrumElements<R, format>(Length);

} // namespace detail

/** A half spectrum of real type T, or of std::complex<T> in CCS format, where bins are pairs of re and im. */
template <class R, class T, Format format>
concept SpectrumOf = Signal<R> &&
    (std::same_as<SampleOf<R>, T> || (format == Format::ccs && std::same_as<SampleOf<R>, std::complex<T>>));

/** A half spectrum of `Length` samples has its length by its type; std::dynamic_extent leaves it open. */
template <class R, Format format, std::size_t Length>
concept HasSpectrumLength = Signal<R> && HasLength<R, detail::spectrumExtent<R, format, Length>>;

/** Where the types of a half spectrum and of a signal tell their lengths, they fit. */
template <class R, class S, Format format>
concept SpectrumFits = Signal<R> && Signal<S> &&
    (extentOf<R> == std::dynamic_extent || HasSpectrumLength<R, format, extentOf<S>>);

namespace detail {

/** The family of a routine. */
enum class Family { dft, inverseDft, toCcs, toPack, toPerm, fromCcs, fromPack, fromPerm, hartley };

constexpr Family forward(Format format) {
  return format == Format::ccs ? Family::toCcs : format == Format::pack ? Family::toPack : Family::toPerm;
}
constexpr Family inverse(Format format) {
  return format == Format::ccs ? Family::fromCcs : format == Format::pack ? Family::fromPack : Family::fromPerm;
}

/** The entries of a family for samples of type T: `each[N - 2]` is that of length N. */
template <Family family, class T>
struct Entries;

// Names of C functions are made of words: no template reaches them.
#define TFMGEN_DETAIL_ENTRY(N, family, suffix, unused) tfmg##family##_##N##_##suffix,
#define TFMGEN_DETAIL_ENTRIES(kind, T, family, suffix, CSample)                                                        \
  template <>                                                                                                          \
  struct Entries<Family::kind, T> {                                                                                    \
    using Sample = CSample;                                                                                            \
    static constexpr auto general = tfmg##family##_##suffix;                                                           \
    static constexpr TfmStatus (*each[])(const CSample*, CSample*, std::int32_t) = {                                   \
        TFMGEN_FOR_EACH_LENGTH(TFMGEN_DETAIL_ENTRY, family, suffix, )};                                                \
  };
#define TFMGEN_DETAIL_FAMILY(kind, family, letter)                                                                     \
  TFMGEN_DETAIL_ENTRIES(kind, float, family, 32f##letter, Tfm32f##letter)                                              \
  TFMGEN_DETAIL_ENTRIES(kind, double, family, 64f##letter, Tfm64f##letter)
TFMGEN_DETAIL_FAMILY(dft, DFTFwd_CToC, c)
TFMGEN_DETAIL_FAMILY(inverseDft, DFTInv_CToC, c)
TFMGEN_DETAIL_FAMILY(toCcs, DFTFwd_RToCCS, )
TFMGEN_DETAIL_FAMILY(toPack, DFTFwd_RToPack, )
TFMGEN_DETAIL_FAMILY(toPerm, DFTFwd_RToPerm, )
TFMGEN_DETAIL_FAMILY(fromCcs, DFTInv_CCSToR, )
TFMGEN_DETAIL_FAMILY(fromPack, DFTInv_PackToR, )
TFMGEN_DETAIL_FAMILY(fromPerm, DFTInv_PermToR, )
TFMGEN_DETAIL_FAMILY(hartley, Hartley, )
#undef TFMGEN_DETAIL_FAMILY
#undef TFMGEN_DETAIL_ENTRIES
#undef TFMGEN_DETAIL_ENTRY

/** The entries of the Walsh-Hadamard transform: `each[m - 1]` is that of order m. */
template <Real T>
struct WalshHadamardEntries;

#define TFMGEN_DETAIL_WHT(T, suffix)                                                                                   \
  template <>                                                                                                          \
  struct WalshHadamardEntries<T> {                                                                                     \
    static constexpr auto general = tfmgWHT_##suffix;                                                                  \
    static constexpr decltype(&tfmgWHT_1_##suffix) each[] = {                                                          \
        tfmgWHT_1_##suffix,  tfmgWHT_2_##suffix,  tfmgWHT_3_##suffix, tfmgWHT_4_##suffix, tfmgWHT_5_##suffix,          \
        tfmgWHT_6_##suffix,  tfmgWHT_7_##suffix,  tfmgWHT_8_##suffix, tfmgWHT_9_##suffix, tfmgWHT_10_##suffix,         \
        tfmgWHT_11_##suffix, tfmgWHT_12_##suffix, tfmgWHT_13_##suffix};                                                \
  };
TFMGEN_DETAIL_WHT(float, 32f)
TFMGEN_DETAIL_WHT(double, 64f)
#undef TFMGEN_DETAIL_WHT

/** The entries of the DCT-IV and the longest transform. */
template <Real T>
struct Dct4Entries;

template <>
struct Dct4Entries<float> {
  static constexpr auto initAlloc = tfmgDCT4InitAlloc_32f;
  static constexpr auto free = tfmgDCT4Free_32f;
  static constexpr auto transform = tfmgDCT4_32f;
  static constexpr std::size_t longest = std::size_t{1} << 26U;
};

template <>
struct Dct4Entries<double> {
  static constexpr auto initAlloc = tfmgDCT4InitAlloc_64f;
  static constexpr auto free = tfmgDCT4Free_64f;
  static constexpr auto transform = tfmgDCT4_64f;
  static constexpr std::size_t longest = std::size_t{1} << 25U;
};

/** The array as the C interface has it: std::complex<T> is laid out as re and im, like the types there. */
template <class Sample, class T>
auto* arrayOf(T* samples) noexcept {
  return reinterpret_cast<std::conditional_t<std::is_const_v<T>, const Sample, Sample>*>(samples);
}

/** The real type of a sample. */
template <class T>
using RealOf = decltype(std::real(T{}));

/** A length as the C interface takes it. 0, which no transform has, stands for arrays whose lengths do not fit and for
 * lengths beyond what the type holds: the status comes from the library. */
constexpr std::int32_t lengthArgument(std::size_t length, bool fits) noexcept {
  if (!fits || length > 64) [[unlikely]] {
    return 0;
  }
  return static_cast<std::int32_t>(length);
}

/** The length that is named, or else the one that the types of all arrays tell. */
template <std::size_t Length, Signal In, Signal Out>
inline constexpr std::size_t knownLength =
    Length != std::dynamic_extent || extentOf<Out> == std::dynamic_extent ? Length : extentOf<In>;

/** Calls the entry of this length, or the general one where only run time tells the length. */
template <Family family, Real T, std::size_t Length, Signal In, Signal Out>
Status call(const In& in, Out& out, std::size_t length, bool fits, Scale scale) noexcept {
  using Routines = Entries<family, T>;
  const auto* source = arrayOf<typename Routines::Sample>(std::ranges::data(in));
  auto* destination = arrayOf<typename Routines::Sample>(std::ranges::data(out));
  const auto flag = static_cast<std::int32_t>(scale);
  if constexpr (Length != std::dynamic_extent) {
    return Status{Routines::each[Length - 2](source, destination, flag)};
  } else {
    return Status{Routines::general(source, destination, lengthArgument(length, fits), flag)};
  }
}

[[noreturn, gnu::cold, gnu::noinline]] inline void raise(Status status) {
  throw Error(status);
}

inline void check(Status status) {
  if (status != Status::ok) [[unlikely]] {
    raise(status);
  }
}

} // namespace detail

// ---- Complex DFT ----------------------------------------------------------------------------------------------------

/** Where the transform of an array of complex samples can be written. */
template <class Out, class In, std::size_t Length>
concept ComplexResult =
    ComplexSignal<In> && ResultOf<Out, SampleOf<In>> && DftLength<Length> && HasLength<In, Length> &&
    HasLength<Out, Length> && SameLength<In, Out> && DftLength<detail::knownLength<Length, In, Out>>;

/** The forward DFT of `in`. */
template <std::size_t Length = std::dynamic_extent, class In, ComplexResult<In, Length> Out>
Status tryDft(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  return detail::call<detail::Family::dft, typename SampleOf<In>::value_type, detail::knownLength<Length, In, Out>>(
      in, out, std::ranges::size(in), std::ranges::size(in) == std::ranges::size(out), scale);
}

/** The forward DFT of `in`. */
template <std::size_t Length = std::dynamic_extent, class In, ComplexResult<In, Length> Out>
void dft(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryDft<Length>(in, out, scale));
}

/** The inverse DFT of `in`. */
template <std::size_t Length = std::dynamic_extent, class In, ComplexResult<In, Length> Out>
Status tryInverseDft(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  return detail::call<detail::Family::inverseDft, typename SampleOf<In>::value_type,
                      detail::knownLength<Length, In, Out>>(in, out, std::ranges::size(in),
                                                            std::ranges::size(in) == std::ranges::size(out), scale);
}

/** The inverse DFT of `in`. */
template <std::size_t Length = std::dynamic_extent, class In, ComplexResult<In, Length> Out>
void inverseDft(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryInverseDft<Length>(in, out, scale));
}

// ---- Real DFT -------------------------------------------------------------------------------------------------------

/** A signal of real samples and its half spectrum. */
template <class Samples, class Spectrum, Format format, std::size_t Length>
concept SignalAndSpectrum = RealSignal<Samples> && SpectrumOf<Spectrum, SampleOf<Samples>, format> &&
    DftLength<Length> && HasLength<Samples, Length> && HasSpectrumLength<Spectrum, format, Length> &&
    SpectrumFits<Spectrum, Samples, format> && DftLength<detail::knownLength<Length, Samples, Spectrum>>;

/** Where the half spectrum of a signal can be written. */
template <class Out, class In, Format format, std::size_t Length>
concept SpectrumResult = SignalAndSpectrum<In, Out, format, Length> && ResultOf<Out, SampleOf<Out>>;

/** Where the signal of a half spectrum can be written. */
template <class Out, class In, Format format, std::size_t Length>
concept SignalResult = SignalAndSpectrum<Out, In, format, Length> && ResultOf<Out, SampleOf<Out>>;

namespace detail {

/** Whether the spectrum has the length that the signal wants. */
template <Format format>
constexpr bool fits(const Signal auto& samples, const Signal auto& spectrum) noexcept {
  using Spectrum = std::remove_cvref_t<decltype(spectrum)>;
  return std::ranges::size(spectrum) == spectrumElements<Spectrum, format>(std::ranges::size(samples));
}

} // namespace detail

/** The half spectrum of the real samples `in`. */
template <Format format, std::size_t Length = std::dynamic_extent, class In, SpectrumResult<In, format, Length> Out>
Status tryRealDft(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  return detail::call<detail::forward(format), SampleOf<In>, detail::knownLength<Length, In, Out>>(
      in, out, std::ranges::size(in), detail::fits<format>(in, out), scale);
}

/** The half spectrum of the real samples `in`. */
template <Format format, std::size_t Length = std::dynamic_extent, class In, SpectrumResult<In, format, Length> Out>
void realDft(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryRealDft<format, Length>(in, out, scale));
}

/** The real samples of the half spectrum `in`. */
template <Format format, std::size_t Length = std::dynamic_extent, class In, SignalResult<In, format, Length> Out>
Status tryInverseRealDft(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  return detail::call<detail::inverse(format), SampleOf<Out>, detail::knownLength<Length, Out, In>>(
      in, out, std::ranges::size(out), detail::fits<format>(out, in), scale);
}

/** The real samples of the half spectrum `in`. */
template <Format format, std::size_t Length = std::dynamic_extent, class In, SignalResult<In, format, Length> Out>
void inverseRealDft(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryInverseRealDft<format, Length>(in, out, scale));
}

// ---- Hartley transform ----------------------------------------------------------------------------------------------

/** Where the transform of an array of real samples can be written. */
template <class Out, class In, std::size_t Length>
concept RealResult = RealSignal<In> && ResultOf<Out, SampleOf<In>> && HasLength<In, Length> && HasLength<Out, Length> &&
    SameLength<In, Out>;

/** The same for the lengths of the Hartley transform. */
template <class Out, class In, std::size_t Length>
concept HartleyResult =
    RealResult<Out, In, Length> && DftLength<Length> && DftLength<detail::knownLength<Length, In, Out>>;

/** The Hartley transform of `in`. */
template <std::size_t Length = std::dynamic_extent, class In, HartleyResult<In, Length> Out>
Status tryHartley(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  return detail::call<detail::Family::hartley, SampleOf<In>, detail::knownLength<Length, In, Out>>(
      in, out, std::ranges::size(in), std::ranges::size(in) == std::ranges::size(out), scale);
}

/** The Hartley transform of `in`. */
template <std::size_t Length = std::dynamic_extent, class In, HartleyResult<In, Length> Out>
void hartley(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryHartley<Length>(in, out, scale));
}

// ---- Walsh-Hadamard transform ---------------------------------------------------------------------------------------

/** Where a Walsh-Hadamard transform can be written. */
template <class Out, class In, std::size_t Length>
concept WalshHadamardResult = RealResult<Out, In, Length> && WalshHadamardLength<detail::knownLength<Length, In, Out>>;

/** The same for lengths that take no buffer. */
template <class Out, class In, std::size_t Length>
concept ShortWalshHadamardResult =
    WalshHadamardResult<Out, In, Length> && NeedsNoBuffer<detail::knownLength<Length, In, Out>>;

/** What Walsh-Hadamard transforms of more than 128 samples write between reading and storing: one buffer for every
 * length and type, for one call at a time. */
class WalshHadamardBuffer {
public:
  /** Bytes: the most that any length takes. */
  static constexpr std::size_t size = 73728;

  WalshHadamardBuffer() = default;

  [[nodiscard]] std::uint8_t* data() noexcept { return reinterpret_cast<std::uint8_t*>(block_.get()); }

private:
  struct alignas(64) Block {
    std::uint8_t bytes[size];
  };
  std::unique_ptr<Block> block_ = std::make_unique_for_overwrite<Block>();
};

namespace detail {

template <std::size_t Length, Signal In, Signal Out>
Status walshHadamard(const In& in, Out& out, Scale scale, std::uint8_t* buffer) noexcept {
  using Routines = WalshHadamardEntries<SampleOf<In>>;
  const auto flag = static_cast<std::int32_t>(scale);
  if constexpr (Length != std::dynamic_extent) {
    return Status{
        Routines::each[std::countr_zero(Length) - 1](std::ranges::data(in), std::ranges::data(out), flag, buffer)};
  } else {
    // A power of two; 0 comes to an order that there is not. std::has_single_bit counts all bits, at length without
    // POPCNT.
    const std::size_t length = std::ranges::size(in);
    const bool fits = length == std::ranges::size(out) && (length & (length - 1)) == 0;
    return Status{Routines::general(std::ranges::data(in), std::ranges::data(out), fits ? std::countr_zero(length) : 0,
                                    flag, buffer)};
  }
}

} // namespace detail

/** The Walsh-Hadamard transform of `in`, of a length up to 128 that is known from the types. */
template <std::size_t Length = std::dynamic_extent, class In, ShortWalshHadamardResult<In, Length> Out>
Status tryWalshHadamard(const In& in, Out&& out, Scale scale = Scale::none) noexcept {
  return detail::walshHadamard<detail::knownLength<Length, In, Out>>(in, out, scale, nullptr);
}

/** The Walsh-Hadamard transform of `in`, of a length up to 128 that is known from the types. */
template <std::size_t Length = std::dynamic_extent, class In, ShortWalshHadamardResult<In, Length> Out>
void walshHadamard(const In& in, Out&& out, Scale scale = Scale::none) {
  detail::check(tryWalshHadamard<Length>(in, out, scale));
}

/** The Walsh-Hadamard transform of `in`. */
template <std::size_t Length = std::dynamic_extent, class In, WalshHadamardResult<In, Length> Out>
Status tryWalshHadamard(const In& in, Out&& out, WalshHadamardBuffer& buffer, Scale scale = Scale::none) noexcept {
  return detail::walshHadamard<detail::knownLength<Length, In, Out>>(in, out, scale, buffer.data());
}

/** The Walsh-Hadamard transform of `in`. */
template <std::size_t Length = std::dynamic_extent, class In, WalshHadamardResult<In, Length> Out>
void walshHadamard(const In& in, Out&& out, WalshHadamardBuffer& buffer, Scale scale = Scale::none) {
  detail::check(tryWalshHadamard<Length>(in, out, buffer, scale));
}

// ---- DCT-IV ---------------------------------------------------------------------------------------------------------

/** Where the cosine transform of an array of samples of type T can be written. */
template <class Out, class In, class T>
concept Dct4Result = Signal<In> && std::same_as<SampleOf<In>, T> && ResultOf<Out, T> && SameLength<In, Out>;

/** A plan of the type-IV cosine transform, of a power of two from 2 to 2^26 (float) or 2^25 (double) samples.
 *
 *     tfmgen::Dct4<float> transform(1024);
 *     transform(samples, coefficients); // both of 1024
 *
 * A plan can be moved, not copied. It serves one call at a time: each thread has its own. */
template <Real T>
class Dct4 {
public:
  /** No plan: calls come to a status that is not Status::ok. */
  Dct4() noexcept = default;

  /** A plan for `length` samples. Throws Error, or std::bad_alloc when there is no memory. */
  explicit Dct4(std::size_t length) {
    const Status status = tryPlan(length);
    if (status == Status::nullPointer) {
      throw std::bad_alloc();
    }
    detail::check(status);
  }

  /** Makes this a plan for `length` samples. Comes to Status::nullPointer when there is no memory; whatever it comes to
   * but Status::ok leaves the plan as it was. */
  Status tryPlan(std::size_t length) noexcept {
    // What the C interface accepts beside powers of two is of no use.
    if (!std::has_single_bit(length) || length > Entries::longest) {
      return Status::badSize;
    }
    TfmgDCT4Plan* plan = nullptr;
    const Status status{Entries::initAlloc(&plan, static_cast<std::int32_t>(length))};
    if (status == Status::ok) {
      plan_.reset(plan);
      length_ = length;
    }
    return status;
  }

  /** Samples of a transform; 0 without a plan. */
  [[nodiscard]] std::size_t length() const noexcept { return plan_ ? length_ : 0; }

  /** The transform of `in`; both arrays have length() samples. */
  template <class In, Dct4Result<In, T> Out>
  Status tryTransform(const In& in, Out&& out) noexcept {
    if (std::ranges::size(in) != length_ || std::ranges::size(out) != length_) {
      return Status::badSize;
    }
    return Status{Entries::transform(std::ranges::data(in), std::ranges::data(out), plan_.get())};
  }

  /** The transform of `in`; both arrays have length() samples. */
  template <class In, Dct4Result<In, T> Out>
  void operator()(const In& in, Out&& out) {
    detail::check(tryTransform(in, out));
  }

private:
  using Entries = detail::Dct4Entries<T>;
  struct Free {
    void operator()(TfmgDCT4Plan* plan) const noexcept { Entries::free(plan); }
  };
  std::unique_ptr<TfmgDCT4Plan, Free> plan_;
  std::size_t length_ = 0;
};

} // namespace tfmgen

#endif
