#pragma once

#include <chrono>
#include <cstddef>
#include <string>

// How far long work has come, on the error output where that is a terminal, and nothing elsewhere. The line appears
// after a second, changes a few times a second and is gone at the end.
class Progress {
public:
  Progress(std::string work, std::size_t steps);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // `step` of the steps are done.
  void reach(std::size_t step);

private:
  using Clock = std::chrono::steady_clock;

  std::string work_;
  std::size_t steps_;
  bool onTerminal_;
  bool shown_ = false;
  Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);
};
