/* Compiled as C99: the public header asks for no more, whether it comes first or twice. */
#include "tfmgen.h"

#include "tfmgen.h" /* NOLINT(readability-duplicate-include) */

const char* versionText(void);

const char* versionText(void) {
  return tfmgenGetLibVersion()->version;
}
