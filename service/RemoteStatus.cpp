// SPDX-License-Identifier: MIT
#include "RemoteStatus.h"

#include <utility>

namespace
{
constexpr UINT8 kErrors = 0x04;
constexpr UINT8 kQuestionable = 0x08;
constexpr UINT8 kAnswer = 0x10;
constexpr UINT8 kEvents = 0x20;
constexpr UINT8 kOperation = 0x80;
} // namespace

void CRemoteStatus::Report(t_RemoteError error)
{
    m_events = static_cast<UINT8>(m_events | NRemote::EventBitOf(error.number));
    m_errors.Add(std::move(error));
}

void CRemoteStatus::Clear()
{
    m_events = 0;
    operation.event = 0;
    questionable.event = 0;
    m_warning.clear();
    m_errors.Clear();
}

void CRemoteStatus::Warn(const QString& text)
{
    m_warning = text;
    questionable.event = static_cast<UINT16>(questionable.event | kWarning);
}

QString CRemoteStatus::TakeWarning()
{
    return std::exchange(m_warning, QString());
}

UINT8 CRemoteStatus::TakeEvents()
{
    return std::exchange(m_events, UINT8{0});
}

UINT8 CRemoteStatus::StatusByte(bool hasAnswer) const
{
    int bits = m_errors.Count() > 0 ? kErrors : 0;
    bits |= questionable.HasSummary() ? kQuestionable : 0;
    bits |= hasAnswer ? kAnswer : 0;
    bits |= (m_events & eventMask) != 0 ? kEvents : 0;
    bits |= operation.HasSummary() ? kOperation : 0;
    bits |= (bits & serviceMask) != 0 ? kMaster : 0;
    return static_cast<UINT8>(bits);
}
