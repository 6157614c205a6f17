// Arrays at every displacement, beside inaccessible memory on either side: same bits, nothing outside touched.
#include "bits.hpp"
#include "families.hpp"
#include "guarded.hpp"
#include "random.hpp"

#include <csignal>
#include <cstdio>

namespace tfmgen::test {
namespace {

// Names the routine that ran into an inaccessible page; the fault itself ends the program.
char underTest[64];

void nameFault(int signal) {
  std::fprintf(stderr, "fault in %s\n", underTest);
  std::signal(signal, SIG_DFL);
}

class Bounds : public ::testing::Test {
protected:
  void SetUp() override { previous_ = std::signal(SIGSEGV, nameFault); }
  void TearDown() override { std::signal(SIGSEGV, previous_); }

private:
  void (*previous_)(int) = SIG_DFL;
};

TEST_F(Bounds, SameBitsAtEveryDisplacementBesideInaccessiblePages) {
  GuardedMemory sourceMemory(1024);
  GuardedMemory destinationMemory(1024);
  forEachEntry([&](const Entry& entry) {
    std::snprintf(underTest, sizeof underTest, "%s", entry.name().c_str());
    const std::size_t realBytes = entry.family.realBytes;
    const auto values = Random(5).bytesOfReals(realBytes, entry.sourceReals(), Spread::uniform);
    alignas(16) std::byte source[1024];
    alignas(16) std::byte expected[1024];
    std::copy(values.begin(), values.end(), source);
    ASSERT_EQ(entry(source, expected, TFM_DIV_BY_SQRTN), tfmStsOk);

    const auto check = [&](Edge edge, std::size_t sourceDisplacement, std::size_t destinationDisplacement) {
      std::byte* const src = sourceMemory.array(values.size(), edge, sourceDisplacement);
      std::byte* const dst = destinationMemory.array(entry.destinationBytes(), edge, destinationDisplacement);
      std::copy(values.begin(), values.end(), src);
      ASSERT_EQ(entry(src, dst, TFM_DIV_BY_SQRTN), tfmStsOk);
      ASSERT_TRUE(sameBits(expected, dst, entry.destinationBytes(), realBytes))
          << "displacements " << sourceDisplacement << " and " << destinationDisplacement;
    };
    for (const Edge edge : {Edge::start, Edge::end}) {
      for (std::size_t displacement = 0; displacement < 16; ++displacement) {
        check(edge, displacement, displacement);
        check(edge, displacement, 0);
        check(edge, 0, displacement);
      }
    }
  });
}

TEST_F(Bounds, NeighboursOfTheDestinationStayAsTheyAre) {
  forEachEntry([](const Entry& entry) {
    const auto values = Random(6).bytesOfReals(entry.family.realBytes, entry.sourceReals(), Spread::uniform);
    for (const std::size_t displacement : {std::size_t{16}, std::size_t{20}}) {
      alignas(16) std::byte field[1024 + 64];
      std::memset(field, 0x5A, sizeof field);
      std::byte* const end = field + displacement + entry.destinationBytes();
      alignas(16) std::byte source[1024];
      std::copy(values.begin(), values.end(), source);
      ASSERT_EQ(entry(source, field + displacement, TFM_NO_DIV), tfmStsOk);
      const auto untouched = [](std::byte value) { return value == std::byte{0x5A}; };
      ASSERT_TRUE(std::all_of(field, field + displacement, untouched)) << "in front";
      ASSERT_TRUE(std::all_of(end, std::end(field), untouched)) << "behind";
    }
  });
}

} // namespace
} // namespace tfmgen::test
