// Prints the path of the library that this program runs on.
#include "tfmgen.h"

#include <dlfcn.h>

#include <cstdio>

int main() {
  Dl_info info{};
  if (dladdr(tfmgenGetLibVersion(), &info) == 0) {
    return 1;
  }
  std::puts(info.dli_fname);
}
