// Runs a fuzz target without a fuzzer: repeat COUNT BYTES calls it with COUNT random inputs of BYTES bytes, always the
// same ones.
#include "input.hpp"

#include <csignal>
#include <vector>

namespace {

volatile std::sig_atomic_t number = 0;

void nameInput(int signal) {
  std::fprintf(stderr, "fault at input %d\n", static_cast<int>(number));
  std::signal(signal, SIG_DFL);
}

} // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s COUNT BYTES\n", argv[0]);
    return 2;
  }
  std::signal(SIGSEGV, nameInput);
  std::signal(SIGABRT, nameInput);
  const int count = std::atoi(argv[1]); // NOLINT(cert-err34-c): 0 for what is no number
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::max(std::atoi(argv[2]), 0))); // NOLINT(cert-err34-c)
  tfmgen::test::Random random(1);
  for (; number < count; number = number + 1) {
    for (std::uint8_t& byte : bytes) {
      byte = static_cast<std::uint8_t>(random.bits() >> 56);
    }
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  }
  std::printf("%d inputs of %zu bytes\n", count, bytes.size());
  return count > 0 ? 0 : 2;
}
