// Orders 8 to 13: passes through the work buffer.
#include "wht/entry.hpp"

TFMGEN_WHT_ENTRY(8, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(9, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(10, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(11, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(12, 32f, Tfm32f)
TFMGEN_WHT_ENTRY(13, 32f, Tfm32f)
