// Orders 3 to 7: one straight line each.
#include "wht/entry.hpp"

TFMGEN_WHT_ENTRY(3, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(4, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(5, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(6, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(7, 64f, Tfm64f)
