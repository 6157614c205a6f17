/* tfmcore: memory for the tfm libraries.
 *
 * A program may supply its own definitions of both functions; tfmgen reaches memory by these two names only. */
#ifndef TFMCORE_H
#define TFMCORE_H

#include <stdint.h>

#if defined(__GNUC__)
#define TFMCORE_API __attribute__((visibility("default")))
#else
#define TFMCORE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* A block of `byteCount` bytes whose address is a multiple of 64, or a null pointer when there is no memory or when
 * `byteCount` is negative. A count of 0 gives a block of its own with no usable byte, to be freed like any other. */
TFMCORE_API void* tfmMalloc(int32_t byteCount);

/* Frees a block of tfmMalloc. A null pointer is accepted and does nothing. */
TFMCORE_API void tfmFree(void* block);

#ifdef __cplusplus
}
#endif

#endif
