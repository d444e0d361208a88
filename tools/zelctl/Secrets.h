// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

/** A command line as it may be shown: what follows the path of a secret is replaced. */
QString WithoutSecrets(CSession& session, const QString& line);

/** Whether a line may be kept for the next shell. One that goes on behind the path of a secret may
    not, nor behind what could be such a path mistyped; none where a living tree is lost before
    anybody has asked it for its secrets. */
class CKeepable
{
public:
    explicit CKeepable(CSession& session) : m_session(session) {}
    bool MayBeKept(const QString& line);

private:
    CSession& m_session;
    QStringList m_secrets; ///< paths; they are the same as long as the tree is, and asked for once
};
