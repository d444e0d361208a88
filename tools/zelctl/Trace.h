// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

/** Shows what a command changes: made before it, asked after it. */
class CTrace
{
public:
    /** Does nothing unless `wanted`. */
    CTrace(CSession& session, bool wanted);

    /** Adds everything that changed since, but for the value at `path`, which the command's own
        answer tells. */
    void AddTo(CReply& reply, const QString& path = {}) const;

private:
    CSession& m_session;
    bool m_wanted;
};

/** " (code 1 WARNING, …)" for a write that was taken otherwise than asked for; else empty. */
QString DescribeWarning(KW_ACCEPTANCE code);
