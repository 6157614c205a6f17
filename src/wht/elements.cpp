// Orders 1 and 2, too short for vectors: the same code at every level.
#include "wht/entry.hpp"

TFMGEN_WHT_ENTRY(1, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(2, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(1, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(2, 64f, Tfm64f)
