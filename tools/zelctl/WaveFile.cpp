// SPDX-License-Identifier: MIT
#include "WaveFile.h"

#include "EnumText.h"
#include "Streams/RecordFile.h"
#include "WaveFormats.h"

#include <QFile>
#include <QFileInfo>
#include <cmath>
#include <cstring>
#include <limits>

namespace
{
enum class eFORMAT
{
    Record,
    Sound,
    Table,
    Unknown
};

struct t_Ending
{
    const char* text;
    eFORMAT format;
};

constexpr t_Ending kEndings[] = {{".rec", eFORMAT::Record},
                                 {".wav", eFORMAT::Sound},
                                 {".csv", eFORMAT::Table},
                                 {".tsv", eFORMAT::Table},
                                 {".txt", eFORMAT::Table}};

eFORMAT FormatOfName(const QString& fileName)
{
    for (const t_Ending& ending : kEndings)
    {
        if (fileName.endsWith(QLatin1String(ending.text), Qt::CaseInsensitive))
        {
            return ending.format;
        }
    }
    return eFORMAT::Unknown;
}

eFORMAT FormatOfContents(const QByteArray& beginning, eFORMAT named)
{
    if (KW_IsRecordFile(beginning))
    {
        return eFORMAT::Record;
    }
    if (beginning.startsWith("RIFF") || beginning.startsWith("RF64"))
    {
        return eFORMAT::Sound;
    }
    // What says by its name what it is, is told what is wrong with it.
    if (named != eFORMAT::Unknown)
    {
        return named;
    }
    return beginning.contains('\0') ? eFORMAT::Unknown : eFORMAT::Table;
}

/** Fails for what is no file, which is not waited for. */
QByteArray ReadBeginning(const QString& fileName)
{
    const QFileInfo info(fileName);
    if (info.exists() && !info.isFile())
    {
        throw UnreadableWave(fileName, QStringLiteral("it is no regular file"));
    }
    constexpr qint64 kBeginning = 512;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
    {
        throw UnreadableWave(fileName, file.errorString());
    }
    const QByteArray beginning = file.read(kBeginning);
    if (beginning.isEmpty())
    {
        throw BadWave(fileName, QStringLiteral("the file is empty"));
    }
    return beginning;
}

CKWRecord ReadRecord(const QString& fileName)
{
    CKWRecord record;
    KW_RecordReport report;
    const KW_ACCEPTANCE code = KW_ReadRecordFile(fileName, record, report);
    if (!KW_IsAccepted(code))
    {
        throw CFailure(eSTATUS_USAGE, code, KW_FormatRecordReport(fileName, report));
    }
    return record;
}

void WriteRecord(const QString& fileName, const CKWRecord& record)
{
    KW_RecordReport report;
    const KW_ACCEPTANCE code = KW_WriteRecordFile(fileName, record, report);
    if (!KW_IsAccepted(code))
    {
        throw CFailure(eSTATUS_USAGE, code, KW_FormatRecordReport(fileName, report));
    }
}
} // namespace

CFailure BadWave(const QString& fileName, const QString& text)
{
    return {eSTATUS_USAGE, eKW_ACC_FILE_NOT_UNDERSTOOD, fileName + QLatin1String(": ") + text};
}

CFailure UnreadableWave(const QString& fileName, const QString& cause)
{
    return {eSTATUS_USAGE, eKW_ACC_FILE_NOT_READABLE,
            QStringLiteral("%1 can not be read: %2").arg(fileName, cause)};
}

CFailure UnwritableWave(const QString& fileName, const QString& cause)
{
    return {eSTATUS_USAGE, eKW_ACC_FILE_NOT_WRITABLE,
            QStringLiteral("%1 can not be written: %2").arg(fileName, cause)};
}

CKWRecord t_WaveDraft::Make(const QString& fileName)
{
    std::vector<std::span<const std::byte>> spans;
    for (std::size_t i = 0; i < traces.size(); ++i)
    {
        traces[i].count =
            static_cast<UINT32>(samples[i].size() / KW_GetPointSize(traces[i].format));
        spans.emplace_back(samples[i]);
    }
    KW_ACCEPTANCE code = eKW_ACC_OK;
    CKWRecord record = KW_MakeRecord(info, traces, spans, &code);
    if (!record)
    {
        throw CFailure(eSTATUS_USAGE, code,
                       QStringLiteral("%1: its samples make no record: %2")
                           .arg(fileName, KW_GetAcceptanceText(code)));
    }
    return record;
}

t_TimeBase RequireTimeBase(const CKWRecord& record, const QString& fileName, bool sharesStart)
{
    t_TimeBase base;
    for (UINT32 i = 0; i < record.GetTraceCount(); ++i)
    {
        const KW_TraceInfo trace = record.GetTrace(i);
        if (trace.count == 0)
        {
            continue;
        }
        if (trace.format == eKW_SAMPLES_FRAMES)
        {
            throw BadWave(fileName, QStringLiteral("%1 has frames of a bus, which such a file does "
                                                   "not hold; choose others by --channel, or write "
                                                   "a .rec")
                                        .arg(GetTraceName(record, i)));
        }
        if (base.traces.empty())
        {
            base = {{}, trace.count, trace.interval, trace.start};
        }
        if (trace.count != base.count || trace.interval != base.interval ||
            (sharesStart && trace.start != base.start))
        {
            throw BadWave(
                fileName,
                QStringLiteral("%1 and %2 have other points or times, which such a file "
                               "does not hold; choose by --channel, or write a .rec")
                    .arg(GetTraceName(record, base.traces.front()), GetTraceName(record, i)));
        }
        base.traces.push_back(i);
    }
    if (base.traces.empty())
    {
        throw BadWave(fileName, QStringLiteral("there are no points to write"));
    }
    return base;
}

CWaveValues::CWaveValues(const CKWRecord& record, UINT32 trace)
    : m_samples(record.GetSamples(trace)), m_info(record.GetTrace(trace))
{
}

double CWaveValues::Get(UINT32 point, bool upper) const
{
    const std::byte* const place =
        m_samples.data() + std::size_t{point} * KW_GetPointSize(m_info.format);
    if (m_info.format == eKW_SAMPLES_FLOAT)
    {
        float sample = 0;
        std::memcpy(&sample, place, sizeof(sample));
        return double{sample} * m_info.scale + m_info.offset;
    }
    INT16 sample = 0;
    std::memcpy(&sample, place + (upper ? sizeof(sample) : 0), sizeof(sample));
    return sample == std::numeric_limits<INT16>::min()
               ? std::numeric_limits<double>::quiet_NaN()
               : static_cast<double>(sample) * m_info.scale + m_info.offset;
}

CKWRecord ReadWave(const QString& fileName, QStringList& notes, const t_WaveOptions& options)
{
    switch (FormatOfContents(ReadBeginning(fileName), FormatOfName(fileName)))
    {
    case eFORMAT::Record:
        return ReadRecord(fileName);
    case eFORMAT::Sound:
        return ReadSoundWave(fileName, notes);
    case eFORMAT::Table:
        return ReadCsvWave(fileName, options, notes);
    case eFORMAT::Unknown:
        break;
    }
    throw BadWave(fileName, QStringLiteral("it is no record file, no WAV file and no table"));
}

void RequireWaveName(const QString& fileName)
{
    if (FormatOfName(fileName) == eFORMAT::Unknown)
    {
        throw BadWave(fileName,
                      QStringLiteral("the name has to end in .rec, .wav, .csv, .tsv or .txt"));
    }
}

void WriteWave(const QString& fileName, const CKWRecord& record, QStringList& notes)
{
    RequireWaveName(fileName);
    switch (FormatOfName(fileName))
    {
    case eFORMAT::Record:
        WriteRecord(fileName, record);
        break;
    case eFORMAT::Sound:
        WriteSoundWave(fileName, record, notes);
        break;
    default:
        WriteCsvWave(fileName, record, notes);
        break;
    }
}

QString GetTraceName(const CKWRecord& record, UINT32 trace)
{
    const KW_ZEL_CHANNEL channel = record.GetTrace(trace).channel;
    return channel == eKW_ZEL_CHANNEL_NONE ? QStringLiteral("trace %1").arg(trace + 1)
                                           : GetEnumText(channel);
}

UINT32 FindTrace(const CKWRecord& record, const QString& wanted, const QString& fileName)
{
    QStringList names;
    for (UINT32 i = 0; i < record.GetTraceCount(); ++i)
    {
        if (record.GetTrace(i).count == 0)
        {
            continue;
        }
        names << GetTraceName(record, i);
        if (wanted.isEmpty() || wanted.compare(names.back(), Qt::CaseInsensitive) == 0 ||
            wanted == QString::number(i + 1))
        {
            return i;
        }
    }
    throw CFailure(eSTATUS_USAGE, eKW_ACC_NOT_FOUND,
                   names.isEmpty() ? QStringLiteral("%1 has no points").arg(fileName)
                                   : QStringLiteral("%1 has no trace \"%2\"; it has %3")
                                         .arg(fileName, wanted, names.join(QStringLiteral(", "))));
}
