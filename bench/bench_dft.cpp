// Times every DFT and Hartley routine, in the library of every level, beside the peers that were found.
//
//   bench_dft [--rounds=COUNT] [--only=FAMILY/TYPE/N/] [--csv=FILE] [LEVEL...]
//
// --only=cfwd/f32/ takes the forward complex transforms of floats, --only=dht/ the Hartley transforms.

#include "level_contest.hpp"
#include "reference.hpp"
#include "routines/routine.hpp"
#include "tfmgen.h"

#include <iostream>
#include <limits>
#include <numeric>
#include <sstream>
#include <stdexcept>

namespace {

using namespace bench;

// The contestants of one transform, each held against the definition.
template <class T>
class Transform {
public:
  Transform(Family family, int n) : family_(family), n_(n) {
    std::mt19937_64 engine(static_cast<std::uint64_t>(n));
    numbers_ = randomNumbers<T>(numberCount(family, n), engine);
    exact_ = Reference<long double>(n)(family, numbers_);
  }

  // Throws std::runtime_error when a routine computes something else.
  void add(const LevelLibrary& library) {
    using Function = TfmStatus(const T*, T*, std::int32_t);
    for (const Entry& entry : entries(family_)) {
      for (Function* const function : library.find<Function>(symbol<T>(entry, n_))) {
        const auto call = [function](const T* from, T* to) { function(from, to, TFM_NO_DIV); };
        const Routine routine{entry.name, "tfmgen", entry.in, entry.out,
                              backToBack([call, this] { call(arrays_.src(), arrays_.dst()); })};
        if (const std::string fault = faultOf(routine); !fault.empty()) {
          throw std::runtime_error(library.level() + ": " + fault);
        }
        addOurs(entry.name, library.level(), call, arrays_.src(), arrays_.dst(), Arrays<T>::kSize, contestants_);
      }
    }
  }

  // A peer that computes something else is left out.
  void addPeers() {
    for (const Routine& routine : peerRoutines(family_, n_, arrays_)) {
      if (const std::string fault = faultOf(routine); !fault.empty()) {
        std::cerr << "left out: " << fault << '\n';
        continue;
      }
      // Some inverse transforms overwrite their source.
      const auto prepare = [this, routine] { load(routine, n_, numbers_, arrays_); };
      contestants_.push_back({Role::peer, routine.name, "", routine.repeat, prepare});
    }
  }

  [[nodiscard]] std::vector<LevelCase> times(int rounds) const {
    return contest(std::string(shortName(family_)), std::string(kTypeName<T>), n_, contestants_, rounds);
  }

private:
  [[nodiscard]] std::string faultOf(const Routine& routine) const {
    load(routine, n_, numbers_, arrays_);
    routine.repeat(1);
    const double error = relativeError(result(routine, n_, arrays_), exact_);
    if (error < 64 * static_cast<double>(std::numeric_limits<T>::epsilon())) {
      return "";
    }
    std::ostringstream message;
    message << routine.name << " does not compute " << shortName(family_) << '/' << kTypeName<T> << '/' << n_
            << ": relative error " << error;
    return message.str();
  }

  Family family_;
  int n_;
  Arrays<T> arrays_;
  std::vector<T> numbers_;
  std::vector<long double> exact_;
  std::vector<Contestant> contestants_;
};

template <class T>
std::vector<LevelCase> compare(Family family, int n, const Contests& contests) {
  Transform<T> transform(family, n);
  for (const LevelLibrary& library : contests.libraries()) {
    transform.add(library);
  }
  transform.addPeers();
  return transform.times(contests.options().rounds);
}

template <class T>
void holdAll(Family family, Contests& contests) {
  std::vector<int> lengths(kLongest - kShortest + 1);
  std::iota(lengths.begin(), lengths.end(), kShortest);
  contests.hold(std::string(shortName(family)), std::string(kTypeName<T>), lengths,
                [&](int n) { return compare<T>(family, n, contests); });
}

} // namespace

int main(int argc, char** argv) {
  return runContests(argc, argv, [](Contests& contests) {
    for (const Family family : kFamilies) {
      holdAll<float>(family, contests);
      holdAll<double>(family, contests);
    }
  });
}
