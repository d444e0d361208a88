// SPDX-License-Identifier: MIT
#include "RemoteConditions.h"

#include "IKWProperties.h"
#include "KWEnumerationsAcquisition.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsSelfTest.h"
#include "KWEnumerationsTrigger.h"

namespace
{
struct t_Row
{
    const char* path;
    INT32 value;
    UINT16 operation;
    UINT16 questionable;
};

// Of OPERation:
constexpr UINT16 kCalibrating = 0x0001;
constexpr UINT16 kMeasuring = 0x0010;
constexpr UINT16 kWaitingForTrigger = 0x0020;
constexpr UINT16 kProgram = 0x4000; ///< several steps run by themselves
// Of QUEStionable:
constexpr UINT16 kVoltage = 0x0001;
constexpr UINT16 kTemperature = 0x0010;
constexpr UINT16 kCalibration = 0x0100;

constexpr t_Row kRows[] = {
    {"Setup/Selfalignment/Result", eKW_ZEL_SELFALIGNMENT_RESULT_RUNNING, kCalibrating, 0},
    {"Setup/Selfalignment/Result", eKW_ZEL_SELFALIGNMENT_RESULT_FAILED, 0, kCalibration},
    {"Setup/Selfalignment/Result", eKW_ZEL_SELFALIGNMENT_RESULT_OUTDATED, 0, kCalibration},
    {"Control/SMScope/OperationState", eKW_ZEL_OPSTATE_ACTIVE, kMeasuring, 0},
    {"Control/SMMeter/OperationState", eKW_ZEL_OPSTATE_ACTIVE, kMeasuring, 0},
    {"Control/SMLogger/OperationState", eKW_ZEL_OPSTATE_ACTIVE, kMeasuring, 0},
    {"Control/SMComplexSequence/OperationState", eKW_ZEL_OPSTATE_ACTIVE, kProgram, 0},
    {"Trigger/State", eKW_ZEL_TRIGGER_STATE_READY, kWaitingForTrigger, 0},
    {"Vertical/Channel[0]/Overload", eKW_ONOFF_ON, 0, kVoltage},
    {"Vertical/Channel[1]/Overload", eKW_ONOFF_ON, 0, kVoltage},
    {"Vertical/Channel[2]/Overload", eKW_ONOFF_ON, 0, kVoltage},
    {"Vertical/Channel[3]/Overload", eKW_ONOFF_ON, 0, kVoltage},
    {"Setup/TemperatureDialog", eKW_ZEL_TEMPERATURE_DIALOG_WARMING_UP, 0, kTemperature},
    {"Setup/TemperatureDialog", eKW_ZEL_TEMPERATURE_DIALOG_TOO_COLD, 0, kTemperature},
    {"Setup/TemperatureDialog", eKW_ZEL_TEMPERATURE_DIALOG_TOO_HOT, 0, kTemperature},
    {"Setup/TemperatureDialog", eKW_ZEL_TEMPERATURE_DIALOG_SHUTDOWN, 0, kTemperature},
};
} // namespace

CRemoteConditions::CRemoteConditions(const IDbGroup& root)
{
    for (const t_Row& row : kRows)
    {
        const auto node =
            std::dynamic_pointer_cast<IDbProperty>(root.Find(QString::fromLatin1(row.path)));
        auto property =
            node ? std::dynamic_pointer_cast<IKWEnumPropertyBase>(node->GetHandle()) : nullptr;
        if (property)
        {
            m_sources.push_back({std::move(property), row.value, row.operation, row.questionable});
        }
    }
}

t_RemoteConditions CRemoteConditions::Read() const
{
    t_RemoteConditions conditions;
    for (const t_Source& source : m_sources)
    {
        if (source.property->GetAsInt() == source.value)
        {
            conditions.operation = static_cast<UINT16>(conditions.operation | source.operation);
            conditions.questionable =
                static_cast<UINT16>(conditions.questionable | source.questionable);
        }
    }
    return conditions;
}
