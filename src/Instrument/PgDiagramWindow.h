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

    struct t_Place
    {
        INT32 left;
        INT32 top;
        INT32 width;
        INT32 height;
    };
    void SetPlace(const t_Place& place);
};
