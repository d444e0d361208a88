// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>
#include <QStringView>
#include <optional>
#include <vector>

/** Texts such as "Mode = 0-3, 7": a name, and the numbers with which something applies. */
namespace NConditionText
{
/** Both ends included; first ≤ last. */
struct t_Range
{
    UINT64 first;
    UINT64 last;
};

struct t_Condition
{
    QString name;                ///< without blanks at its ends; never empty
    std::vector<t_Range> ranges; ///< as written; at least one
};

/** The name goes up to the last "=", so that it may hold one itself; blanks do not count. Nothing
    for any other text. */
std::optional<t_Condition> Read(QStringView text);
} // namespace NConditionText
