// Every export of a level's library against the same export of the default one: the same bits, and NaN where NaN.
#include "bits.hpp"
#include "dct4.hpp"
#include "families.hpp"
#include "hard_values.hpp"
#include "processor_level.hpp"
#include "wht.hpp"

#include <dlfcn.h>

#include <gtest/gtest.h>

namespace tfmgen::test {
namespace {

constexpr int kTrials = 4000;
constexpr std::size_t kLineBytes = 64;

struct Library {
  const char* level;
  const char* path;
};

class Levels : public ::testing::TestWithParam<Library> {
protected:
  void SetUp() override {
    if (!processorHas(GetParam().level)) {
      GTEST_SKIP() << "this processor has no " << GetParam().level;
    }
    ASSERT_EQ(loadedLevel(), "") << "the program itself runs on the default library";
    library_ = dlopen(GetParam().path, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library_, nullptr) << dlerror();
  }
  void TearDown() override {
    if (library_ != nullptr) {
      dlclose(library_);
    }
  }

  template <class Call>
  [[nodiscard]] Call* find(const std::string& name) const {
    return reinterpret_cast<Call*>(dlsym(library_, name.c_str()));
  }

private:
  void* library_ = nullptr;
};

template <class Real>
::testing::AssertionResult sameNumbers(const Real* expected, const Real* actual, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    if (!isSameReal(expected[i], actual[i])) {
      return ::testing::AssertionFailure() << "number " << i << " is " << actual[i] << " and should be " << expected[i];
    }
  }
  return ::testing::AssertionSuccess();
}

// An array of reals at the start of a cache line, moved on by a few of them.
template <class Real>
class Array {
public:
  explicit Array(std::size_t count) : bytes_(count * sizeof(Real) + 2 * kLineBytes) {}

  Real* at(std::size_t displacement) {
    const auto start = reinterpret_cast<std::uintptr_t>(bytes_.data());
    return reinterpret_cast<Real*>(bytes_.data() + (kLineBytes - start % kLineBytes) + displacement * sizeof(Real));
  }

private:
  std::vector<std::byte> bytes_;
};

// Runs expected(src, dst, trial) and actual(src, dst, trial) on the same arrays of hard numbers, also in place.
template <class Real, class Expected, class Actual>
void compare(HardArrays<Real>& inputs, std::size_t sourceReals, std::size_t destinationReals, int trials,
             const Expected& expected, const Actual& actual) {
  const std::size_t room = std::max(sourceReals, destinationReals);
  Array<Real> source(room);
  Array<Real> first(room);
  Array<Real> second(room);
  for (int trial = 0; trial < trials; ++trial) {
    const auto displacement = static_cast<std::size_t>(trial) % 5;
    const bool isInPlace = trial % 3 == 0;
    const Real* const values = inputs.next(sourceReals);
    std::copy_n(values, sourceReals, source.at(0));
    std::copy_n(values, sourceReals, second.at(displacement));
    ASSERT_EQ(expected(source.at(0), first.at(0), trial), tfmStsOk);
    ASSERT_EQ(actual(isInPlace ? second.at(displacement) : source.at(0), second.at(displacement), trial), tfmStsOk);
    ASSERT_TRUE(sameNumbers(first.at(0), second.at(displacement), destinationReals)) << "trial " << trial;
  }
}

std::int32_t flagOf(int trial) {
  return kFlags[static_cast<std::size_t>(trial) / kHardKinds.size() % kFlags.size()];
}

TEST_P(Levels, TransformsOfFixedLength) {
  HardArrays<float> floats(2 * kLongest + 2, 1);
  HardArrays<double> doubles(2 * kLongest + 2, 2);
  const auto check = [&]<class Real>(const Entry& entry, HardArrays<Real>& inputs) {
    const auto actual = find<TfmStatus(const void*, void*, std::int32_t)>(entry.name());
    ASSERT_NE(actual, nullptr);
    compare(
        inputs, entry.sourceReals(), entry.destinationReals(), kTrials,
        [&](const Real* src, Real* dst, int trial) { return entry(src, dst, flagOf(trial)); },
        [&](const Real* src, Real* dst, int trial) { return actual(src, dst, flagOf(trial)); });
  };
  forEachEntry([&](const Entry& entry) {
    entry.family.realBytes == sizeof(float) ? check(entry, floats) : check(entry, doubles);
  });
}

TEST_P(Levels, GeneralEntriesTakeTheSameRoutines) {
  forEachEntry([&](const Entry& entry) {
    if (entry.family.realBytes == sizeof(float)) {
      const auto general = find<TfmStatus(const void*, void*, std::int32_t, std::int32_t)>(entry.family.name);
      ASSERT_NE(general, nullptr);
      HardArrays<float> inputs(entry.sourceReals(), 3);
      compare(
          inputs, entry.sourceReals(), entry.destinationReals(), 8,
          [&](const float* src, float* dst, int) { return entry(src, dst, TFM_NO_DIV); },
          [&](const float* src, float* dst, int) { return general(src, dst, entry.n, TFM_NO_DIV); });
    }
  });
}

template <class Real>
void compareWht(int order, typename Wht<Real>::Call* actual) {
  ASSERT_NE(actual, nullptr);
  const std::size_t n = std::size_t{1} << order;
  std::vector<std::uint8_t> buffer(
      static_cast<std::size_t>(Wht<Real>::bufferSizes[static_cast<std::size_t>(order - 1)]) + kLineBytes);
  const auto start = reinterpret_cast<std::uintptr_t>(buffer.data());
  std::uint8_t* const aligned = buffer.data() + (kLineBytes - start % kLineBytes);
  HardArrays<Real> inputs(n, 4);
  constexpr int kLongTrials = 500;
  compare(
      inputs, n, n, order < 8 ? kTrials : kLongTrials,
      [&](const Real* src, Real* dst, int trial) {
        return whtCall<Real>(order)(src, dst, flagOf(trial), trial % 2 == 0 ? nullptr : aligned);
      },
      [&](const Real* src, Real* dst, int trial) {
        return actual(src, dst, flagOf(trial), trial % 2 == 0 ? nullptr : aligned);
      });
}

TEST_P(Levels, WalshHadamard) {
  for (int order = 1; order <= kWhtOrders; ++order) {
    SCOPED_TRACE(order);
    compareWht<float>(order, find<Wht<float>::Call>(whtName<float>(order)));
    compareWht<double>(order, find<Wht<double>::Call>(whtName<double>(order)));
  }
}

// A plan of one library runs in the other.
template <class Real>
void compareDct4(std::int32_t length, TfmStatus (*init)(TfmgDCT4Plan**, std::int32_t, void*),
                 TfmStatus (*run)(const Real*, Real*, TfmgDCT4Plan*)) {
  ASSERT_NE(init, nullptr);
  ASSERT_NE(run, nullptr);
  std::int32_t size = 0;
  ASSERT_EQ(Dct4<Real>::getSize(length, &size), tfmStsOk);
  std::vector<std::uint8_t> ours(static_cast<std::size_t>(size));
  std::vector<std::uint8_t> theirs(static_cast<std::size_t>(size));
  TfmgDCT4Plan* plan = nullptr;
  TfmgDCT4Plan* planOfLevel = nullptr;
  ASSERT_EQ(Dct4<Real>::init(&plan, length, ours.data()), tfmStsOk);
  ASSERT_EQ(init(&planOfLevel, length, theirs.data()), tfmStsOk);
  HardArrays<Real> inputs(static_cast<std::size_t>(length), 5);
  constexpr int kWork = 1 << 20; // samples
  compare(
      inputs, static_cast<std::size_t>(length), static_cast<std::size_t>(length),
      std::clamp(kWork / length, 24, kTrials),
      [&](const Real* src, Real* dst, int trial) {
        return Dct4<Real>::run(src, dst, trial % 2 == 0 ? plan : planOfLevel);
      },
      [&](const Real* src, Real* dst, int trial) { return run(src, dst, trial % 4 < 2 ? plan : planOfLevel); });
}

TEST_P(Levels, CosineTransform) {
  constexpr std::int32_t kLongestCosine = 65536;
  for (std::int32_t length = 2; length <= kLongestCosine; length *= 2) {
    SCOPED_TRACE(length);
    const auto check = [&]<class Real>(Real) {
      const std::string suffix = Dct4<Real>::suffix;
      compareDct4<Real>(length, find<TfmStatus(TfmgDCT4Plan**, std::int32_t, void*)>("tfmgDCT4Init" + suffix),
                        find<TfmStatus(const Real*, Real*, TfmgDCT4Plan*)>("tfmgDCT4" + suffix));
    };
    check(1.0F);
    check(1.0);
  }
}

INSTANTIATE_TEST_SUITE_P(All, Levels, ::testing::Values(TFMGEN_TEST_LIBRARIES),
                         [](const ::testing::TestParamInfo<Library>& library) {
                           std::string name = library.param.level;
                           std::erase(name, '-');
                           return name;
                         });

} // namespace
} // namespace tfmgen::test
