#include "progress.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

Progress::Progress(std::string work, std::size_t steps)
    : work_(std::move(work)), steps_(std::max<std::size_t>(steps, 1)), onTerminal_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  if (shown_) {
    std::fputs("\r\033[K", stderr); // the line is empty again
  }
}

void Progress::reach(std::size_t step) {
  if (!onTerminal_ || Clock::now() < next_) {
    return;
  }
  std::fprintf(stderr, "\r%s: %zu %%", work_.c_str(), 100 * step / steps_);
  shown_ = true;
  next_ = Clock::now() + std::chrono::milliseconds(200);
}
