// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/**
 * Amplitude side of the screen: the ladder of vertical scales, and the conversions between scale,
 * position, offset and the physical values at the screen's top and bottom.
 *
 * Stateless; every function may be called from any thread and allocates nothing unless it reports.
 * Reports are errors from "src/IKWFunctionZELHelpers". Values are in the channel's unit, scales in
 * that unit per division.
 *
 * The ladder has the steps 1, 2, 4 and 5 in every decade. The step 4 is wanted: it keeps a signal
 * that just left the 2 step larger on the screen than the 5 step would, and both directions of the
 * ladder know it, so that stepping up and down meets the same scales.
 */
class KW_EXPORT CZELDatabaseHelperVertical
{
public:
    /** Physical height of `divisions` divisions: divisions × scale. */
    static double GetPhysicalValueRange(const double& scale, const double& divisions);

    /** Physical value in the middle of the screen: offset − position × scale, with the position in
        divisions. */
    static double GetPhysicalValueOffset(const double& offset, const double& position,
                                         const double& scale);

    /** Height between two physical values: top − bottom. */
    static double GetRangeFromTopBottom(const double& top, const double& bottom);

    /** Middle of two physical values: (top + bottom) × 0.5. */
    static double GetOffsetFromTopBottom(const double& top, const double& bottom);

    /**
     * The smallest scale of the ladder that is not below `scale`.
     *
     * With e = floor(log10(scale)), p = 10^e and t = p + scale × 1e-8, the result is `scale` itself
     * up to t, 2p up to 2t, 4p up to 4t, 5p up to 5t, and 10^(e + 1) above; all comparisons are
     * tolerant. The allowance in t grows with the step and lets a scale that lies a relative 1e-8
     * above a step still count as that step; only the decade's own step passes the argument on as
     * it is. Zero and +infinity give themselves; a negative scale and NaN have no logarithm and
     * give NaN. Never reports.
     */
    static double GetNextHighestScale(const double& scale);

    /** The smallest scale that shows `range` on `divisions` divisions: the form above of
        range / divisions. Zero divisions report "The number of vertical divisions is zero." and
        give 0.0. */
    static double GetNextHighestScale(const double& range, UINT32 divisions);

    /**
     * The greatest scale of the ladder that is not above `scale`.
     *
     * With p as above and r = scale / p, the result is p for r below 2, 2p below 4, 4p below 5 and
     * 5p below 10, by tolerant comparisons. A scale that lies within the tolerance below the next
     * decade is that decade. Zero, a negative scale, infinity and NaN report "Next lowest scale
     * could not be calculated. Scale = …, scale from exponent = …, ratio = …" and give 0.0, as do
     * the denormal scales whose power of ten is too small for a double.
     */
    static double GetNextLowestScale(const double& scale);
};
