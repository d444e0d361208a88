// SPDX-License-Identifier: MIT
#include "Samples/AcquisitionSettings.h"

#include "CommonDatabase/Nodes/DbPgRoot.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperHorizontal.h"
#include "KWEnumerationsLogger.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsVertical.h"
#include "Names/Channel.h"
#include "Names/Control.h"
#include "Names/Horizontal.h"
#include "Names/Logic.h"
#include "Names/Mask.h"
#include "Names/SMMode.h"
#include "Names/SMScope.h"
#include "Names/Vertical.h"
#include "Names/ZEL.h"
#include "Rules/NumberRules.h"

#include <algorithm>

using namespace NNames;

namespace NSamples
{
namespace
{
constexpr double kDivisionsPerCount = 1.0 / KW_COUNTS_PER_DIVISION;

KW_SAMPLE_FORMAT FormatOf(KW_ZEL_ACQUISITION_MODE mode)
{
    const bool isPair =
        mode == eKW_ZEL_ACQUISITION_MODE_PEAK || mode == eKW_ZEL_ACQUISITION_MODE_ENVELOPE;
    return isPair ? eKW_SAMPLES_MINMAX : eKW_SAMPLES_INT16;
}

/** Lengths and times of analog traces. */
KW_TraceInfo ReadAnalogTimes(const CDbPgRoot& root)
{
    const auto time = root.Find(ZEL::Horizontal);
    KW_TraceInfo info;
    info.format = FormatOf(time.At(Horizontal::AcquisitionMode)->Get());
    info.count = time.At(Horizontal::PPLength)->Get();
    info.settlingPoints = time.At(Horizontal::PreSettlingSamples)->Get();
    info.interval = time.At(Horizontal::ResolutionPP)->Get();
    info.start = time.At(Horizontal::Left)->Get() - info.settlingPoints * info.interval;
    return info;
}

KW_TraceInfo ReadLines(const CDbPgRoot& root)
{
    const auto time = root.Find(ZEL::Horizontal);
    KW_TraceInfo info;
    info.channel = eKW_ZEL_CHANNEL_D0;
    info.format = eKW_SAMPLES_LINES;
    info.count = time.At(Horizontal::PPLengthDigital)->Get();
    info.settlingPoints = time.At(Horizontal::PreSettlingSamplesDigital)->Get();
    info.interval = time.At(Horizontal::ResolutionPPDigital)->Get();
    info.start = time.At(Horizontal::Left)->Get() - info.settlingPoints * info.interval;
    return info;
}

/** The screen of an input: its middle is the sample 0. */
void ReadScreen(const CFoundGroup<Channel>& channel, KW_TraceInfo& info)
{
    const double scale =
        KWMath::DecimalProduct(channel.At(Channel::Scale)->Get(), kDivisionsPerCount);
    const bool isInverted = channel.At(Channel::Polarity)->Get() == eKW_POLARITY_INVERTED;
    info.scale = isInverted ? -scale : scale;
    info.offset = (channel.At(Channel::Top)->Get() + channel.At(Channel::Bottom)->Get()) / 2.0;
    info.unit = channel.At(Channel::ProbeUnit)->Get();
    info.start -= channel.At(Channel::Deskew)->Get();
}

void ReadTraces(const CDbPgRoot& root, KW_ArmedAcquisition& armed)
{
    const KW_TraceInfo times = ReadAnalogTimes(root);
    for (INT32 i = eKW_PLACE_C1; i <= static_cast<INT32>(eKW_PLACE_C4); ++i)
    {
        const auto channel = root.Find(ZEL::Vertical / Vertical::Channel / i);
        if (channel.At(Channel::Enabled)->Get() == eKW_ONOFF_ON)
        {
            KW_TraceInfo& info = armed.traces[static_cast<std::size_t>(i)];
            info = times;
            info.channel = static_cast<KW_ZEL_CHANNEL>(eKW_ZEL_CHANNEL_C1 + i);
            ReadScreen(channel, info);
        }
    }
    if (root.At(ZEL::Logic / Logic::Enabled)->Get() == eKW_ONOFF_ON)
    {
        armed.traces[eKW_PLACE_LINES] = ReadLines(root);
    }
}

/** Only a test that runs decides. */
UINT32 ReadKept(const CDbPgRoot& root)
{
    const auto mask = root.Find(ZEL::Mask);
    const KW_ZEL_MASK_HISTORY_MODES mode = mask.At(Mask::HistoryMode)->Get();
    if (mask.At(Mask::State)->Get() != eKW_ZEL_MASK_TESTSTATE_RUNNING ||
        mode == eKW_ZEL_MASK_HISTORY_MODES_ALL)
    {
        return ~0U;
    }
    const KW_MASK_RESULT dropped =
        mode == eKW_ZEL_MASK_HISTORY_MODES_PASSED ? eKW_MASK_FAILED : eKW_MASK_PASSED;
    return ~(1U << dropped);
}

bool IsSameTrace(const KW_TraceInfo& one, const KW_TraceInfo& other)
{
    return one.channel == other.channel && one.format == other.format && one.unit == other.unit &&
           one.count == other.count && one.settlingPoints == other.settlingPoints &&
           one.interval == other.interval && one.start == other.start && one.scale == other.scale &&
           one.offset == other.offset;
}
} // namespace

bool IsAcquiring(const CDbPgRoot& root)
{
    const KW_ZEL_OPERATION_MODE mode =
        root.At(ZEL::Control / Control::SMMode / SMMode::ActiveMode)->Get();
    return mode != eKW_ZEL_OPERATION_MODE_METER && mode != eKW_ZEL_OPERATION_MODE_LOGGER &&
           root.At(ZEL::Control / Control::SMScope / SMScope::RunStop)->Get() !=
               eKW_ZEL_RUNSTOP_STATE_STOP;
}

t_AcquisitionSettings ReadSettings(const CDbPgRoot& root)
{
    t_AcquisitionSettings settings;
    KW_ArmedAcquisition& armed = settings.armed;
    ReadTraces(root, armed);
    const auto time = root.Find(ZEL::Horizontal);
    armed.blockSize = time.At(Horizontal::BlockSize)->Get();
    armed.mode = time.At(Horizontal::DSPMode)->Get();
    armed.historyDepth = CZELDatabaseHelperHorizontal::GetNumberOfHistoryTraces(
        time.At(Horizontal::HistoryDepth)->Get());
    const auto scope = root.Find(ZEL::Control / Control::SMScope);
    settings.isSingle = scope.At(SMScope::RunStop)->Get() == eKW_ZEL_RUNSTOP_STATE_SINGLE;
    armed.left = scope.At(SMScope::AcquisitionsLeft)->Get();
    const bool hasTraces = std::any_of(armed.traces.begin(), armed.traces.end(),
                                       [](const KW_TraceInfo& trace) { return trace.count > 0; });
    armed.isRunning = hasTraces && IsAcquiring(root);
    settings.kept = ReadKept(root);
    return settings;
}

bool HaveSameTraces(const KW_ArmedAcquisition& one, const KW_ArmedAcquisition& other)
{
    return std::equal(one.traces.begin(), one.traces.end(), other.traces.begin(), IsSameTrace);
}
} // namespace NSamples
