// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Nodes/ZELPropertyGroup.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"

class IKWFunctionChannel;
enum KW_ONOFF : INT32;
enum KW_RATE : INT32;

/** One input. */
class CPgChannel : public CZELPropertyGroup
{
public:
    using Interface = IKWFunctionChannel;

    CPgChannel();
    ~CPgChannel() override;

    std::shared_ptr<IKWFunctionChannel> GetFIMPointer();
    const char* GetMeanings() const override { return Meanings(); }
    static const char* Meanings();

    /** Time per division. Unit: s/div. Values: 1e-9, 0.001, 100. Default: 0.001. */
    CDbPropNum<double>* GetPrScale() const { return m_pScale; }
    /** Gain. Range: ≥ 0.5. Default: 1. */
    CDbPropNum<double>* GetPrGain() const { return m_pGain; }
    /** Rate. Values: 10 k, 2.5 µ\s. Default: 2.5 µ\s. */
    CDbPropEnum<KW_RATE>* GetPrRate() const { return m_pRate; }
    /** Mask. Default: 65535. */
    CDbPropNum<UINT16>* GetPrMask() const { return m_pMask; }
    /** Small. Range: ≥ -32768. Default: -1. */
    CDbPropNum<INT16>* GetPrSmall() const { return m_pSmall; }
    /** Word. Range: -2147483648 … 5. Default: 0. */
    CDbPropNum<INT32>* GetPrWord() const { return m_pWord; }
    /** Count. Default: 4294967295. */
    CDbPropNum<UINT32>* GetPrCount() const { return m_pCount; }
    /** Long. Range: -9223372036854775808 … 9223372036854775807. Default: 0. */
    CDbPropNum<INT64>* GetPrLong() const { return m_pLong; }
    /** Ticks. Default: 18446744073709551615. */
    CDbPropNum<UINT64>* GetPrTicks() const { return m_pTicks; }
    /** Result: Last reading. */
    CDbPropNum<double>* GetPrReading() const { return m_pReading; }
    /** Result: A result that files carry. */
    CDbPropEnum<KW_ONOFF>* GetPrSavedResult() const { return m_pSavedResult; }

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;

    CDbPropNum<double>* m_pScale;
    CDbPropNum<double>* m_pGain;
    CDbPropEnum<KW_RATE>* m_pRate;
    CDbPropNum<UINT16>* m_pMask;
    CDbPropNum<INT16>* m_pSmall;
    CDbPropNum<INT32>* m_pWord;
    CDbPropNum<UINT32>* m_pCount;
    CDbPropNum<INT64>* m_pLong;
    CDbPropNum<UINT64>* m_pTicks;
    CDbPropNum<double>* m_pReading;
    CDbPropEnum<KW_ONOFF>* m_pSavedResult;
};
