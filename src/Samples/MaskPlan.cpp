// SPDX-License-Identifier: MIT
#include "Samples/MaskPlan.h"

#include "Analysis/MaskExchange.h"
#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "KWEnumerationsOnOff.h"
#include "Names/Mask.h"
#include "Names/MaskChannelSetup.h"
#include "Names/MaskSettings.h"
#include "Names/Runs.h"
#include "Names/ZEL.h"

using namespace NNames;

namespace NSamples
{
t_MaskValues ReadMaskValues(const CDbPgRoot& root)
{
    const auto test = root.Find(ZEL::Mask);
    const auto settings = root.Find(ZEL::Mask / Mask::MaskSettings);
    t_MaskValues values;
    for (INT32 i = 0; i < kMaskChannels; ++i)
    {
        const auto setup = root.Find(ZEL::Mask / Mask::MaskChannelSetup / i);
        t_MaskValues::t_Channel& channel = values.channels[static_cast<std::size_t>(i)];
        channel.checksum = setup.At(MaskChannelSetup::MaskChecksum)->Get();
        channel.isEnabled = setup.At(MaskChannelSetup::Enabled)->Get() == eKW_ONOFF_ON;
        channel.isVisible = setup.At(MaskChannelSetup::MaskVisible)->Get() == eKW_ONOFF_ON;
        channel.frame =
            NMaskExchange::FrameOf(root, static_cast<KW_ZEL_CHANNEL>(eKW_ZEL_CHANNEL_C1 + i));
    }
    values.isLocked = settings.At(MaskSettings::LockToScreen)->Get() == eKW_ONOFF_ON;
    values.positionY = settings.At(MaskSettings::PositionY)->Get();
    values.stretchY = settings.At(MaskSettings::StretchY)->Get() / 100.0;
    values.isRunning = test.At(Mask::State)->Get() == eKW_ZEL_MASK_TESTSTATE_RUNNING;
    values.run = root.At(ZEL::Runs / Runs::NumberOfRuns)->Get();
    values.begin = root.At(ZEL::Mask / Mask::Start)->GetRunCount() +
                   root.At(ZEL::Mask / Mask::ClearCounts)->GetRunCount();
    values.maximum = test.At(Mask::MaximumAcquisitions)->Get();
    values.stopAfter = test.At(Mask::StopAfterViolations)->Get();
    values.action = test.At(Mask::ViolationAction)->Get();
    return values;
}

std::array<KW_PlacedMask, kMaskChannels> ReadPlacedMasks(const CDbPgRoot& root,
                                                         const t_MaskValues& values)
{
    std::array<KW_PlacedMask, kMaskChannels> masks;
    for (std::size_t i = 0; i < masks.size(); ++i)
    {
        const t_MaskValues::t_Channel& channel = values.channels[i];
        KW_Mask& mask = masks[i].mask;
        mask = *NMaskExchange::MaskOf(root, static_cast<INT32>(i));
        KW_PlaceMask(mask, values.positionY, values.stretchY); // both are finite
        if (values.isLocked)
        {
            mask.frame = channel.frame;
        }
        masks[i].isTested = channel.isEnabled && !mask.IsEmpty();
        masks[i].isVisible = channel.isVisible && !mask.IsEmpty();
    }
    return masks;
}
} // namespace NSamples
