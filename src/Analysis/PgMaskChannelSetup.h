// SPDX-License-Identifier: MIT
#pragma once

#include "Analysis/PgMaskChannelSetupBase.h"
#include "Masks/Mask.h"

#include <memory>

/** Mask of one channel. Its lines are bytes of a file, so that undo and remote control have them as
    they have every value. */
class CPgMaskChannelSetup : public CPgMaskChannelSetupBase
{
public:
    using CPgMaskChannelSetupBase::CPgMaskChannelSetupBase;

    t_Couplings Rules() const override;

    void ClearCounts();
    void ClearMask();

    /** What stands, never null; under the lock. */
    std::shared_ptr<const KW_Mask> GetMask() const;
    /** eKW_ACC_OK, or a code of KW_CheckMask; one without points is none. */
    KW_ACCEPTANCE SetMask(const KW_Mask& mask);

private:
    void CountPoints();

    mutable std::shared_ptr<const KW_Mask> m_mask; ///< what m_read says; null: not read yet
    mutable QByteArray m_read;
};
