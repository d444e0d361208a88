// SPDX-License-Identifier: MIT
#pragma once

#include "RemoteErrors.h"

/** Registers, masks and errors of one connection (IEEE 488.2). */
class CRemoteStatus
{
public:
    explicit CRemoteStatus(std::size_t mostErrors) : m_errors(mostErrors) {}

    /** Queues an error and sets its event bit. */
    void Report(t_RemoteError error);
    /** Everything that was asked for has ended. */
    void Complete() { m_events |= kOperationComplete; }
    /** As *CLS: events and errors, not the masks. */
    void Clear();

    CRemoteErrorQueue& Errors() { return m_errors; }
    UINT8 TakeEvents();
    /** Status byte; `hasAnswer` while an answer is being made. */
    UINT8 StatusByte(bool hasAnswer) const;

    UINT8 eventMask = 0;
    UINT8 serviceMask = 0; ///< bit 6 is always 0

    static constexpr UINT8 kOperationComplete = 0x01;
    static constexpr UINT8 kPowerOn = 0x80;
    static constexpr UINT8 kMaster = 0x40; ///< bit 6 of the status byte

private:
    UINT8 m_events = kPowerOn;
    CRemoteErrorQueue m_errors;
};
