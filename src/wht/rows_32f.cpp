// Orders 3 to 7: one straight line each.
#include "wht/entry.hpp"

TFMGEN_WHT_ENTRY(3, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(4, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(5, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(6, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(7, 32f, Tfm32f)
