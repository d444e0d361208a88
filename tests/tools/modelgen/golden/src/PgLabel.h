// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Nodes/ZELPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropNum.h"

class IKWFunctionLabel;

/** A named item. */
class CPgLabel : public CZELPropertyGroup
{
public:
    using Interface = IKWFunctionLabel;

    CPgLabel();
    ~CPgLabel() override;

    std::shared_ptr<IKWFunctionLabel> GetFIMPointer();
    const char* GetMeanings() const override { return Meanings(); }
    static const char* Meanings();

    /** Key of the item. Default: 0. */
    CDbPropNum<INT32>* GetPrKey() const { return m_pKey; }

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;

    CDbPropNum<INT32>* m_pKey;
};
