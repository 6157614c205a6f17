// How kernels are inlined.
#pragma once

// Of functions, which are `inline` besides, and of lambdas, between parameters and body. Everything that kernels are
// made of is marked: a kernel is one straight line at every level of optimisation, and where the same templates are
// compiled for several instruction sets no copy of them remains that a linker could share between the sets.
#define TFMGEN_INLINE __attribute__((always_inline))
