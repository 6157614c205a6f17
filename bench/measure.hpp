// Times the routines of one transform against each other.
#pragma once

#include "routines/routine.hpp"
#include "timing.hpp"

namespace bench {

struct Measurement {
  std::string name;
  std::string library;
  double nanoseconds; // per call, the least of all rounds
  double coreCycles;  // the same; 0 where the core's cycles cannot be counted
};

struct Case {
  Family family;
  std::string type; // f32, f64
  int n;
  std::vector<Measurement> ours;
  std::vector<Measurement> peers;
};

// The routines take turns in short blocks of calls, so that a change of the clock or a neighbour on the machine meets
// all of them. Each is first held against the definition; a peer that computes something else is left out.
template <class T>
class Contest {
public:
  // Throws std::runtime_error when a routine of ours computes something else.
  Contest(Family family, int n);

  void round(const CoreCycles& counter); // one block of every routine
  [[nodiscard]] Case result() const;

private:
  struct Entrant {
    Routine routine;
    std::int64_t calls; // of a block
    double ticks;       // per call
    double cycles;
  };

  [[nodiscard]] bool isRight(const Routine& routine) const;
  [[nodiscard]] std::int64_t callsOfBlock(const Routine& routine) const;

  Family family_;
  int n_;
  Arrays<T> arrays_;
  std::vector<T> numbers_;
  std::vector<Entrant> entrants_;
};

} // namespace bench
