// SPDX-License-Identifier: MIT
#pragma once

#include "Spectrum/PgSpectrumCursorsBase.h"

/** The pair of cursors. The differences that it shows are also what a coupled pair keeps. */
class CPgSpectrumCursors : public CPgSpectrumCursorsBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    void UpdateGroup() override;

    /** A client moved a number of a cursor: a coupled partner follows by the same difference, as
        far as its limits let it, which is reported as a warning. */
    void OnCursorMoved(INT32 index);

private:
    void SetToScreen();
};
