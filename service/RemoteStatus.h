// SPDX-License-Identifier: MIT
#pragma once

#include "RemoteErrors.h"

/** One register of the subsystem STATus: what is the case, and what has become the case since the
    event was last read. */
struct t_RemoteRegister
{
    UINT16 condition = 0;
    UINT16 event = 0;
    UINT16 enable = 0; ///< which events show in the status byte; bit 15 is always 0

    void Observe(UINT16 now)
    {
        event = static_cast<UINT16>(event | (now & ~condition));
        condition = now;
    }
    bool HasSummary() const { return (event & enable) != 0; }
};

/** Registers, masks and errors of one connection (IEEE 488.2, SCPI-1999). */
class CRemoteStatus
{
public:
    explicit CRemoteStatus(std::size_t mostErrors) : m_errors(mostErrors) {}

    /** Queues an error and sets its event bit. */
    void Report(t_RemoteError error);
    /** Everything that was asked for has ended. */
    void Complete() { m_events |= kOperationComplete; }
    /** Something was taken otherwise than it was asked for: no error. */
    void Warn(const QString& text);
    /** What the newest warning said, once; empty when there is none. */
    QString TakeWarning();
    /** As *CLS: events, errors and warnings, not the masks. */
    void Clear();

    CRemoteErrorQueue& Errors() { return m_errors; }
    UINT8 TakeEvents();
    /** Status byte; `hasAnswer` while an answer is being made. */
    UINT8 StatusByte(bool hasAnswer) const;

    t_RemoteRegister operation;
    t_RemoteRegister questionable;
    UINT8 eventMask = 0;
    UINT8 serviceMask = 0; ///< bit 6 is always 0

    static constexpr UINT8 kOperationComplete = 0x01;
    static constexpr UINT8 kPowerOn = 0x80;
    static constexpr UINT8 kMaster = 0x40;     ///< bit 6 of the status byte
    static constexpr UINT16 kWarning = 0x4000; ///< "command warning", of the questionable events

private:
    UINT8 m_events = kPowerOn;
    CRemoteErrorQueue m_errors;
    QString m_warning;
};
