// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMaskSettingsBase.h"
#include "Masks/MaskSource.h"

#include <optional>

/** Making of a mask, around one of the traces that have levels, and its files. */
class CPgMaskSettings : public CPgMaskSettingsBase, public IMaskMaker
{
public:
    t_Couplings Rules() const override;
    std::optional<KW_ACCEPTANCE> OnFileFunction(const CDbFunction* function) override;

    /** Where traces come from; null while nobody acquires. Each takes the lock. */
    ///@{
    std::shared_ptr<IMaskSource> GetSource() const;
    void SetSource(const std::weak_ptr<IMaskSource>& source) override;
    ///@}

private:
    void OfferSources();

    std::weak_ptr<IMaskSource> m_source;
};
