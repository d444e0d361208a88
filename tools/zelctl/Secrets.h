// SPDX-License-Identifier: MIT
#pragma once

#include "Session.h"

/** A command line as it may be shown: what follows the path of a secret is replaced. */
QString WithoutSecrets(CSession& session, const QString& line);

/** Whether a line may be kept for the next shell. One that goes on behind the path of a secret may
    not, nor behind what could be such a path mistyped. */
bool MayBeKept(CSession& session, const QString& line);
