// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumCursorBase.h"

/** One cursor. A reset moves this cursor alone, as both could not come to their defaults
    otherwise. */
class CPgSpectrumCursor : public CPgSpectrumCursorBase
{
public:
    using CPgSpectrumCursorBase::CPgSpectrumCursorBase;

    t_Couplings Rules() const override;

private:
    void Reset();
};
