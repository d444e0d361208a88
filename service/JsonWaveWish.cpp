// SPDX-License-Identifier: MIT
#include "JsonWaveWish.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>

namespace
{
constexpr double kFarthest = 1e15; // s or Hz, beyond what any record has

bool ReadWindow(const QJsonValue& value, int mostColumns, t_WaveWindow& window)
{
    if (value.isUndefined())
    {
        return true;
    }
    const QJsonObject wish = value.toObject();
    window.columns = wish[QStringLiteral("columns")].toInt();
    const QJsonValue from = wish[QStringLiteral("from")];
    const QJsonValue to = wish[QStringLiteral("to")];
    window.isOwn = from.isDouble() && to.isDouble();
    window.from = from.toDouble();
    window.to = to.toDouble();
    const bool isStretch = window.from < window.to && std::fabs(window.from) <= kFarthest &&
                           std::fabs(window.to) <= kFarthest;
    const bool isNothing = from.isUndefined() && to.isUndefined();
    return window.columns >= 1 && window.columns <= mostColumns &&
           (isNothing || (window.isOwn && isStretch));
}
} // namespace

std::optional<t_WaveWish> NJson::ReadWaveWish(const QByteArray& message, int mostColumns,
                                              QString& wrong)
{
    const QJsonDocument document = QJsonDocument::fromJson(message);
    const QJsonObject wanted = document.object();
    t_WaveWish wish;
    if (!document.isObject() ||
        !ReadWindow(wanted[QStringLiteral("traces")], mostColumns, wish.traces) ||
        !ReadWindow(wanted[QStringLiteral("spectrum")], mostColumns, wish.spectrum))
    {
        wrong = QStringLiteral("\"traces\" and \"spectrum\" have 1 to %1 \"columns\", and \"from\" "
                               "below \"to\" or neither")
                    .arg(mostColumns);
        return std::nullopt;
    }
    return wish;
}
