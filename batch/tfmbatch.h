/* tfmbatch: many short linear transforms of one length in one call.
 *
 * Every frame gets the bits that a call of tfmgen gives it, on every processor, whatever the layout and the number of
 * frames. Frames run side by side in the lanes of the processor's registers, 128, 256 or 512 bits wide.
 *
 * Plain C99, usable from C++. Every function returns a status, keeps no state, allocates nothing, takes no lock, throws
 * nothing and prints nothing; there is no set-up call. It may run on any number of threads at once, as long as no two
 * calls write the same memory. A batch is split among threads by frames: with `first` frames before it, a thread's part
 * of `count` frames is
 *
 *   tfmbHartley_32f(pSrc + first * src.distance, src, pDst + first * dst.distance, dst, len, count, flag)
 *
 * and parts of a multiple of 16 frames, with whole cache lines of the destination in each, run best. */
#ifndef TFMBATCH_H
#define TFMBATCH_H

#include <tfmgen.h>

#include <stdint.h>

#if defined(__GNUC__)
#define TFMBATCH_API __attribute__((visibility("default")))
#else
#define TFMBATCH_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Layout of frames -------------------------------------------------------------------------------------------- */

/* Element n of frame f is p[f * distance + n * step]; both count elements (complex ones where the array is complex) and
 * may be negative.
 *
 *   {1, len}       frames one behind the other. A spectrum in CCS format has more elements than its signal has samples:
 *                  {1, len / 2 * 2 + 2}
 *   {1, hop}       source frames that overlap, as of a spectrogram
 *   {channels, 1}  interleaved frames: sample n of every channel, then sample n + 1
 *   {1, 0}         the same source frame again and again
 *
 * The first two and the third are fastest; source and destination may differ in layout. */
typedef struct {
  int64_t step;     /* from an element of a frame to the next */
  int64_t distance; /* from a frame to the next */
} TfmbLayout;

/* ---- Arguments --------------------------------------------------------------------------------------------------- */

/* All functions take the source and its layout, the destination and its layout, the length of the transform, the number
 * of frames and the scaling flag. What a function computes of each frame, how many elements its arrays have and what
 * the flag means is told beside the tfmgen function of the same name.
 *
 * Arrays start at any address. Source frames may share elements. No element of the destination may belong to two
 * frames, or to a frame twice. Source and destination are disjoint, or the call is in place: the same pointer, step and
 * distance on both sides, room in each frame for the longer of both. Elements between steps and frames are neither read
 * nor written.
 *
 * Statuses, in order of precedence:
 *
 *   tfmStsBadSize   `len` is not in 2 .. 64, or `count` is negative
 *   tfmStsNullPtr   `pSrc` or `pDst` is null
 *   tfmStsBadFlag   `flag` is none of the four
 *   tfmStsOk        all frames are transformed. A count of 0 touches neither array. */

/* ---- Complex DFT ------------------------------------------------------------------------------------------------- */

TFMBATCH_API TfmStatus tfmbDFTFwd_CToC_32fc(const Tfm32fc* pSrc, TfmbLayout srcLayout, Tfm32fc* pDst,
                                            TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTFwd_CToC_64fc(const Tfm64fc* pSrc, TfmbLayout srcLayout, Tfm64fc* pDst,
                                            TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTInv_CToC_32fc(const Tfm32fc* pSrc, TfmbLayout srcLayout, Tfm32fc* pDst,
                                            TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTInv_CToC_64fc(const Tfm64fc* pSrc, TfmbLayout srcLayout, Tfm64fc* pDst,
                                            TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);

/* ---- Real DFT to a half spectrum -------------------------------------------------------------------------------- */

TFMBATCH_API TfmStatus tfmbDFTFwd_RToCCS_32f(const Tfm32f* pSrc, TfmbLayout srcLayout, Tfm32f* pDst,
                                             TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTFwd_RToCCS_64f(const Tfm64f* pSrc, TfmbLayout srcLayout, Tfm64f* pDst,
                                             TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTFwd_RToPack_32f(const Tfm32f* pSrc, TfmbLayout srcLayout, Tfm32f* pDst,
                                              TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTFwd_RToPack_64f(const Tfm64f* pSrc, TfmbLayout srcLayout, Tfm64f* pDst,
                                              TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTFwd_RToPerm_32f(const Tfm32f* pSrc, TfmbLayout srcLayout, Tfm32f* pDst,
                                              TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTFwd_RToPerm_64f(const Tfm64f* pSrc, TfmbLayout srcLayout, Tfm64f* pDst,
                                              TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);

/* ---- Half spectrum to real samples ------------------------------------------------------------------------------- */

/* Elements of a CCS spectrum that are zero by definition have no effect. In place, elements of a frame beyond its
 * samples stay as they are. */
TFMBATCH_API TfmStatus tfmbDFTInv_CCSToR_32f(const Tfm32f* pSrc, TfmbLayout srcLayout, Tfm32f* pDst,
                                             TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTInv_CCSToR_64f(const Tfm64f* pSrc, TfmbLayout srcLayout, Tfm64f* pDst,
                                             TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTInv_PackToR_32f(const Tfm32f* pSrc, TfmbLayout srcLayout, Tfm32f* pDst,
                                              TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTInv_PackToR_64f(const Tfm64f* pSrc, TfmbLayout srcLayout, Tfm64f* pDst,
                                              TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTInv_PermToR_32f(const Tfm32f* pSrc, TfmbLayout srcLayout, Tfm32f* pDst,
                                              TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbDFTInv_PermToR_64f(const Tfm64f* pSrc, TfmbLayout srcLayout, Tfm64f* pDst,
                                              TfmbLayout dstLayout, int32_t len, int64_t count, int32_t flag);

/* ---- Hartley ----------------------------------------------------------------------------------------------------- */

TFMBATCH_API TfmStatus tfmbHartley_32f(const Tfm32f* pSrc, TfmbLayout srcLayout, Tfm32f* pDst, TfmbLayout dstLayout,
                                       int32_t len, int64_t count, int32_t flag);
TFMBATCH_API TfmStatus tfmbHartley_64f(const Tfm64f* pSrc, TfmbLayout srcLayout, Tfm64f* pDst, TfmbLayout dstLayout,
                                       int32_t len, int64_t count, int32_t flag);

#ifdef __cplusplus
}
#endif

#endif
