// SPDX-License-Identifier: MIT
#include "LabelList/FrameLog.h"
#include "fuzz/Targets.h"

#include <QList>
#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace
{
using e_Line = CFrameLogReader::e_Line;

/** As `candump -L` has it. */
std::string LineOf(const KW_LoggedFrame& frame)
{
    constexpr INT64 kSecond = 1000000000;
    char text[64];
    std::string line;
    if (frame.hasTime)
    {
        std::snprintf(text, sizeof text, "(%lld.%09lld) ",
                      static_cast<long long>(frame.nanoseconds / kSecond),
                      static_cast<long long>(frame.nanoseconds % kSecond));
        line = text;
    }
    std::snprintf(text, sizeof text, frame.isExtended ? " %08X#" : " %03X#",
                  frame.identifier | (frame.isError ? 0x20000000U : 0U));
    line += std::string(frame.bus) + text + (frame.isFd ? "#0" : "");
    if (frame.isRemote)
    {
        std::snprintf(text, sizeof text, "R%X", frame.length);
        line += text;
    }
    for (const UINT8 byte : frame.Payload())
    {
        std::snprintf(text, sizeof text, "%02X", byte);
        line += text;
    }
    return line;
}

bool IsSame(const KW_LoggedFrame& a, const KW_LoggedFrame& b)
{
    return a.hasTime == b.hasTime && a.nanoseconds == b.nanoseconds && a.bus == b.bus &&
           a.identifier == b.identifier && a.isExtended == b.isExtended && a.isFd == b.isFd &&
           a.isRemote == b.isRemote && a.isError == b.isError && a.length == b.length &&
           std::equal(a.Payload().begin(), a.Payload().end(), b.Payload().begin());
}

void TryFrame(const KW_LoggedFrame& frame, const QByteArray& line)
{
    KW_FuzzRequire(frame.length <= KW_LoggedFrame::kLongest, "a payload too long", line);
    KW_FuzzRequire(frame.bus.data() >= line.constData() &&
                       frame.bus.data() + frame.bus.size() <= line.constData() + line.size(),
                   "a bus from elsewhere", line);
    KW_FuzzRequire(frame.identifier <= (frame.isExtended ? 0x1fffffffU : 0x7ffU),
                   "an identifier too long", line);
    KW_FuzzRequire(frame.nanoseconds >= 0, "a time before the first", line);
    const bool isKindOnly = frame.isError && !frame.isExtended; // ".asc" says no more of errors
    const std::string written = LineOf(frame);
    KW_LoggedFrame again;
    if (!isKindOnly && written.size() <= 4096)
    {
        KW_FuzzRequire(CFrameLogReader().Read(written, again) == e_Line::Frame, "own line not read",
                       line);
        KW_FuzzRequire(IsSame(frame, again), "own line reads differently", line);
    }
}
} // namespace

void KW_TryFrameLines(const QByteArray& lines)
{
    CFrameLogReader reader;
    const QList<QByteArray> list = lines.split('\n');
    for (const QByteArray& line : list)
    {
        KW_LoggedFrame frame;
        const std::string_view text(line.constData(), static_cast<std::size_t>(line.size()));
        if (reader.Read(text, frame) == e_Line::Frame)
        {
            TryFrame(frame, line);
        }
    }
}
