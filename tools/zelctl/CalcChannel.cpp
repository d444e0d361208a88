// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "IKWFunctionZELHelpers/ApplicationDefinitions.h"
#include "IKWFunctionZELHelpers/ZELDatabaseHelperCommon.h"
#include "KWEnumerationsChannels.h"
#include "KWEnumerationsDataFormats.h"
#include "KWEnumerationsTrigger.h"
#include "KWEnumerationsUnits.h"

namespace
{
using namespace NApplicationDefinitions;
using CommonHelper = CZELDatabaseHelperCommon;

void Channel(const CArguments& in, CFigures& out)
{
    const auto channel = in.Enum<KW_ZEL_CHANNEL>("channel");
    out.AddTruth("analog", IsAnalogChannel(channel))
        .AddTruth("digital", IsDigitalChannel(channel))
        .AddTruth("serial bus", IsSerialBusChannel(channel))
        .AddTruth("hardware input", IsHardwareInputChannel(channel))
        .AddTruth("acquired", IsAcquisitionChannel(channel));
    if (IsAnalogChannel(channel))
    {
        const KW_ZEL_ANALOG_CHANNEL analog = MapApplicationChannelToAnalogChannel(channel);
        out.Add("as analog channel", GetEnumText(analog))
            .Add("as channel", GetEnumText(MapAnalogChannelToApplicationChannel(analog)));
    }
}

void Trigger(const CArguments& in, CFigures& out)
{
    const auto type = in.Enum<KW_ZEL_TRIGGER_TYPE>("type");
    out.AddTruth("two analog levels", IsAnalogTrigger(type))
        .AddTruth("serial bus", IsSerialBusTrigger(type))
        .AddTruth("logic", IsLogicTrigger(type))
        .AddTruth("logic trigger unit", RequiresLTG(type, in.Enum<KW_ZEL_CHANNEL>("--channel")));
}

void SampleSize(const CArguments& in, CFigures& out)
{
    out.Add("bytes per sample", CommonHelper::GetSampleSize(in.Enum<KW_SIGNAL_FORMAT>("format")),
            eKW_UNIT_BYTES);
}

void TransferSize(const CArguments& in, CFigures& out)
{
    out.Add("bytes per sample",
            CommonHelper::GetNOfBytesPerSample(in.Enum<KW_DATAFORMAT>("format")), eKW_UNIT_BYTES);
}
} // namespace

t_CalculationGroup GetChannelCalculations()
{
    return {"Channels and triggers",
            {{"channel",
              "What a channel is",
              {"IsAnalogChannel", "IsDigitalChannel", "IsSerialBusChannel",
               "IsHardwareInputChannel", "IsAcquisitionChannel",
               "MapApplicationChannelToAnalogChannel", "MapAnalogChannelToApplicationChannel"},
              {{"channel", "KW_ZEL_CHANNEL"}},
              &Channel,
              {"C2"}},
             {"trigger",
              "What a trigger type needs",
              {"IsAnalogTrigger", "IsSerialBusTrigger", "IsLogicTrigger", "RequiresLTG"},
              {{"type", "KW_ZEL_TRIGGER_TYPE"}, {"--channel", "KW_ZEL_CHANNEL", "C1"}},
              &Trigger,
              {"RUNT", "EDGE --channel D0"}},
             {"samplesize",
              "Bytes per sample of a signal in memory",
              {"GetSampleSize"},
              {{"format", "KW_SIGNAL_FORMAT"}},
              &SampleSize,
              {"INT24"}},
             {"transfersize",
              "Bytes per sample of a block transfer",
              {"GetNOfBytesPerSample"},
              {{"format", "KW_DATAFORMAT"}},
              &TransferSize,
              {"REAL64"}}}};
}
