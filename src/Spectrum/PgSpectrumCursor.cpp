// SPDX-License-Identifier: MIT
#include "Spectrum/PgSpectrumCursor.h"

#include "CheckedAccess.h"
#include "Spectrum/PgSpectrumCursors.h"
#include "Spectrum/PgaSpectrumCursor.h"

KW_ACCEPTANCE CPgSpectrumCursor::OnPropertySet(const CDbPropBase* property)
{
    INT32 index = 0;
    if (CPgSpectrumCursors* const pair = Pair(index))
    {
        pair->OnCursorMoved(index);
    }
    return CPgSpectrumCursorBase::OnPropertySet(property);
}

KW_ACCEPTANCE CPgSpectrumCursor::OnFunction(const CDbFunction* function)
{
    if (function == m_pReset)
    {
        INT32 index = 0;
        KW_CHECKED(m_pHorizontal->DbSet(m_pHorizontal->GetDefault()));
        if (CPgSpectrumCursors* const pair = Pair(index))
        {
            pair->UpdateGroup();
        }
    }
    return CPgSpectrumCursorBase::OnFunction(function);
}

CPgSpectrumCursors* CPgSpectrumCursor::Pair(INT32& index) const
{
    const auto* const container = dynamic_cast<const CPgaSpectrumCursor*>(GetParent());
    if (container == nullptr)
    {
        return nullptr;
    }
    index = container->PositionOf(*this);
    return dynamic_cast<CPgSpectrumCursors*>(container->GetParent());
}
