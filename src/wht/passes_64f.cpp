// Orders 8 to 13: passes through the work buffer.
#include "wht/entry.hpp"

TFMGEN_WHT_ENTRY(8, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(9, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(10, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(11, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(12, 64f, Tfm64f)
TFMGEN_WHT_ENTRY(13, 64f, Tfm64f)
