// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"
#include "NodeText.h"
#include "Session.h"

#include <functional>
#include <optional>

/** What a command asks of a property. */
struct t_WriteRequest
{
    /** The value that is to stand; none where the command names none, as a step. */
    std::optional<t_ShownValue> asked;
    /** Names the write in a refusal where no value is asked for. */
    QString text;
    bool trace = false;
};

/** Carries out a write of one property and answers with its old and its new value; where another
    one stands than was asked for, with both and the reason; with a trace also with everything that
    moved along. A refusal tells what could be selected. */
t_Answer WriteProperty(CSession& session, const char* command, IDbProperty& property,
                       const t_WriteRequest& request, const std::function<KW_ACCEPTANCE()>& write);

/** What a program needs to choose another value: limits and selectable values. */
QJsonObject GetChoice(const IDbProperty& property);
