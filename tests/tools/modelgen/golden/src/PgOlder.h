// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Nodes/ZELPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropNum.h"

class IKWFunctionOlder;

/** What only a removed array holds. */
class CPgOlder : public CZELPropertyGroup
{
public:
    using Interface = IKWFunctionOlder;

    CPgOlder();
    ~CPgOlder() override;

    std::shared_ptr<IKWFunctionOlder> GetFIMPointer();
    const char* GetMeanings() const override { return Meanings(); }
    static const char* Meanings();

    /** Level. Default: 3. */
    CDbPropNum<INT32>* GetPrLevel() const { return m_pLevel; }

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;

    CDbPropNum<INT32>* m_pLevel;
};
