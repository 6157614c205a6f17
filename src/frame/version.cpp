#include "tfmgen.h"

namespace {

constexpr TfmLibVersion kVersion = {
    .major = 6,
    .minor = 1,
    .majorBuild = 137,
    .build = 300,
    .target = {'u', '8', '\0', '\0'},
    .name = "tfmgenu8-6.1.dll",
    .version = "6.1 build 137.20",
    .buildDate = "Jun 10 2009",
};

} // namespace

const TfmLibVersion* tfmgenGetLibVersion(void) {
  return &kVersion;
}
