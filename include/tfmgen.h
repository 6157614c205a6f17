/* tfmgen: short linear transforms of fixed length on floating-point vectors.
 *
 * Plain C99, usable from C++. Every function returns a status, keeps no state, takes no lock, throws nothing and prints
 * nothing; there is no set-up call. Unless a function says otherwise it may run on any number of threads at once, as
 * long as no two calls write the same memory.
 *
 * Names read family, direction and format, length, sample type: tfmgDFTFwd_CToC_16_32fc. The same name without the
 * length is a general entry that takes the length as an argument and hands over to the routine of that length.
 *
 * Arithmetic is IEEE 754, round to nearest, without fused operations: results are the same bits on every processor, at
 * every alignment of the arrays, in place or not. */
#ifndef TFMGEN_H
#define TFMGEN_H

#include <stdint.h>

#if defined(__GNUC__)
#define TFMGEN_API __attribute__((visibility("default")))
#else
#define TFMGEN_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Sample types: little-endian IEEE 754, no padding ---------------------------------------------------------- */

typedef float Tfm32f;
typedef double Tfm64f;

typedef struct {
  Tfm32f re;
  Tfm32f im;
} Tfm32fc;

typedef struct {
  Tfm64f re;
  Tfm64f im;
} Tfm64fc;

/* ---- Statuses ---------------------------------------------------------------------------------------------------- */

/* A call that returns anything but tfmStsOk has not touched its destination. */
typedef int32_t TfmStatus;

enum {
  tfmStsOk = 0,       /* success */
  tfmStsBadArg = -5,  /* the plan object is in a state that no constructor leaves */
  tfmStsBadSize = -6, /* the length or order is outside the range of the family */
  tfmStsNullPtr = -8, /* a pointer argument is null */
  tfmStsBadFlag = -16 /* the scaling flag is none of the four values below */
};

/* ---- Scaling flags ----------------------------------------------------------------------------------------------- */

/* Which factor s multiplies every output, by transform. N is the length. Flags are values, not bits to combine: any
 * other number, 0 and 3 among them, is tfmStsBadFlag.
 *
 *   flag               forward DFT   inverse DFT   Hartley, Walsh-Hadamard
 *   TFM_DIV_FWD_BY_N   1/N           1             1/N
 *   TFM_DIV_INV_BY_N   1             1/N           1/N
 *   TFM_DIV_BY_SQRTN   1/sqrt(N)     1/sqrt(N)     1/sqrt(N)
 *   TFM_NO_DIV         1             1             1
 *
 * A forward and an inverse DFT with the same flag, one of the first three, give the identity up to rounding. The
 * multiplication by s is the last operation on every output, also when s is 1, so that run time does not depend on the
 * flag. s is the nearest sample-type value to the factor, except that 1/sqrt(N) of 64-bit samples is the rounded
 * quotient 1.0 / d with d the rounded square root of N. */
enum { TFM_DIV_FWD_BY_N = 1, TFM_DIV_INV_BY_N = 2, TFM_DIV_BY_SQRTN = 4, TFM_NO_DIV = 8 };

/* ---- Version ----------------------------------------------------------------------------------------------------- */

typedef struct {
  int32_t major;
  int32_t minor;
  int32_t majorBuild;    /* build series */
  int32_t build;         /* build number */
  char target[4];        /* processor level for which the library was built, zero-terminated */
  const char* name;      /* file name of the library */
  const char* version;   /* version as text */
  const char* buildDate; /* date of the build */
} TfmLibVersion;

/* The one version record. It is read-only and lives as long as the library; never null. */
TFMGEN_API const TfmLibVersion* tfmgenGetLibVersion(void);

#ifdef __cplusplus
}
#endif

#endif
