// SPDX-License-Identifier: MIT
#include "WaveFrames.h"

#include "EnumText.h"
#include "Output.h"

#include <QJsonObject>

namespace
{
constexpr std::size_t kMostLines = 200;

QString IdentifierText(const KW_Frame& frame)
{
    constexpr UINT32 kBitsOfDigit = 4;
    const auto digits =
        static_cast<int>((UINT32{frame.identifierLength} + kBitsOfDigit - 1) / kBitsOfDigit);
    return frame.identifierLength == 0
               ? QStringLiteral("–")
               : QStringLiteral("0x") + QString::number(frame.identifier, 16)
                                            .toUpper()
                                            .rightJustified(digits, QLatin1Char('0'));
}

QString PayloadText(const KW_Frame& frame)
{
    const std::span<const UINT8> payload = frame.GetPayload();
    return QString::fromLatin1(
        QByteArray::fromRawData(reinterpret_cast<const char*>(payload.data()),
                                static_cast<int>(payload.size()))
            .toHex(' ')
            .toUpper());
}

QString FrameFlagsText(UINT32 flags)
{
    struct t_Flag
    {
        UINT32 bit;
        const char* text;
    };
    static constexpr t_Flag kFlags[] = {{eKW_FRAME_FD, "FD"},
                                        {eKW_FRAME_BIT_RATE_SWITCH, "bit rate switch"},
                                        {eKW_FRAME_REMOTE, "remote"},
                                        {eKW_FRAME_READ, "read"},
                                        {eKW_FRAME_ERROR, "error"},
                                        {eKW_FRAME_BAD_CHECKSUM, "bad checksum"},
                                        {eKW_FRAME_NO_ACKNOWLEDGE, "no acknowledge"},
                                        {eKW_FRAME_CUT, "cut"}};
    QStringList texts;
    for (const t_Flag& flag : kFlags)
    {
        if ((flags & flag.bit) != 0)
        {
            texts << QLatin1String(flag.text);
        }
    }
    return texts.join(QStringLiteral(", "));
}
} // namespace

QStringList GetFrameLines(const CKWRecord& record, UINT32 trace)
{
    const std::span<const KW_Frame> frames = KW_GetFrames(record, trace);
    CTable table;
    for (const KW_Frame& frame : frames.first(std::min(frames.size(), kMostLines)))
    {
        table.Add({KW_FormatNumber(frame.time, eKW_UNIT_FREQ_SEC), GetEnumText(frame.protocol),
                   IdentifierText(frame), PayloadText(frame), FrameFlagsText(frame.flags)});
    }
    QStringList lines = table.GetLines(0);
    if (frames.size() > kMostLines)
    {
        lines << QStringLiteral("and %1 more").arg(frames.size() - kMostLines);
    }
    return lines;
}

QJsonArray GetFrameObjects(const CKWRecord& record, UINT32 trace)
{
    QJsonArray objects;
    for (const KW_Frame& frame : KW_GetFrames(record, trace))
    {
        objects.append(QJsonObject{{QStringLiteral("time"), frame.time},
                                   {QStringLiteral("bus"), GetEnumText(frame.protocol)},
                                   {QStringLiteral("id"), IdentifierText(frame)},
                                   {QStringLiteral("data"), PayloadText(frame)},
                                   {QStringLiteral("flags"), FrameFlagsText(frame.flags)}});
    }
    return objects;
}
