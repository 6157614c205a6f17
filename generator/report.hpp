// What the generator prints about its kernels.
#pragma once

namespace tfmgen {

void printCounts();
void printErrors();
void printPacking();

} // namespace tfmgen
