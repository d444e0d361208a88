// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/** Up to three names that `wanted` probably means, the likeliest first: the same letters in the
    other case, the end of a path, few typing mistakes, a part of a name. Empty when none is near.
 */
QStringList GetNearestNames(const QString& wanted, const QStringList& names);

/** "; did you mean A, B or C?", or an empty text. */
QString DidYouMean(const QStringList& names);
