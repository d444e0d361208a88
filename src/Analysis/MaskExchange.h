// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsChannels.h"
#include "Masks/Mask.h"

#include <QString>
#include <memory>

class CDbPropertyGroup;
class IMaskSource;
class CPgMaskChannelSetup;
class CPgMaskSettingsBase;

/** Masks between files, traces and the tree. Each takes the tree's lock, and none keeps it while it
    reads, writes or looks at a trace. */
namespace NMaskExchange
{
/** The actions, for the mask of the selected channel; what is to be said of a file goes to the
   error handler. eKW_ACC_BAD_NAME without a file name, else the codes of MaskFile.h and
   KW_MakeMask; eKW_ACC_NOTHING_TO_ACT_ON without a mask to save, or a trace to make one of. */
///@{
KW_ACCEPTANCE Load(const CPgMaskSettingsBase& settings);
KW_ACCEPTANCE Save(const CPgMaskSettingsBase& settings);
KW_ACCEPTANCE Create(const CPgMaskSettingsBase& settings, IMaskSource* source);
///@}

/** CreateMask of this tree uses the source as long as it lives. */
void Connect(const CDbPropertyGroup& root, const std::shared_ptr<IMaskSource>& source);

/** The mask of a channel, counted from 0, never null: under the lock. */
std::shared_ptr<const KW_Mask> MaskOf(const CDbPropertyGroup& root, INT32 channel);

/** Replaces the mask of a channel as one step for undo. */
KW_ACCEPTANCE Put(CPgMaskChannelSetup& setup, const KW_Mask& mask, const QString& step);

/** The picture of a channel on the screen, in the tree that `group` is part of: under the lock. */
KW_MaskFrame FrameOf(const CDbPropertyGroup& group, KW_ZEL_CHANNEL channel);
} // namespace NMaskExchange
