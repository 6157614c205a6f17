// The transforms under comparison, ours and those of other libraries, behind one form: out of place, on arrays that
// stay where they are, called back to back.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

constexpr int kShortest = 2;
constexpr int kLongest = 64;

enum class Family { complexForward, complexInverse, realForward, realInverse, hartley };

inline constexpr std::array kFamilies{Family::complexForward, Family::complexInverse, Family::realForward,
                                      Family::realInverse, Family::hartley};

// Short name in tables and in marks.csv: cfwd, cinv, rfwd, rinv, dht.
std::string_view shortName(Family family);

template <class T>
inline constexpr std::string_view kTypeName = sizeof(T) == sizeof(float) ? "f32" : "f64";

// How an array of n samples or of their spectrum is laid out.
enum class Layout {
  complex,    // n pairs (re, im)
  real,       // n reals
  ccs,        // n/2 + 1 pairs (re, im) of a half spectrum, with the imaginary parts that are always 0
  pack,       // the half spectrum without these zeros
  perm,       // the same with the real bin n/2 of even n at element 1
  halfComplex // re of bins 0 .. n/2, then im of the bins (n-1)/2 .. 1
};

// Numbers that determine the input, and the output, of a transform of length n: 2n or n.
std::size_t numberCount(Family family, int n);

// Element of each of these numbers in an array of the layout. Their order is that of Layout::complex for the complex
// families, of Layout::real for real arrays and of Layout::pack for half spectra.
std::vector<std::size_t> positions(Layout layout, int n);

struct Routine {
  std::string name;    // as shown: "tfmgDFTFwd_RToPerm", "fftw-r2c-meas"
  std::string library; // "tfmgen", "fftw", "kissfft", "av_tx"
  Layout in;
  Layout out;
  std::function<void(std::int64_t calls)> repeat; // transforms Arrays::src into Arrays::dst that many times
};

template <class Call>
std::function<void(std::int64_t)> backToBack(Call call) {
  return [call](std::int64_t calls) {
    for (; calls > 0; --calls) {
      call();
    }
  };
}

// A source and a destination for any length and layout, at multiples of 64 bytes in one page and small enough for the
// first-level cache. The distance between both is fixed and no multiple of a page: no routine is favoured by placement.
template <class T>
class Arrays {
public:
  static constexpr std::size_t kSize = 2 * kLongest + 2;

  Arrays() : block_(static_cast<T*>(std::aligned_alloc(kPage, kPage)), &std::free) {}
  [[nodiscard]] T* src() const { return block_.get(); }
  [[nodiscard]] T* dst() const { return block_.get() + kOffset / sizeof(T); }

private:
  static constexpr std::size_t kPage = 4096;
  static constexpr std::size_t kOffset = 2112;
  static_assert(kSize * sizeof(T) <= kPage - kOffset);
  std::unique_ptr<T, decltype(&std::free)> block_;
};

// A routine of ours for every length: tfmgDFTFwd_RToPerm.
struct Entry {
  Family family;
  const char* name;
  Layout in;
  Layout out;
};
std::vector<Entry> entries(Family family);

// Its name in the library for one length and type: tfmgDFTFwd_RToPerm_13_32f.
template <class T>
std::string symbol(const Entry& entry, int n);

// Appends what the library has for this transform; nothing when it has none or was not there at configuration time.
// Planning writes to the arrays.
template <class T>
void addTfmgen(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines);
template <class T>
void addFftw(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines);
template <class T>
void addKissfft(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines);
template <class T>
void addAvTx(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines);

// Those of other libraries, and all of them, ours first. They use `arrays` and must not outlive it.
template <class T>
std::vector<Routine> peerRoutines(Family family, int n, const Arrays<T>& arrays);
template <class T>
std::vector<Routine> allRoutines(Family family, int n, const Arrays<T>& arrays);

inline bool isOurs(const Routine& routine) {
  return routine.library == "tfmgen";
}

// Puts the numbers where the routine reads them, and zeros everywhere else.
template <class T>
void load(const Routine& routine, int n, const std::vector<T>& numbers, const Arrays<T>& arrays);

// The numbers of the result.
template <class T>
std::vector<T> result(const Routine& routine, int n, const Arrays<T>& arrays);

} // namespace bench
