// SPDX-License-Identifier: MIT
#include "WaveSoundText.h"

#include "EnumText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <limits>

namespace
{
constexpr int kVersion = 1;

QJsonObject ToJson(const KW_TraceInfo& trace)
{
    return {{QStringLiteral("channel"), GetEnumText(trace.channel)},
            {QStringLiteral("unit"), GetEnumText(trace.unit)},
            {QStringLiteral("full"), trace.scale},
            {QStringLiteral("offset"), trace.offset},
            {QStringLiteral("interval"), trace.interval},
            {QStringLiteral("start"), trace.start},
            {QStringLiteral("settling"), static_cast<qint64>(trace.settlingPoints)},
            {QStringLiteral("flags"), static_cast<qint64>(trace.flags)}};
}

template <typename T>
bool Take(const QJsonObject& json, const char* name, T& value)
{
    INT32 read = 0;
    const bool isOne = KW_IsAccepted(
        KW_ParseEnum(GetStaticEnumNameInfo<T>(), json[QLatin1String(name)].toString(), read));
    value = isOne ? static_cast<T>(read) : value;
    return isOne;
}

bool Take(const QJsonObject& json, const char* name, double& value)
{
    value = json[QLatin1String(name)].toDouble(std::numeric_limits<double>::quiet_NaN());
    return std::isfinite(value);
}

bool Take(const QJsonObject& json, const char* name, UINT32& value)
{
    double number = 0;
    const bool isOne =
        Take(json, name, number) && number >= 0 && number <= std::numeric_limits<UINT32>::max();
    value = isOne ? static_cast<UINT32>(number) : value;
    return isOne;
}

bool FromJson(const QJsonObject& json, KW_TraceInfo& trace)
{
    return Take(json, "channel", trace.channel) && Take(json, "unit", trace.unit) &&
           Take(json, "full", trace.scale) && trace.scale != 0 &&
           Take(json, "offset", trace.offset) && Take(json, "interval", trace.interval) &&
           trace.interval > 0 && Take(json, "start", trace.start) &&
           Take(json, "settling", trace.settlingPoints) && Take(json, "flags", trace.flags);
}

/** As a text: a number of JSON has not all digits. */
template <typename T>
bool TakeText(const QJsonObject& json, const char* name, T& value)
{
    bool isOne = false;
    const QString text = json[QLatin1String(name)].toString();
    value = static_cast<T>(std::is_signed_v<T> ? static_cast<quint64>(text.toLongLong(&isOne))
                                               : text.toULongLong(&isOne));
    return isOne;
}
} // namespace

QByteArray MakeSoundText(const t_SoundText& text)
{
    QJsonArray traces;
    for (const KW_TraceInfo& trace : text.traces)
    {
        traces.append(ToJson(trace));
    }
    const QJsonObject json{
        {QStringLiteral("record"), kVersion},
        {QStringLiteral("number"), QString::number(text.info.number)},
        {QStringLiteral("triggerTime"), QString::number(text.info.triggerTime)},
        {QStringLiteral("settingsCounter"), QString::number(text.info.settingsCounter)},
        {QStringLiteral("maskResult"), static_cast<int>(text.info.maskResult)},
        {QStringLiteral("source"), QString::number(text.info.source)},
        {QStringLiteral("traces"), traces}};
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

bool ParseSoundText(const QByteArray& comment, t_SoundText& text)
{
    const QJsonObject json = QJsonDocument::fromJson(comment).object();
    const int result = json[QStringLiteral("maskResult")].toInt(-1);
    text = {};
    if (json[QStringLiteral("record")].toInt() != kVersion ||
        !TakeText(json, "number", text.info.number) ||
        !TakeText(json, "triggerTime", text.info.triggerTime) ||
        !TakeText(json, "settingsCounter", text.info.settingsCounter) ||
        !TakeText(json, "source", text.info.source) || result < eKW_MASK_NOT_TESTED ||
        result > eKW_MASK_FAILED)
    {
        return false;
    }
    text.info.maskResult = static_cast<KW_MASK_RESULT>(result);
    for (const auto& trace : json[QStringLiteral("traces")].toArray())
    {
        text.traces.emplace_back();
        if (!FromJson(trace.toObject(), text.traces.back()))
        {
            return false;
        }
    }
    return true;
}

int RateOf(double interval)
{
    const double rate = std::round(1.0 / interval);
    return rate >= 1 && rate <= std::numeric_limits<int>::max() ? static_cast<int>(rate) : 0;
}
