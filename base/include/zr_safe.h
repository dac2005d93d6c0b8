/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * Bounds-checked memory and text calls, with the meaning of C11 Annex K where it has them.
 *
 * No call writes outside [destination, destination + size), and a refused call on a text leaves an empty or a cut text,
 * always terminated. Sizes above SIZE_MAX / 2 are refused as miscomputed negative numbers. There is no
 * constraint handler; the result tells everything. Calls with arguments of their own may run in any number of threads.
 */
#ifndef ZR_SAFE_H
#define ZR_SAFE_H

#include <stdarg.h>
#include <stddef.h>

#include "zr_base.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Fills memory, even where the compiler could prove that nothing reads it afterwards.
 *
 * @param pDest      Memory of ulDestMax bytes.
 * @param ulDestMax  Its size.
 * @param iValue     Byte to fill with, taken as unsigned char.
 * @param ulCount    Bytes to fill, at most ulDestMax.
 * @return 0; EINVAL if pDest is NULL; ERANGE if a size is out of range or ulCount exceeds ulDestMax, and then all
 *         ulDestMax bytes are filled if ulDestMax is in range.
 */
ZR_API int memset_s(void *pDest, size_t ulDestMax, int iValue, size_t ulCount);

/**
 * Copies at most ulCount characters of a text and terminates the copy.
 *
 * @param pcDest     Buffer of ulDestMax bytes; must not overlap the source.
 * @param ulDestMax  Its size, at least 1.
 * @param pcSource   Text; need not be terminated when it has ulCount characters.
 * @param ulCount    Most characters to copy.
 * @return 0; EINVAL if a pointer is NULL, ulDestMax is 0 or the two overlap; ERANGE if a size is out of range or the
 *         characters and the NUL do not fit. A refused call makes pcDest an empty text wherever it can be written.
 */
ZR_API int strncpy_s(char *pcDest, size_t ulDestMax, const char *pcSource, size_t ulCount);

/**
 * Formats a text of at most ulCount characters. The conversion %n is refused.
 *
 * @param pcDest     Buffer of ulDestMax bytes; no argument may lie in it.
 * @param ulDestMax  Its size, at least 1.
 * @param ulCount    Most characters to write, the NUL not counted.
 * @param pcFormat   printf-style format.
 * @return The length of the text. -1 if it is longer than ulCount or ulDestMax - 1, and then as many characters as fit
 *         and a NUL are written; -1 with an empty text for a bad argument or a failed conversion.
 */
ZR_API int snprintf_s(char *pcDest, size_t ulDestMax, size_t ulCount, const char *pcFormat, ...) ZR_PRINTF(4, 5);

/** snprintf_s with an argument list, which is undefined afterwards. */
ZR_API int vsnprintf_s(char *pcDest, size_t ulDestMax, size_t ulCount, const char *pcFormat, va_list stArgs)
    ZR_PRINTF(4, 0);

/**
 * Reads values out of a text. The format knows white space, literal characters, "%%" and these conversions, without
 * widths or modifiers:
 *   %d           int *: decimal number
 *   %u           unsigned *: decimal number
 *   %x           unsigned *: hexadecimal number, with or without 0x
 *   %s           char *, unsigned: word up to white space, and the size of its buffer, NUL included
 *   %c           char *, unsigned: one character, and the size of its buffer, at least 1; no NUL is added
 *   %n           int *: characters read so far; not counted in the result
 * A number may have a sign. One that does not fit its type ends the reading and is not stored, and so is a minus before
 * an unsigned number other than 0. A word that does not fit ends the reading and leaves an empty text.
 *
 * @param pcText    Text to read.
 * @param pcFormat  Format.
 * @return Number of values stored. -1 if the text ends before the first of them is reached, if a pointer is NULL, or if
 *         the format has anything else; in that last case nothing is stored at all.
 */
ZR_API int sscanf_s(const char *pcText, const char *pcFormat, ...);

#ifdef __cplusplus
}
#endif

#endif /* ZR_SAFE_H */
