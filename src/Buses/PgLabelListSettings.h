// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelRules.h"
#include "Buses/PgLabelListSettingsBase.h"

#include <optional>

/**
 * Label list: counts its labels and its changes, and is what frames are looked up in.
 *
 * Of the labels that are on no two have the same identifier of the same length, so that a frame has
 * one label at most: who has it keeps it, and another one is off until it is free.
 */
class CPgLabelListSettings : public CPgLabelListSettingsBase, public NRules::ILabelList
{
public:
    t_Couplings Rules() const override;
    std::optional<KW_ACCEPTANCE> OnFileFunction(const CDbFunction* function) override;

    const NRules::ILabelledBus& Bus() const override;
    const CLabelListDecoder::t_Message* FindLabel(const NRules::t_FrameKey& key) override;
    void CountChange() override;
    void KeepApart(const CDbPropertyGroup* written) override;
    void FitToBus() override;

private:
    void Clear();
    void CountLabels();
    void KeepAllApart() { KeepApart(nullptr); }
    void Compile();

    std::optional<CLabelListDecoder> m_decoder; ///< of the labels that are on
    long long m_compiledChange = -1;            ///< change counter of what is compiled
};
