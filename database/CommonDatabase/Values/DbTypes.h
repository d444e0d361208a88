// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "KWNodeTypes.h"

#include <QByteArray>
#include <QString>
#include <variant>

/** Who writes. Every write passes the same pipeline; the kind decides which checks and hook it
    meets there. */
enum class eWRITEKIND : UINT8
{
    Client,   ///< a handle's Set: access is checked, OnPropertySet follows
    Wish,     ///< the same, from SetUserValue: the user's value stands already
    Internal, ///< DbSet of a group's rule: OnPropertyDbSet follows
    Auto,     ///< a limit took the value with it: OnPropertyAutoSet follows
    Default,  ///< back to the default: limits follow the value, no hook
    Undo,     ///< restores a recorded state whole: no checks, no hook
    Recall    ///< from a file: limits follow the value, no hook
};

/** Access is checked, and the write opens an entry of the history. */
constexpr bool IsClientWrite(eWRITEKIND kind)
{
    return kind == eWRITEKIND::Client || kind == eWRITEKIND::Wish;
}

/** What a history record is about. */
enum class eOPERATIONTYPE : UINT8
{
    Value,       ///< value, limits and validity of a property
    Insert,      ///< items came into a container
    Remove,      ///< items left a container
    Rename,      ///< an item of a map got another name, display name or key
    Availability ///< a group became available or unavailable
};

/** Which way a history record is being processed. */
enum class ePROCESSINGTYPE : UINT8
{
    Recording,
    Done,  ///< can be undone
    Undone ///< can be redone
};

/** A value of any property on its way: whole numbers, real numbers, texts, byte blocks. */
using CDbValue = std::variant<std::monostate, INT64, UINT64, double, QString, QByteArray>;
