// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#include "CommonDatabase/Handles/DbHandles.h"
#include "IKWFunctionChannel.h"
#include "IKWFunctionDemo.h"
#include "IKWFunctionTexts.h"
#include "PgChannel.h"
#include "PgDemoBase.h"
#include "PgaChannel.h"
#include "Words/PgTexts.h"
#include "Words/PgmTexts.h"

namespace
{
class CFIMDemo final : public CDbRootHandle<IKWFunctionDemo, CPgDemoBase>
{
public:
    using CDbRootHandle::CDbRootHandle;
    std::shared_ptr<IKWFunctionTexts> GetPgTexts() const override
    {
        return m_node.GetPgTexts()->GetFIMPointer();
    }
    std::shared_ptr<IKWNumericProperty<double>> GetPrGone() const override
    {
        return m_node.GetRemovedGone()->GetFIMPointer();
    }
    std::shared_ptr<IKWAction> GetPrPreset() const override
    {
        return m_node.GetPrPreset()->GetFIMPointer();
    }
    std::shared_ptr<IKWArray<IKWFunctionChannel>> GetPgOlder() const override
    {
        return m_node.GetRemovedOlder()->GetFIMPointer();
    }
    std::shared_ptr<IKWAction> GetPrBegin() const override
    {
        return m_node.GetRemovedBegin()->GetFIMPointer();
    }
    std::shared_ptr<IKWArray<IKWFunctionChannel>> GetPgChannel() const override
    {
        return m_node.GetPgChannel()->GetFIMPointer();
    }
    std::shared_ptr<IKWEnumProperty<KW_PROBE>> GetPrState() const override
    {
        return m_node.GetPrState()->GetFIMPointer();
    }
    std::shared_ptr<IKWMap<IKWFunctionTexts>> GetPgLabel() const override
    {
        return m_node.GetPgLabel()->GetFIMPointer();
    }
    std::shared_ptr<IKWOperation> GetPrStop() const override
    {
        return m_node.GetPrStop()->GetFIMPointer();
    }
};

class CFIMChannel final : public CDbGroupHandle<IKWFunctionChannel, CPgChannel>
{
public:
    using CDbGroupHandle::CDbGroupHandle;
    std::shared_ptr<IKWNumericProperty<INT32>> GetPrGain() const override
    {
        return m_node.GetPrGain()->GetFIMPointer();
    }
    std::shared_ptr<IKWNumericProperty<double>> GetPrScale() const override
    {
        return m_node.GetPrScale()->GetFIMPointer();
    }
    std::shared_ptr<IKWEnumProperty<KW_RATE>> GetPrRate() const override
    {
        return m_node.GetPrRate()->GetFIMPointer();
    }
    std::shared_ptr<IKWNumericProperty<INT64>> GetPrMask() const override
    {
        return m_node.GetPrMask()->GetFIMPointer();
    }
    std::shared_ptr<IKWNumericProperty<UINT32>> GetPrReading() const override
    {
        return m_node.GetPrReading()->GetFIMPointer();
    }
};
} // namespace

IKWFunctionDemo::~IKWFunctionDemo() = default;

CPgDemoBase::CPgDemoBase()
{
    SetPropertyListSize(1);
    AddPropertyToList(m_pState = new CDbPropEnum<KW_PROBE>, QStringLiteral("State"));
    SetSaveRecallType(m_pState, 1, true);
    SetPropGroupListSize(3);
    AddPropGroupToList(m_pChannel = new CPgaChannel(1, 15), QStringLiteral("Channel"));
    m_pChannel->DbSetSize(4);
    AddPropGroupToList(m_pLabel = new CPgmTexts(100), QStringLiteral("Label"));
    m_pLabel->SetNamePattern(QStringLiteral("Label%1"));
    AddPropGroupToList(m_pTexts = new CPgTexts, QStringLiteral("Texts"));
    AddObject(m_pPreset = new CDbFunction, QStringLiteral("Preset"));
    AddObject(m_pStop = new CDbOperation, QStringLiteral("Stop"));
    m_pGone = MakeRemoved(new CDbPropNum<double>, QStringLiteral("Gone"));
    m_pGone->DeclareUnit(eKW_UNIT_NONE);
    m_pGone->DeclareMinAndMax(1.0, CDbPropNum<double>::kHighest);
    m_pGone->DeclareStep(1.0);
    m_pGone->DbSetDefault(2.5);
    m_pOlder = MakeRemoved(new CPgaChannel(0, 2147483647), QStringLiteral("Older"));
    m_pOlder->DbSetSize(2);
    m_pBegin = MakeRemoved(new CDbFunction, QStringLiteral("Begin"));
}

CPgDemoBase::~CPgDemoBase() = default;

std::unique_ptr<IKWFunctionBase> CPgDemoBase::CreateFIM()
{
    return std::make_unique<CFIMDemo>(*this);
}

std::shared_ptr<IKWFunctionDemo> CPgDemoBase::GetFIMPointer()
{
    return FIMPointer<IKWFunctionDemo>();
}

const char* CPgDemoBase::Meanings()
{
    return "Root of the demonstration.\001STATE\001STOp\0"
           "A selector with the frame's default.\0"
           "Sets the defaults\0"
           "Stops the acquisition.\0";
}

IKWFunctionChannel::~IKWFunctionChannel() = default;

CPgChannel::CPgChannel(INT32 index)
{
    SetPropertyListSize(5);
    AddPropertyToList(m_pScale = new CDbPropNum<double>, QStringLiteral("Scale"));
    m_pScale->DeclareUnit(eKW_UNIT_FREQ_S_DIV);
    m_pScale->DeclareMinAndMax(1e-09, 100.0);
    m_pScale->DeclareStepMode(eSTEPMODE_LIST);
    m_pScale->DeclareValueList({1e-09, 0.001, 100.0});
    m_pScale->DbSetDefault(0.001);
    SetSaveRecallType(m_pScale, 2, true);
    AddPropertyToList(m_pGain = new CDbPropNum<INT32>, QStringLiteral("Gain"));
    m_pGain->DeclareMinAndMax(CDbPropNum<INT32>::kLowest, 100);
    m_pGain->DeclareStep(2);
    m_pGain->DeclareStepMode(eSTEPMODE_FACTOR);
    m_pGain->DeclareStepFactor(1.5);
    m_pGain->DeclareStepBehaviour(eSTEP_BEHAVIOUR_WRAP);
    m_pGain->DeclareResolution(2);
    m_pGain->DeclareFormat(eNUMBERFORMAT_ENGINEERING);
    m_pGain->DbSetDefault(ItemDefault<INT32>(index, {2, 4, 6}, 2));
    SetSaveRecallType(m_pGain, 2, true);
    AddPropertyToList(m_pRate = new CDbPropEnum<KW_RATE>, QStringLiteral("Rate"));
    m_pRate->DeclareEnabledValues({eKW_RATE_10K, eKW_RATE_2U5});
    m_pRate->DbSetDefault(ItemDefault<INT32>(index, {eKW_RATE_10K, eKW_RATE_2U5}, eKW_RATE_2U5));
    SetSaveRecallType(m_pRate, 2, true);
    AddPropertyToList(m_pMask = new CDbPropNum<INT64>, QStringLiteral("Mask"));
    m_pMask->DeclareMinAndMax((-9223372036854775807LL - 1), 5LL);
    m_pMask->DeclareBitGroupSize(4);
    m_pMask->DeclareFormat(eNUMBERFORMAT_HEX);
    m_pMask->DbSetDefault(-1LL);
    m_pMask->DeclareConfirm();
    SetSaveRecallType(m_pMask, 0, true);
    AddPropertyToList(m_pReading = new CDbPropNum<UINT32>, QStringLiteral("Reading"));
    m_pReading->SetObjectType(eOBJECTTYPE_RESULT);
    m_pReading->DeclareUnit(eKW_UNIT_NONE);
    m_pReading->DeclareMeasured(eMEASURED::Reading);
    SetSaveRecallType(m_pReading, 0, true);
}

CPgChannel::~CPgChannel() = default;

std::unique_ptr<IKWFunctionBase> CPgChannel::CreateFIM()
{
    return std::make_unique<CFIMChannel>(*this);
}

std::shared_ptr<IKWFunctionChannel> CPgChannel::GetFIMPointer()
{
    return FIMPointer<IKWFunctionChannel>();
}

const char* CPgChannel::Meanings()
{
    return "One input.\0"
           "Time per division\0"
           "Gain.\0"
           "Rate.\0"
           "Mask.\0"
           "Last reading.\0";
}
