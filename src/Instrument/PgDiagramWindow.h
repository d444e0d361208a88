// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgDiagramWindowBase.h"
#include "KWEnumerationsOnOff.h"

/** One diagram; its place on the screen is given by CPgDiagrams. */
class CPgDiagramWindow : public CPgDiagramWindowBase
{
public:
    using CPgDiagramWindowBase::CPgDiagramWindowBase;

    bool IsVisible() const { return m_pVisible->Get() == eKW_ONOFF_ON; }

    /** Pixels from the upper left corner of the screen. */
    struct t_Place
    {
        INT32 left;
        INT32 top;
        INT32 width;
        INT32 height;
    };
    /** Led by CPgDiagrams. */
    void SetPlace(const t_Place& place);
};
