// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Nodes/ZELPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"

class IKWFunctionChannel;
enum KW_RATE : INT32;

/** One input. */
class CPgChannel : public CZELPropertyGroup
{
public:
    using Interface = IKWFunctionChannel;

    explicit CPgChannel(INT32 index);
    ~CPgChannel() override;

    std::shared_ptr<IKWFunctionChannel> GetFIMPointer();
    const char* GetMeanings() const override { return Meanings(); }
    static const char* Meanings();

    /** Time per division. Unit: s/div. Values: 1e-9, 0.001, 100. Default: 0.001. */
    CDbPropNum<double>* GetPrScale() const { return m_pScale; }
    /** Gain. Range: ≤ 100. Default: 2, 4, 6 for the items in turn. */
    CDbPropNum<INT32>* GetPrGain() const { return m_pGain; }
    /** Rate. Values: 10 k, 2.5 µ\s. Default: 10 k, 2.5 µ\s for the items in turn. */
    CDbPropEnum<KW_RATE>* GetPrRate() const { return m_pRate; }
    /** Mask. Range: -9223372036854775808 … 5. Default: -1. */
    CDbPropNum<INT64>* GetPrMask() const { return m_pMask; }
    /** Result: Last reading. */
    CDbPropNum<UINT32>* GetPrReading() const { return m_pReading; }

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;

    CDbPropNum<double>* m_pScale;
    CDbPropNum<INT32>* m_pGain;
    CDbPropEnum<KW_RATE>* m_pRate;
    CDbPropNum<INT64>* m_pMask;
    CDbPropNum<UINT32>* m_pReading;
};
