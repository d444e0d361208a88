// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "Streams/Record.h"

#include <vector>

/**
 * A mask: a line above and a line below a trace, in divisions of the screen. Nothing here needs a
 * tree; all may be called from any thread. What is refused changes nothing.
 */

/** A point of a line. */
struct KW_MaskPoint
{
    double x = 0.0;     ///< divisions from the left edge of the screen, which ends at 10
    double y = 0.0;     ///< divisions above the middle of the screen, whose edges are ± 4
    bool isEnd = false; ///< a gap follows: no line from here to the next point

    bool operator==(const KW_MaskPoint& other) const = default; ///< all fields
};

/**
 * Points from left to right, straight lines between them. At a point the line has the point's
 * level; several at the same place are a step, and the one that leaves the trace more room counts.
 * There is no limit before the first point, behind the last one, and in gaps.
 */
using KW_MaskLine = std::vector<KW_MaskPoint>;

/** What a division is: the picture in which a mask was made, or in which a trace is shown. */
struct KW_MaskFrame
{
    KW_UNIT unit = eKW_UNIT_NOT_DEFINED; ///< of levels
    double left = 0.0;                   ///< time at x = 0 against the trigger, s
    double timeScale = 1.0;              ///< s in a division; > 0
    double middle = 0.0;                 ///< level at y = 0
    double levelScale = 1.0;             ///< of a division; > 0

    bool operator==(const KW_MaskFrame& other) const = default; ///< all fields
};

/** The mask of one channel; one without points limits nothing. */
struct KW_Mask
{
    KW_MaskFrame frame; ///< in which it was made
    KW_MaskLine upper;  ///< a trace may touch it
    KW_MaskLine lower;  ///< likewise

    /** Neither line has a point. */
    bool IsEmpty() const { return upper.empty() && lower.empty(); }
    bool operator==(const KW_Mask& other) const = default; ///< all fields
};

/** Bounds of masks. */
enum KW_MASK_BOUND : UINT32
{
    eKW_MASK_POINTS = 4096,      ///< of one line
    eKW_MASK_FARTHEST = 1000000, ///< divisions of a point from 0, in both directions
};

/** Whether all numbers of a frame are finite, and scales above 0. */
KW_EXPORT bool KW_IsMaskFrame(const KW_MaskFrame& frame);

/** eKW_ACC_OK; eKW_ACC_NOT_A_NUMBER for a frame that is none, and as KW_CheckMaskLine. */
KW_EXPORT KW_ACCEPTANCE KW_CheckMask(const KW_Mask& mask);

/** eKW_ACC_OK; eKW_ACC_CONTAINER_FULL for too many points, eKW_ACC_OUTSIDE_DECLARED for one beyond
    the bounds or NaN, eKW_ACC_LIMITS_CROSSED for one to the left of the point before it. */
KW_EXPORT KW_ACCEPTANCE KW_CheckMaskLine(const KW_MaskLine& line);

/**
 * Lays a mask around what a screen shows of a trace, settling points and invalid ones left out: at
 * least `widthX` and `widthY` divisions away from it, at most 0.04 divisions more to the left and
 * right. What lies outside of the screen counts as far as it could move into it. Lines are made of
 * at most 501 points each, 0.02 divisions apart. The trace itself always passes. Where it has no
 * points within `widthX` there is a gap.
 *
 * @param mask gets the mask, with `frame`
 * @return eKW_ACC_BAD_INDEX for a place without a trace, eKW_ACC_WRONG_KIND for digital lines or a
 *         frame of another unit, eKW_ACC_NOT_A_NUMBER for a frame that is none,
 *         eKW_ACC_OUTSIDE_DECLARED for a width below 0, a `widthX` above 10 or a `widthY`
 *         beyond the bounds,
 *         eKW_ACC_NOTHING_TO_ACT_ON when the screen shows no valid point
 */
KW_EXPORT KW_ACCEPTANCE KW_MakeMask(const CKWRecord& record, UINT32 trace,
                                    const KW_MaskFrame& frame, double widthX, double widthY,
                                    KW_Mask& mask);

/** The mask stretched about the middle between its highest and its lowest point, then shifted
    upwards; levels beyond the bounds are limited to them.
    @param positionY divisions
    @param stretchY  factor, 1 for none
    @return eKW_ACC_NOT_A_NUMBER for numbers that are none */
KW_EXPORT KW_ACCEPTANCE KW_PlaceMask(KW_Mask& mask, double positionY, double stretchY);

/** Gives the mask another frame, in which it has the same levels and times as before.
    @return eKW_ACC_NOT_A_NUMBER for a frame that is none, eKW_ACC_WRONG_KIND for one of another
            unit, eKW_ACC_OUTSIDE_DECLARED when a point would lie beyond the bounds */
KW_EXPORT KW_ACCEPTANCE KW_MoveMaskToFrame(KW_Mask& mask, const KW_MaskFrame& frame);

/** Edit a line.
    @return eKW_ACC_BAD_INDEX; of a new point the codes of KW_CheckMaskLine */
///@{
/** Inserts it behind those at the same place or to the left of it. */
KW_EXPORT KW_ACCEPTANCE KW_InsertMaskPoint(KW_MaskLine& line, const KW_MaskPoint& point);
/** eKW_ACC_LIMITS_CROSSED beyond its neighbours. */
KW_EXPORT KW_ACCEPTANCE KW_MoveMaskPoint(KW_MaskLine& line, UINT32 index,
                                         const KW_MaskPoint& point);
KW_EXPORT KW_ACCEPTANCE KW_RemoveMaskPoint(KW_MaskLine& line, UINT32 index);
///@}

/** Levels of both lines at a place, in divisions; infinite where there is none. */
KW_EXPORT KW_MinMax KW_GetMaskLimits(const KW_Mask& mask, double x);
