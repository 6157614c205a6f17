/** @file
 * tfmgen: short linear transforms of fixed length on floating-point vectors.
 *
 * Plain C99, usable from C++. Every function returns a status, keeps no state, takes no lock, throws nothing and prints
 * nothing; there is no set-up call. Unless a function says otherwise it may run on any number of threads at once, as
 * long as no two calls write the same memory.
 *
 * Names read family, direction and format, length, sample type: tfmgDFTFwd_CToC_16_32fc. The same name without the
 * length is a general entry that takes the length as an argument and hands over to the routine of that length.
 *
 * Arithmetic is IEEE 754, round to nearest, each operation rounded by itself: results are the same bits on every
 * processor, from the library of every processor level, at every alignment of the arrays, in place or not. Where a
 * result is not a number, its sign and payload may be any. */
#ifndef TFMGEN_H
#define TFMGEN_H

#include <stdint.h>

#if defined(__GNUC__) && defined(__cpp_exceptions) /* C++ wants to hear that nothing is thrown */
#define TFMGEN_API __attribute__((visibility("default"), nothrow))
#elif defined(__GNUC__)
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

/** A complex number of floats. */
typedef struct {
  Tfm32f re;
  Tfm32f im;
} Tfm32fc;

/** A complex number of doubles. */
typedef struct {
  Tfm64f re;
  Tfm64f im;
} Tfm64fc;

/* ---- Statuses ---------------------------------------------------------------------------------------------------- */

/** A call that returns anything but tfmStsOk has not touched its destination; of the memory that a caller provides,
 * only the buffer of tfmgDCT4Init may have been written. */
typedef int32_t TfmStatus;

enum {
  tfmStsOk = 0,       /**< success */
  tfmStsBadArg = -5,  /**< the plan object is in a state that no constructor leaves */
  tfmStsBadSize = -6, /**< the length or order is outside the range of the family */
  tfmStsNullPtr = -8, /**< a pointer argument is null */
  tfmStsBadFlag = -16 /**< the scaling flag is none of the four values below */
};

/* ---- Scaling flags ----------------------------------------------------------------------------------------------- */

/** Which factor s multiplies every output, by transform. N is the length. Flags are values, not bits to combine: any
 * other number, 0 and 3 among them, is tfmStsBadFlag.
 *
 *     flag               forward DFT   inverse DFT   Hartley, Walsh-Hadamard
 *     TFM_DIV_FWD_BY_N   1/N           1             1/N
 *     TFM_DIV_INV_BY_N   1             1/N           1/N
 *     TFM_DIV_BY_SQRTN   1/sqrt(N)     1/sqrt(N)     1/sqrt(N)
 *     TFM_NO_DIV         1             1             1
 *
 * A forward and an inverse DFT with the same flag, one of the first three, give the identity up to rounding. The
 * multiplication by s is the last operation on every output, also when s is 1, so that run time does not depend on the
 * flag. s is the nearest sample-type value to the factor, except that 1/sqrt(N) of 64-bit samples is the rounded
 * quotient 1.0 / d with d the rounded square root of N. */
enum { TFM_DIV_FWD_BY_N = 1, TFM_DIV_INV_BY_N = 2, TFM_DIV_BY_SQRTN = 4, TFM_NO_DIV = 8 };

/* ---- Version ----------------------------------------------------------------------------------------------------- */

/** Which library this is. */
typedef struct {
  int32_t major;
  int32_t minor;
  int32_t majorBuild;    /**< build series */
  int32_t build;         /**< build number */
  char target[4];        /**< processor level for which the library was built, zero-terminated */
  const char* name;      /**< file name of the library */
  const char* version;   /**< version as text */
  const char* buildDate; /**< date of the build */
} TfmLibVersion;

/** The one version record. It is read-only and lives as long as the library; never null. */
TFMGEN_API const TfmLibVersion* tfmgenGetLibVersion(void);

/* ---- Lengths of the DFT and Hartley families --------------------------------------------------------------------- */

/** Expands M(N, a, b, c) for each length N from 2 to 64 that has a routine of its own. */
/* clang-format off */
#define TFMGEN_FOR_EACH_LENGTH(M, a, b, c)                                                                             \
  M(2, a, b, c) M(3, a, b, c) M(4, a, b, c) M(5, a, b, c) M(6, a, b, c) M(7, a, b, c) M(8, a, b, c)                    \
  M(9, a, b, c) M(10, a, b, c) M(11, a, b, c) M(12, a, b, c) M(13, a, b, c) M(14, a, b, c) M(15, a, b, c)              \
  M(16, a, b, c) M(17, a, b, c) M(18, a, b, c) M(19, a, b, c) M(20, a, b, c) M(21, a, b, c) M(22, a, b, c)             \
  M(23, a, b, c) M(24, a, b, c) M(25, a, b, c) M(26, a, b, c) M(27, a, b, c) M(28, a, b, c) M(29, a, b, c)             \
  M(30, a, b, c) M(31, a, b, c) M(32, a, b, c) M(33, a, b, c) M(34, a, b, c) M(35, a, b, c) M(36, a, b, c)             \
  M(37, a, b, c) M(38, a, b, c) M(39, a, b, c) M(40, a, b, c) M(41, a, b, c) M(42, a, b, c) M(43, a, b, c)             \
  M(44, a, b, c) M(45, a, b, c) M(46, a, b, c) M(47, a, b, c) M(48, a, b, c) M(49, a, b, c) M(50, a, b, c)             \
  M(51, a, b, c) M(52, a, b, c) M(53, a, b, c) M(54, a, b, c) M(55, a, b, c) M(56, a, b, c) M(57, a, b, c)             \
  M(58, a, b, c) M(59, a, b, c) M(60, a, b, c) M(61, a, b, c) M(62, a, b, c) M(63, a, b, c) M(64, a, b, c)
/* clang-format on */

/** Prototypes of one transform family in one sample type: an entry for each length and the general entry. */
#define TFMGEN_DFT_ENTRY(N, family, suffix, Sample)                                                                    \
  TFMGEN_API TfmStatus tfmg##family##_##N##_##suffix(const Sample* pSrc, Sample* pDst, int32_t flag);

#define TFMGEN_DFT_FAMILY(family, suffix, Sample)                                                                      \
  TFMGEN_FOR_EACH_LENGTH(TFMGEN_DFT_ENTRY, family, suffix, Sample)                                                     \
  TFMGEN_API TfmStatus tfmg##family##_##suffix(const Sample* pSrc, Sample* pDst, int32_t len, int32_t flag);

/** @name Complex DFT, lengths 2 to 64
 *
 * tfmgDFTFwd_CToC_N_32fc(pSrc, pDst, flag), ..._64fc: for k from 0 to N-1
 *
 *     pDst[k] = s * sum over n = 0 .. N-1 of pSrc[n] * exp(-2*pi*i*n*k/N)
 *
 * tfmgDFTInv_CToC_N_32fc, ..._64fc: the same with exp(+2*pi*i*n*k/N).
 *
 *     pSrc  N elements, read only
 *     pDst  N elements
 *     flag  scaling flag; gives s
 *
 * Both arrays may start at any address. They may be the same or overlap in any way: all of pSrc is read before the
 * first element of pDst is written, and the result has the same bits as with separate arrays. Arrays that both start at
 * a multiple of 16 are the fastest.
 *
 * The general entries take the length behind pDst: tfmgDFTFwd_CToC_32fc(pSrc, pDst, len, flag).
 *
 * Statuses in order of precedence:
 *
 *     tfmStsBadSize  len is not 2 .. 64 (general entries only)
 *     tfmStsNullPtr  pSrc or pDst is null
 *     tfmStsBadFlag  flag is not 1, 2, 4 or 8
 * @{ */
TFMGEN_DFT_FAMILY(DFTFwd_CToC, 32fc, Tfm32fc)
TFMGEN_DFT_FAMILY(DFTInv_CToC, 32fc, Tfm32fc)
TFMGEN_DFT_FAMILY(DFTFwd_CToC, 64fc, Tfm64fc)
TFMGEN_DFT_FAMILY(DFTInv_CToC, 64fc, Tfm64fc)
/** @} */

/** @name Real DFT, lengths 2 to 64
 *
 * The spectrum of N real samples is conjugate symmetric, X[N-k] = conj(X[k]), so only bins 0 to N/2 are kept, as a flat
 * array of reals in one of three formats. R(k) and I(k) are the parts of X[k]; I(0), and I(N/2) of even N, are zero.
 *
 *     format          elements       R(0)  0 < k < N/2: R(k), I(k)  R(N/2) of even N  zeros
 *     CCS             2*(N/2) + 2    0     2k,   2k+1               N                 1, and N+1 of even N
 *     Pack            N              0     2k-1, 2k                 N-1               none
 *     Perm, even N    N              0     2k,   2k+1               1                 none
 *     Perm, odd N     N              0     2k-1, 2k                                   none
 *
 * N/2 is rounded down: CCS takes N+2 elements for even N and N+1 for odd N.
 *
 * Forward, tfmgDFTFwd_RToCCS_N_32f, ..._RToPack_..., ..._RToPerm_..., and with _64f: for k = 0 .. N/2
 *
 *     X[k] = s * sum over n = 0 .. N-1 of x[n] * exp(-2*pi*i*n*k/N)
 *
 *     pSrc  x, N elements, read only
 *     pDst  X in the format of the name; every element of the format is written and nothing behind it, the two zeros of
 *           CCS as +0.0 whatever the samples are
 *     flag  scaling flag; gives s
 *
 * Inverse, tfmgDFTInv_CCSToR_N_32f, ..._PackToR_..., ..._PermToR_..., and with _64f: for n = 0 .. N-1
 *
 *     x[n] = s * sum over k = 0 .. N-1 of X[k] * exp(+2*pi*i*n*k/N), with X[N-k] = conj(X[k])
 *
 *     pSrc  X in the format of the name, read only; the zeros of CCS are not read, and may be anything
 *     pDst  x, N elements
 *     flag  scaling flag; gives s
 *
 * Both arrays may start at any address. They may be the same, with the same bits as separate arrays, given room for the
 * longer of the two sides; other overlaps are not allowed. The three formats hold the same bits for the same samples,
 * and give the same samples for the same spectrum.
 *
 * 32-bit transforms multiply by double constants, keep sums of such products in double and round once at their end. The
 * scale of a forward transform may share that rounding, so that an element can differ in its last bit from the element
 * under TFM_NO_DIV times s. Everywhere else it is exactly that product, rounded.
 *
 * The general entries take the length behind pDst: tfmgDFTFwd_RToCCS_32f(pSrc, pDst, len, flag).
 *
 * Statuses in order of precedence:
 *
 *     tfmStsBadSize  len is not 2 .. 64 (general entries only)
 *     tfmStsNullPtr  pSrc or pDst is null
 *     tfmStsBadFlag  flag is not 1, 2, 4 or 8
 * @{ */
TFMGEN_DFT_FAMILY(DFTFwd_RToCCS, 32f, Tfm32f)
TFMGEN_DFT_FAMILY(DFTFwd_RToCCS, 64f, Tfm64f)
TFMGEN_DFT_FAMILY(DFTFwd_RToPack, 32f, Tfm32f)
TFMGEN_DFT_FAMILY(DFTFwd_RToPack, 64f, Tfm64f)
TFMGEN_DFT_FAMILY(DFTFwd_RToPerm, 32f, Tfm32f)
TFMGEN_DFT_FAMILY(DFTFwd_RToPerm, 64f, Tfm64f)
TFMGEN_DFT_FAMILY(DFTInv_CCSToR, 32f, Tfm32f)
TFMGEN_DFT_FAMILY(DFTInv_CCSToR, 64f, Tfm64f)
TFMGEN_DFT_FAMILY(DFTInv_PackToR, 32f, Tfm32f)
TFMGEN_DFT_FAMILY(DFTInv_PackToR, 64f, Tfm64f)
TFMGEN_DFT_FAMILY(DFTInv_PermToR, 32f, Tfm32f)
TFMGEN_DFT_FAMILY(DFTInv_PermToR, 64f, Tfm64f)
/** @} */

/** @name Hartley transform, lengths 2 to 64
 *
 * tfmgHartley_N_32f(pSrc, pDst, flag), ..._64f: for k from 0 to N-1
 *
 *     H[k] = s * sum over n = 0 .. N-1 of x[n] * (cos(2*pi*n*k/N) + sin(2*pi*n*k/N))
 *
 *     pSrc  x, N elements, read only
 *     pDst  H, N elements
 *     flag  scaling flag; gives s. There is no direction: TFM_DIV_FWD_BY_N and TFM_DIV_INV_BY_N both divide by N
 *
 * The transform is its own inverse up to the factor N: twice with TFM_DIV_BY_SQRTN gives x back up to rounding. In
 * terms of the real DFT, H[k] = R(k) - I(k) and H[N-k] = R(k) + I(k) up to rounding.
 *
 * Both arrays may start at any address. They may be the same, with the same bits as separate arrays; other overlaps are
 * not allowed. 32-bit transforms use double constants as the inverse real DFT does, and every output is multiplied by s
 * after it has been rounded.
 *
 * The general entries take the length behind pDst: tfmgHartley_32f(pSrc, pDst, len, flag).
 *
 * Statuses in order of precedence:
 *
 *     tfmStsBadSize  len is not 2 .. 64 (general entries only)
 *     tfmStsNullPtr  pSrc or pDst is null
 *     tfmStsBadFlag  flag is not 1, 2, 4 or 8
 * @{ */
TFMGEN_DFT_FAMILY(Hartley, 32f, Tfm32f)
TFMGEN_DFT_FAMILY(Hartley, 64f, Tfm64f)
/** @} */

/** @name Walsh-Hadamard transform
 *
 * Order m means N = 2^m samples, m from 1 to 13, in natural order: the matrix is H(2N) = [[H(N), H(N)], [H(N), -H(N)]],
 * neither in sequency nor in dyadic order, and nothing is bit-reversed:
 *
 *     pDst[u] = s * sum over v = 0 .. N-1 of (-1)^popcount(u AND v) * pSrc[v]
 *
 * Order 2 without a scale turns (1, 2, 3, 4) into (10, -2, -4, 0). The transform is its own inverse up to a factor: two
 * calls with TFM_DIV_BY_SQRTN give the input back, up to rounding; two calls with TFM_DIV_FWD_BY_N or TFM_DIV_INV_BY_N,
 * which mean the same here, give the input divided by N.
 *
 * Results are exactly those of this procedure, with every operation rounded to the sample type (where not-a-numbers
 * meet, which of them comes through is left open):
 *
 *   1. Copy the input to a[].
 *   2. For h = 1, 2, 4, .. N/2 and every pair (j, j + h) with bit h of j clear, replace a[j] by a[j] + a[j + h] and
 *      a[j + h] by the old a[j] minus the old a[j + h].
 *   3. Store a[j] * s.
 *
 *     pSrc     N elements, read only
 *     pDst     N elements
 *     flag     scaling flag; gives s
 *     pBuffer  work buffer, written before it is read and worthless after the call; it serves one call at a time.
 *              Orders 1 to 7 accept anything here and never look at it. Orders 8 to 13 need as many bytes as
 *              tfmgWHTGetBufferSize tells, at a multiple of 16; a null pointer makes the call get a block of this size
 *              from tfmMalloc and free it with tfmFree before it returns
 *
 * Both arrays may start at any address. They may be the same, with the same bits as separate arrays; other overlaps are
 * not allowed. Arrays that both start at a multiple of 16 are the fastest.
 *
 * The general entries take the order behind pDst: tfmgWHT_32f(pSrc, pDst, order, flag, pBuffer).
 *
 * Statuses in order of precedence:
 *
 *     tfmStsBadSize  order is not 1 .. 13 (general entries only)
 *     tfmStsNullPtr  pSrc or pDst is null
 *     tfmStsBadFlag  flag is not 1, 2, 4 or 8
 *
 * Not checked: the size and the alignment of a pBuffer that is not null (a misaligned one faults, one too small is
 * overrun), and the result of tfmMalloc (no memory means an invalid store). Callers who must survive a lack of memory
 * bring a buffer.
 * @{ */
TFMGEN_API TfmStatus tfmgWHT_1_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_2_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_3_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_4_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_5_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_6_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_7_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_8_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_9_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_10_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_11_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_12_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_13_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t flag, uint8_t* pBuffer);

TFMGEN_API TfmStatus tfmgWHT_1_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_2_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_3_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_4_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_5_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_6_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_7_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_8_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_9_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_10_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_11_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_12_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_13_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t flag, uint8_t* pBuffer);

/** The general entries. */
TFMGEN_API TfmStatus tfmgWHT_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t order, int32_t flag, uint8_t* pBuffer);
TFMGEN_API TfmStatus tfmgWHT_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t order, int32_t flag, uint8_t* pBuffer);

/** Stores the bytes of pBuffer for `order` in *pSize: 0 for orders 1 to 7, at most 73728. tfmStsBadSize when the order
 * is not 1 .. 13, with *pSize untouched. pSize is not checked: it must not be null. */
TFMGEN_API TfmStatus tfmgWHTGetBufferSize_32f(int32_t order, int32_t* pSize);
TFMGEN_API TfmStatus tfmgWHTGetBufferSize_64f(int32_t order, int32_t* pSize);
/** @} */

/** @name DCT-IV
 *
 * The discrete cosine transform of type IV, unnormalised and without a scaling flag:
 *
 *     pDst[k] = sum over n = 0 .. N-1 of pSrc[n] cos(pi (2n+1) (2k+1) / (4N)),   k = 0 .. N-1
 *
 * Two calls in a row multiply by N/2.
 *
 * A plan holds what a length needs. It is a tree of records in one buffer and refers to itself by address: it cannot be
 * copied or moved. A plan is for the sample type that built it; which one that was is not stored, and the functions of
 * the other type must not be given it.
 *
 * Lengths N, with k an exponent:
 *
 *     32-bit   2, 4, 8, 16, 32, and 2^k for k = 6 .. 26
 *     64-bit   2, 4, 8, 16, 32, and 2^k for k = 6 .. 25
 *
 * All others are tfmStsBadSize, but for those that follow, which pass and are of no use:
 *
 * - 2^k + 1, for k = 5 .. 26 (32-bit) and k = 3 .. 25 (64-bit). Plans are built and calls return tfmStsOk, but the
 *   result is no DCT-IV, some elements of pDst keep their old values (at N = 33: 4, 5, 12, 13, 20, 21, 28 and 29), some
 *   are written twice, and element N is read in pSrc and written in pDst: both arrays need N + 1 elements.
 * - 2^30 and 2^30 + 1, with 64-bit samples also 2^29 and 2^29 + 1. Their size exceeds 32 bits and wraps around to a
 *   number far below what such a plan takes. Never build a plan of them: tfmgDCT4Init and tfmgDCT4InitAlloc would write
 *   past the buffer.
 * @{ */
typedef struct TfmgDCT4Plan TfmgDCT4Plan;

/** Stores the bytes of a plan's buffer for `length` in *pSize. tfmStsBadSize for a length without a plan, with *pSize
 * untouched. pSize is not checked: it must not be null. */
TFMGEN_API TfmStatus tfmgDCT4GetSize_32f(int32_t length, int32_t* pSize);
TFMGEN_API TfmStatus tfmgDCT4GetSize_64f(int32_t length, int32_t* pSize);

/** Builds a plan of `length` in pBuffer, which the caller owns, and stores it in *ppPlan. The plan lives until the
 * buffer is freed or used otherwise, and is not given to tfmgDCT4Free.
 *
 * The buffer must hold the bytes that tfmgDCT4GetSize tells; its size is not checked and a smaller one is overrun. Its
 * address may be any, but make it a multiple of 32: where the low 32 bits of the address are negative as a signed
 * number and it is no multiple of 32, the records start up to 31 bytes later than the size allows for. A plan of 2 to
 * 32 then ends up to 31 bytes past its 256 bytes; longer plans have slack enough.
 *
 * Statuses in order of precedence:
 *
 *     tfmStsNullPtr  ppPlan or pBuffer is null
 *     tfmStsBadSize  there is no plan of this length. *ppPlan is untouched, but the build has begun and has written
 *                    into the buffer, possibly more than any accepted length of that magnitude would: ask for the
 *                    size */
TFMGEN_API TfmStatus tfmgDCT4Init_32f(TfmgDCT4Plan** ppPlan, int32_t length, void* pBuffer);
TFMGEN_API TfmStatus tfmgDCT4Init_64f(TfmgDCT4Plan** ppPlan, int32_t length, void* pBuffer);

/** The same in a buffer of tfmMalloc, which tfmgDCT4Free frees.
 *
 * Statuses in order of precedence:
 *
 *     tfmStsNullPtr  ppPlan is null
 *     tfmStsBadSize  there is no plan of this length; nothing has been allocated
 *     tfmStsNullPtr  there is no memory: a failed allocation has no status of its own */
TFMGEN_API TfmStatus tfmgDCT4InitAlloc_32f(TfmgDCT4Plan** ppPlan, int32_t length);
TFMGEN_API TfmStatus tfmgDCT4InitAlloc_64f(TfmgDCT4Plan** ppPlan, int32_t length);

/** Ends a plan of tfmgDCT4InitAlloc and frees its buffer with tfmFree. Who owns a plan's buffer cannot be told: for a
 * plan of tfmgDCT4Init the call is right only when the buffer came from tfmMalloc. tfmStsNullPtr when pPlan is null. */
TFMGEN_API TfmStatus tfmgDCT4Free_32f(TfmgDCT4Plan* pPlan);
TFMGEN_API TfmStatus tfmgDCT4Free_64f(TfmgDCT4Plan* pPlan);

/** Transforms as many samples as the plan's length N.
 *
 *     pSrc   N elements, read only
 *     pDst   N elements
 *     pPlan  the plan. Those of 2 to 32 are only read: any number of threads may share one. From 64 on a call uses
 *            scratch inside the plan: the plan's buffer must be writable and serves one call at a time, each
 *            thread needs a plan of its own
 *
 * Both arrays may start at any address. They may be the same, with the same bits as separate arrays; other overlaps are
 * not allowed.
 *
 * Statuses in order of precedence:
 *
 *     tfmStsNullPtr  pPlan, pSrc or pDst is null
 *     tfmStsBadArg   pPlan points to something that is no plan and this shows in its kind; nothing has been written
 *
 * Nothing else is checked. */
TFMGEN_API TfmStatus tfmgDCT4_32f(const Tfm32f* pSrc, Tfm32f* pDst, TfmgDCT4Plan* pPlan);
TFMGEN_API TfmStatus tfmgDCT4_64f(const Tfm64f* pSrc, Tfm64f* pDst, TfmgDCT4Plan* pPlan);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
