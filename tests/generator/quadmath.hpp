// The functions of libquadmath that tests compare with. Its own header is one that only g++ finds.
#pragma once

#include "number/quad.hpp"

extern "C" {
tfmgen::number::Quad sinq(tfmgen::number::Quad x);
tfmgen::number::Quad cosq(tfmgen::number::Quad x);
tfmgen::number::Quad acosq(tfmgen::number::Quad x);
}
