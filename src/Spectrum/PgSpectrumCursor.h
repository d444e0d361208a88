// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumCursorBase.h"

class CPgSpectrumCursors;

/** One cursor; it tells its pair when it moves. A reset moves this cursor alone, as both could
    not come to their defaults otherwise. */
class CPgSpectrumCursor : public CPgSpectrumCursorBase
{
public:
    using CPgSpectrumCursorBase::CPgSpectrumCursorBase;

    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;

private:
    CPgSpectrumCursors* Pair(INT32& index) const;
};
