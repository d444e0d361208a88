// SPDX-License-Identifier: MIT
// The subsystem STATus, and warnings.

#include "RemoteSession.h"
#include "RemoteValues.h"

namespace
{
constexpr INT64 kMost = 65535;
constexpr UINT16 kUsed = 0x7FFF; ///< bit 15 is never used, so that clients may take it for a sign
} // namespace

std::span<const CRemoteSession::t_Command> CRemoteSession::StatusCommands()
{
    using T = CRemoteSession;
    constexpr auto kOfOperation = &CRemoteStatus::operation;
    constexpr auto kOfQuestionable = &CRemoteStatus::questionable;
    static constexpr t_Command kCommands[] = {
        {"STATus:OPERation", true, 0, 0, false, &T::TakeEvent<kOfOperation>},
        {"STATus:OPERation:EVENt", true, 0, 0, false, &T::TakeEvent<kOfOperation>},
        {"STATus:OPERation:CONDition", true, 0, 0, false, &T::GetCondition<kOfOperation>},
        {"STATus:OPERation:ENABle", false, 1, 1, false, &T::SetEnable<kOfOperation>},
        {"STATus:OPERation:ENABle", true, 0, 0, false, &T::GetEnable<kOfOperation>},
        {"STATus:QUEStionable", true, 0, 0, false, &T::TakeEvent<kOfQuestionable>},
        {"STATus:QUEStionable:EVENt", true, 0, 0, false, &T::TakeEvent<kOfQuestionable>},
        {"STATus:QUEStionable:CONDition", true, 0, 0, false, &T::GetCondition<kOfQuestionable>},
        {"STATus:QUEStionable:ENABle", false, 1, 1, false, &T::SetEnable<kOfQuestionable>},
        {"STATus:QUEStionable:ENABle", true, 0, 0, false, &T::GetEnable<kOfQuestionable>},
        {"STATus:PRESet", false, 0, 0, false, &T::PresetStatus},
    };
    return kCommands;
}

void CRemoteSession::Observe(const t_RemoteConditions& conditions)
{
    m_status.operation.Observe(conditions.operation);
    m_status.questionable.Observe(conditions.questionable);
}

void CRemoteSession::ObserveNow()
{
    if (!m_conditions)
    {
        m_conditions.emplace(*Top());
    }
    Observe(m_conditions->Read());
}

template <t_RemoteRegister CRemoteStatus::*Register>
t_RemoteError CRemoteSession::TakeEvent(const t_RemoteUnit&)
{
    ObserveNow();
    Answer(QByteArray::number(std::exchange((m_status.*Register).event, UINT16{0})));
    return {};
}

template <t_RemoteRegister CRemoteStatus::*Register>
t_RemoteError CRemoteSession::GetCondition(const t_RemoteUnit&)
{
    ObserveNow();
    Answer(QByteArray::number((m_status.*Register).condition));
    return {};
}

template <t_RemoteRegister CRemoteStatus::*Register>
t_RemoteError CRemoteSession::SetEnable(const t_RemoteUnit& unit)
{
    INT64 number = 0;
    if (const t_RemoteError error = NRemote::ReadWhole(unit.data[0], number))
    {
        return error;
    }
    if (number < 0 || number > kMost)
    {
        return {eREMOTE_OUT_OF_RANGE, QStringLiteral("0 to 65535 are wanted")};
    }
    ObserveNow();
    (m_status.*Register).enable = static_cast<UINT16>(number & kUsed);
    return {};
}

template <t_RemoteRegister CRemoteStatus::*Register>
t_RemoteError CRemoteSession::GetEnable(const t_RemoteUnit&)
{
    Answer(QByteArray::number((m_status.*Register).enable));
    return {};
}

t_RemoteError CRemoteSession::PresetStatus(const t_RemoteUnit&)
{
    m_status.operation.enable = 0;
    m_status.questionable.enable = 0;
    return {};
}

t_RemoteError CRemoteSession::TakeWarning(const t_RemoteUnit&)
{
    const QString warning = m_status.TakeWarning();
    Answer(warning.isEmpty() ? QByteArray("0,\"No warning\"") : "1," + NRemote::Quoted(warning));
    return {};
}
