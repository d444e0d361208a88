// SPDX-License-Identifier: MIT
// Generated from Demo.toml: change the model, not this file.
#pragma once

#include "CommonDatabase/Nodes/DbFunction.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "Names/Demo.h"

class CPgTexts;
class CPgaChannel;
class CPgmTexts;
class IKWFunctionDemo;
enum KW_PROBE : INT32;

/** Root of the demonstration. Its rules are in CPgDemo. */
class CPgDemoBase : public CDbPgRoot
{
public:
    using Interface = IKWFunctionDemo;
    using Names = NNames::Demo;

    CPgDemoBase();
    ~CPgDemoBase() override;

    std::shared_ptr<IKWFunctionDemo> GetFIMPointer();
    const char* GetMeanings() const override { return Meanings(); }
    static const char* Meanings();

    /** A selector with the frame's default. Default: x1. */
    CDbPropEnum<KW_PROBE>* GetPrState() const { return m_pState; }
    /** Array (4 items at first, at most 15): One input. */
    CPgaChannel* GetPgChannel() const { return m_pChannel; }
    /** Map (at most 100 items): All kinds of texts; the name | pipe is part of this. */
    CPgmTexts* GetPgLabel() const { return m_pLabel; }
    /** All kinds of texts; the name | pipe is part of this. */
    CPgTexts* GetPgTexts() const { return m_pTexts; }
    /** Action: Sets the defaults. */
    CDbFunction* GetPrPreset() const { return m_pPreset; }
    /** Operation: Stops the acquisition. */
    CDbOperation* GetPrStop() const { return m_pStop; }

    /** Of the handle alone: parts of no tree. */
    ///@{
    CDbPropNum<double>* GetRemovedGone() const { return m_pGone.get(); }
    CPgaChannel* GetRemovedOlder() const { return m_pOlder.get(); }
    CDbFunction* GetRemovedBegin() const { return m_pBegin.get(); }
    ///@}

protected:
    std::unique_ptr<IKWFunctionBase> CreateFIM() override;

    CDbPropEnum<KW_PROBE>* m_pState;
    CPgaChannel* m_pChannel;
    CPgmTexts* m_pLabel;
    CPgTexts* m_pTexts;
    CDbFunction* m_pPreset;
    CDbOperation* m_pStop;

private:
    std::shared_ptr<CDbPropNum<double>> m_pGone;
    std::shared_ptr<CPgaChannel> m_pOlder;
    std::shared_ptr<CDbFunction> m_pBegin;
};
