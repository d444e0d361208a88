// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"
#include "Session.h"

#include <functional>

/** Carries out a write of one property and answers with its old and its new value, with `trace`
    also with everything that moved along. A refusal names `request`. */
t_Answer WriteProperty(CSession& session, const char* command, IDbProperty& property,
                       const QString& request, bool trace,
                       const std::function<KW_ACCEPTANCE()>& write);
