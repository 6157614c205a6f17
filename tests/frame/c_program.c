/* A C11 program that uses the library, with the layout of every public type pinned for C. */
#include "tfmcore.h"
#include "tfmgen.h"

#include <stddef.h>
#include <stdio.h>
#include <string.h>

_Static_assert(sizeof(Tfm32f) == 4 && sizeof(Tfm64f) == 8, "real samples");
_Static_assert(sizeof(Tfm32fc) == 8 && offsetof(Tfm32fc, re) == 0 && offsetof(Tfm32fc, im) == 4, "Tfm32fc");
_Static_assert(sizeof(Tfm64fc) == 16 && offsetof(Tfm64fc, re) == 0 && offsetof(Tfm64fc, im) == 8, "Tfm64fc");
_Static_assert(sizeof(TfmStatus) == 4 && (TfmStatus)-1 < 0, "TfmStatus");
_Static_assert(tfmStsOk == 0 && tfmStsBadArg == -5 && tfmStsBadSize == -6, "statuses");
_Static_assert(tfmStsNullPtr == -8 && tfmStsBadFlag == -16, "statuses");
_Static_assert(TFM_DIV_FWD_BY_N == 1 && TFM_DIV_INV_BY_N == 2 && TFM_DIV_BY_SQRTN == 4 && TFM_NO_DIV == 8, "flags");
_Static_assert(offsetof(TfmLibVersion, major) == 0 && offsetof(TfmLibVersion, minor) == 4, "TfmLibVersion");
_Static_assert(offsetof(TfmLibVersion, majorBuild) == 8 && offsetof(TfmLibVersion, build) == 12, "TfmLibVersion");
_Static_assert(offsetof(TfmLibVersion, target) == 16 && offsetof(TfmLibVersion, name) == 24, "TfmLibVersion");
_Static_assert(offsetof(TfmLibVersion, version) == 32 && offsetof(TfmLibVersion, buildDate) == 40, "TfmLibVersion");
_Static_assert(sizeof(TfmLibVersion) == 48, "TfmLibVersion");

const char* versionText(void);

int main(void) {
  Tfm64fc* const x = tfmMalloc(2 * (int32_t)sizeof(Tfm64fc));
  if (x == NULL) {
    return 1;
  }
  x[0] = (Tfm64fc){1.0, 2.0};
  x[1] = (Tfm64fc){3.0, 4.0};
  const TfmStatus status = tfmgDFTFwd_CToC_64fc(x, x, 2, TFM_NO_DIV);
  const int same = x[0].re == 4.0 && x[0].im == 6.0 && x[1].re == -2.0 && x[1].im == -2.0;
  tfmFree(x);
  if (status != tfmStsOk || !same) {
    fprintf(stderr, "transform of length 2: status %d, %s\n", (int)status, same ? "right" : "wrong result");
    return 1;
  }
  return strcmp(versionText(), "6.1 build 137.20") == 0 ? 0 : 1;
}
