// SPDX-License-Identifier: MIT
#pragma once

#include "Mathematics/Mathematics.h"

#include <memory>

class IKWFunctionZEL;

/** The mathematics channel of the tree over records. Keeps the tree alive. For one thread at a
    time, such as that of a display. */
class KW_EXPORT IKWMathematicsCurve
{
public:
    virtual ~IKWMathematicsCurve();

    /**
     * The curve of a record by the present settings, with 16 bit. While Mathematics/AutoScale is
     * on, each curve has the scale that its values ask for, else that of the settings. The tree's
     * lock is taken only when something has changed since the last time.
     *
     * @param reference as CKWMathematics::Compute has it
     * @return the codes of CKWMathematics::Compute; eKW_ACC_NOTHING_TO_ACT_ON also while the
     *         channel is off, eKW_ACC_BAD_TEXT while its expression can not be computed
     */
    virtual KW_ACCEPTANCE Compute(const CKWRecord& record, CKWRecord& curve,
                                  const CKWRecord& reference = {}) = 0;

    /** Whether the curve may be another one now, or FindScale was asked for: compute the record
       that is shown again. Never blocks. */
    virtual bool HasChanged() const = 0;

    /**
     * Delivers Mathematics/Scale and Position, found from the curve that was computed last: when
     * FindScale was asked for before it; while AutoScale is on, when the curve leaves the screen,
     * or half of the present scale would do. So a curve does not tremble with its noise. Takes the
     * tree's lock when there is something to deliver; leaves AutoScale as it is, and no step.
     */
    virtual void Deliver() = 0;
};

/** Null without a root. `records`: curves that may be held at once, as CKWMathematics has it. */
KW_EXPORT std::shared_ptr<IKWMathematicsCurve>
KW_MakeMathematicsCurve(std::shared_ptr<IKWFunctionZEL> root, UINT32 records = 4);
