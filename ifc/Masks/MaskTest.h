// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsReadings.h"
#include "Masks/Mask.h"

/**
 * Test of traces by masks. Each valid point is compared as it is, in doubles; between points there
 * is nothing to compare. Point k of a trace lies at
 *
 *     x = ((start + k × interval) − left) / timeScale
 *     y = ((sample × scale + offset) − middle) / levelScale
 *
 * and violates a line when it lies beyond the level that the line has at x; between two points of
 * a line this is y0 + (y1 − y0) × ((x − x0) / (x1 − x0)), held between y0 and y1. Of pairs of
 * minimum and maximum both are compared. Settling points and invalid ones are left out. The result
 * is the same on every machine.
 *
 * Any thread; nothing waits or takes memory.
 */

/** A stretch of points, one after the other, that are beyond a line. An invalid point ends it. */
struct KW_MaskViolation
{
    KW_ZEL_LIMIT line = eKW_ZEL_LIMIT_INSIDE; ///< overflow: the upper one, underflow: the lower one
    UINT32 first = 0;                         ///< its first point in the trace
    UINT32 last = 0;                          ///< and its last one
    UINT32 worst = 0;                         ///< the first of those that are farthest beyond
    double excess = 0.0;                      ///< how far this is, in divisions; > 0

    bool operator==(const KW_MaskViolation& other) const = default; ///< all fields
};

/**
 * Tells the lines that a trace crosses. Looks at blocks of points first: a trace that passes takes
 * less than half of the time of one pass over its points.
 *
 * @param frame  picture in which the mask stands: that of the screen, or the mask's own where it
 *               keeps its levels and times
 * @param first  point to begin with, for records that grow
 * @param line   gets what was crossed
 * @return eKW_ACC_BAD_INDEX for a place without a trace, eKW_ACC_WRONG_KIND for digital lines or a
 *         frame of another unit, eKW_ACC_NOT_A_NUMBER for a frame that is none; what is refused
 *         changes nothing
 */
KW_EXPORT KW_ACCEPTANCE KW_TestMask(const CKWRecord& record, UINT32 trace, const KW_Mask& mask,
                                    const KW_MaskFrame& frame, UINT32 first, KW_ZEL_LIMIT& line);

/**
 * Finds the places where a trace violates its mask, those that end first before others. Looks at
 * each point near a violation: for threads that have the time.
 *
 * @param violations gets as many as it has room for
 * @param count      gets how many there are
 * @return as KW_TestMask
 */
KW_EXPORT KW_ACCEPTANCE KW_FindMaskViolations(const CKWRecord& record, UINT32 trace,
                                              const KW_Mask& mask, const KW_MaskFrame& frame,
                                              std::span<KW_MaskViolation> violations,
                                              UINT32& count);
