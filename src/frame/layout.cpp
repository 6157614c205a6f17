// The binary interface: programs compiled against an older header rely on every number here.
#include "tfmgen.h"

#include <climits>
#include <cstddef>
#include <limits>

static_assert(CHAR_BIT == 8);
static_assert(sizeof(Tfm32f) == 4 && std::numeric_limits<Tfm32f>::is_iec559);
static_assert(sizeof(Tfm64f) == 8 && std::numeric_limits<Tfm64f>::is_iec559);

static_assert(sizeof(Tfm32fc) == 8 && offsetof(Tfm32fc, re) == 0 && offsetof(Tfm32fc, im) == 4);
static_assert(sizeof(Tfm64fc) == 16 && offsetof(Tfm64fc, re) == 0 && offsetof(Tfm64fc, im) == 8);

static_assert(sizeof(TfmStatus) == 4 && std::numeric_limits<TfmStatus>::is_signed);
static_assert(tfmStsOk == 0 && tfmStsBadArg == -5 && tfmStsBadSize == -6 && tfmStsNullPtr == -8 &&
              tfmStsBadFlag == -16);
static_assert(TFM_DIV_FWD_BY_N == 1 && TFM_DIV_INV_BY_N == 2 && TFM_DIV_BY_SQRTN == 4 && TFM_NO_DIV == 8);

static_assert(offsetof(TfmLibVersion, major) == 0 && offsetof(TfmLibVersion, minor) == 4 &&
              offsetof(TfmLibVersion, majorBuild) == 8 && offsetof(TfmLibVersion, build) == 12 &&
              offsetof(TfmLibVersion, target) == 16 && offsetof(TfmLibVersion, name) == 24 &&
              offsetof(TfmLibVersion, version) == 32 && offsetof(TfmLibVersion, buildDate) == 40 &&
              sizeof(TfmLibVersion) == 48);
