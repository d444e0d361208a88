// SPDX-License-Identifier: MIT
#include "Streams/RecordFile.h"

#include "EnumNameInfo.h"
#include "Streams/RecordBytes.h"
#include "WholeFile.h"

#include <QCryptographicHash>
#include <array>
#include <cmath>
#include <cstdarg>

using namespace NRecordBytes;

namespace
{
constexpr UINT64 kMaxFileSize = UINT64{eKW_RECORD_BYTES} + 65536;

/** Where a trace's entry says what; by these a report tells its place. */
enum e_EntryField : UINT32
{
    eENTRY_CHANNEL = 0,
    eENTRY_FORMAT = 4,
    eENTRY_UNIT = 8,
    eENTRY_FLAGS = 12,
    eENTRY_COUNT = 16,
    eENTRY_SETTLING = 20,
    eENTRY_INTERVAL = 24,
    eENTRY_START = 32,
    eENTRY_SCALE = 40,
    eENTRY_OFFSET = 48,
    eENTRY_SAMPLES = 56,
};

/** The same of the head. */
enum e_HeadField : UINT32
{
    eHEAD_MAJOR = 8,
    eHEAD_MINOR = 10,
    eHEAD_SIZE = 12,
    eHEAD_TRACES = 16,
    eHEAD_ENTRY_SIZE = 20,
    eHEAD_FILE_SIZE = 24,
    eHEAD_NUMBER = 32,
    eHEAD_TRIGGER_TIME = 40,
    eHEAD_SETTINGS_COUNTER = 48,
    eHEAD_MASK_RESULT = 56,
    eHEAD_SOURCE = 64,
};

QByteArray DigestOf(const char* bytes, UINT64 size)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    hash.addData(bytes, static_cast<int>(size));
#else
    hash.addData(QByteArrayView(bytes, static_cast<qsizetype>(size)));
#endif
    return hash.result();
}

/** Reads a file step by step; the first thing that is wrong ends it. */
class CRecordParser
{
public:
    CRecordParser(const QByteArray& bytes, KW_RecordReport& report)
        : m_bytes(bytes.constData()), m_size(static_cast<UINT64>(bytes.size())), m_report(report)
    {
    }

    bool Read()
    {
        return CheckKind() && CheckSize() && CheckDigest() && ReadHead() && ReadTraces();
    }
    /** None where there is no memory for it. */
    CKWRecord Make() const
    {
        CKWRecordMaker maker(m_info, {m_traces.data(), m_count});
        for (UINT32 i = 0; i < m_count; ++i)
        {
            const std::span<std::byte> room = maker.Reserve(i);
            ConvertSamples(m_bytes + m_places[i], reinterpret_cast<char*>(room.data()), room.size(),
                           m_traces[i].format);
            maker.Advance(i, m_traces[i].count);
        }
        return maker.Make();
    }

private:
    /** The text as printf has it: literals of 16 bits a character are many times the code. */
    [[gnu::format(printf, 3, 4)]] bool Fail(UINT64 place, const char* text, ...)
    {
        std::va_list arguments;
        va_start(arguments, text);
        m_report = {true, place, QString::vasprintf(text, arguments)};
        va_end(arguments);
        return false;
    }
    template <class T>
    T Get(UINT64 place) const
    {
        return GetLittle<T>(m_bytes + place);
    }

    bool CheckKind()
    {
        if (!KW_IsRecordFile(QByteArray::fromRawData(
                m_bytes, static_cast<int>(std::min<UINT64>(m_size, kMagic.size())))))
        {
            return Fail(0, "this is no record file, or it was changed as if it were a text");
        }
        if (m_size < kHeadSize + kDigestSize)
        {
            return Fail(m_size, "the file is cut off within its head; copy it again from where it "
                                "is whole");
        }
        const UINT32 major = Get<UINT16>(eHEAD_MAJOR);
        return major == kMajor ||
               Fail(eHEAD_MAJOR,
                    "the file is of version %u.%u, and %u.x can be read here; convert it where it "
                    "was written",
                    major, UINT32{Get<UINT16>(eHEAD_MINOR)}, UINT32{kMajor});
    }

    bool CheckSize()
    {
        const UINT64 size = Get<UINT64>(eHEAD_FILE_SIZE);
        return size == m_size ||
               Fail(std::min(size, m_size),
                    size > m_size ? "the file is cut off: it has %llu of %llu bytes; copy it again "
                                    "from where it is whole"
                                  : "the file has %llu bytes, and %llu belong to it",
                    quint64{m_size}, quint64{size});
    }

    bool CheckDigest()
    {
        const UINT64 end = m_size - kDigestSize;
        return DigestOf(m_bytes, end) ==
                   QByteArray::fromRawData(m_bytes + end, static_cast<int>(kDigestSize)) ||
               Fail(end, "the file is damaged: its digest is another; copy it again from where it "
                         "is whole");
    }

    bool ReadHead()
    {
        m_headSize = Get<UINT32>(eHEAD_SIZE);
        m_entrySize = Get<UINT32>(eHEAD_ENTRY_SIZE);
        const UINT32 traces = Get<UINT32>(eHEAD_TRACES);
        const INT32 result = Get<INT32>(eHEAD_MASK_RESULT);
        if (traces == 0 || traces > eKW_RECORD_TRACES)
        {
            return Fail(eHEAD_TRACES, "a record has 1 to %u traces, not %u",
                        UINT32{eKW_RECORD_TRACES}, traces);
        }
        if (m_headSize < kHeadSize || m_entrySize < kEntrySize ||
            UINT64{m_headSize} + UINT64{m_entrySize} * traces > m_size - kDigestSize)
        {
            return Fail(eHEAD_SIZE, "head and table of traces do not fit");
        }
        if (result < eKW_MASK_NOT_TESTED || result > eKW_MASK_FAILED)
        {
            return Fail(eHEAD_MASK_RESULT, "a mask test has no result %d", result);
        }
        m_info = {Get<UINT64>(eHEAD_NUMBER), Get<INT64>(eHEAD_TRIGGER_TIME),
                  Get<INT64>(eHEAD_SETTINGS_COUNTER), static_cast<KW_MASK_RESULT>(result),
                  Get<UINT64>(eHEAD_SOURCE)};
        m_count = traces;
        m_behind = UINT64{m_headSize} + UINT64{m_entrySize} * traces;
        return true;
    }

    bool ReadTraces()
    {
        for (UINT32 i = 0; i < m_count; ++i)
        {
            const UINT64 entry = m_headSize + UINT64{m_entrySize} * i;
            if (!ReadKinds(entry, m_traces[i]) || !ReadNumbers(entry, m_traces[i]) ||
                !ReadSamples(entry, i))
            {
                return false;
            }
        }
        return true;
    }

    bool ReadKinds(UINT64 entry, KW_TraceInfo& trace)
    {
        const INT32 channel = Get<INT32>(entry + eENTRY_CHANNEL);
        const INT32 format = Get<INT32>(entry + eENTRY_FORMAT);
        const INT32 unit = Get<INT32>(entry + eENTRY_UNIT);
        const auto unknown = [&](e_EntryField field, const char* what, INT32 number)
        {
            return Fail(entry + field, "no %s has the number %d; a newer version may know it", what,
                        number);
        };
        if (!GetStaticEnumNameInfo<KW_ZEL_CHANNEL>().IsValue(channel))
        {
            return unknown(eENTRY_CHANNEL, "channel", channel);
        }
        if (format < 0 || format >= eKW_SAMPLES_COUNT)
        {
            return unknown(eENTRY_FORMAT, "format", format);
        }
        if (!GetStaticEnumNameInfo<KW_UNIT>().IsValue(unit))
        {
            return unknown(eENTRY_UNIT, "unit", unit);
        }
        trace.channel = static_cast<KW_ZEL_CHANNEL>(channel);
        trace.format = static_cast<KW_SAMPLE_FORMAT>(format);
        trace.unit = static_cast<KW_UNIT>(unit);
        trace.flags = Get<UINT32>(entry + eENTRY_FLAGS);
        trace.count = Get<UINT32>(entry + eENTRY_COUNT);
        trace.settlingPoints = Get<UINT32>(entry + eENTRY_SETTLING);
        return true;
    }

    bool ReadNumbers(UINT64 entry, KW_TraceInfo& trace)
    {
        trace.interval = Get<double>(entry + eENTRY_INTERVAL);
        trace.start = Get<double>(entry + eENTRY_START);
        trace.scale = Get<double>(entry + eENTRY_SCALE);
        trace.offset = Get<double>(entry + eENTRY_OFFSET);
        const auto check = [&](bool isGood, e_EntryField field, const char* what)
        {
            // A place without a trace may say what it likes.
            return isGood || trace.count == 0 ||
                   Fail(entry + field, "the %s of a trace is no number that it can be", what);
        };
        return check(std::isfinite(trace.interval) && trace.interval > 0, eENTRY_INTERVAL,
                     "interval") &&
               check(std::isfinite(trace.start), eENTRY_START, "start") &&
               check(std::isfinite(trace.scale) && trace.scale != 0, eENTRY_SCALE, "scale") &&
               check(std::isfinite(trace.offset), eENTRY_OFFSET, "offset");
    }

    /** Samples follow each other in the order of the traces. */
    bool ReadSamples(UINT64 entry, UINT32 trace)
    {
        const KW_TraceInfo& info = m_traces[trace];
        if (info.count == 0)
        {
            return true;
        }
        const UINT64 begin = Get<UINT64>(entry + eENTRY_SAMPLES);
        const UINT64 size = UINT64{info.count} * KW_GetPointSize(info.format);
        const UINT64 end = m_size - kDigestSize;
        if (begin < m_behind || begin > end || size > end - begin)
        {
            return Fail(entry + eENTRY_SAMPLES, "%u points at byte %llu do not fit", info.count,
                        quint64{begin});
        }
        m_behind = begin + size;
        m_places[trace] = begin;
        return true;
    }

    const char* m_bytes;
    UINT64 m_size;
    KW_RecordReport& m_report;
    UINT32 m_headSize = 0;
    UINT32 m_entrySize = 0;
    UINT64 m_behind = 0; ///< what stood before the next samples
    KW_RecordInfo m_info;
    UINT32 m_count = 0; ///< traces
    std::array<KW_TraceInfo, eKW_RECORD_TRACES> m_traces;
    std::array<UINT64, eKW_RECORD_TRACES> m_places{}; ///< of their samples
};

void PutHead(const KW_RecordInfo& info, UINT32 traces, UINT64 fileSize, char* head)
{
    std::copy(kMagic.begin(), kMagic.end(), head);
    PutLittle(head + eHEAD_MAJOR, kMajor);
    PutLittle(head + eHEAD_MINOR, kMinor);
    PutLittle(head + eHEAD_SIZE, static_cast<UINT32>(kHeadSize));
    PutLittle(head + eHEAD_TRACES, traces);
    PutLittle(head + eHEAD_ENTRY_SIZE, static_cast<UINT32>(kEntrySize));
    PutLittle(head + eHEAD_FILE_SIZE, fileSize);
    PutLittle(head + eHEAD_NUMBER, info.number);
    PutLittle(head + eHEAD_TRIGGER_TIME, info.triggerTime);
    PutLittle(head + eHEAD_SETTINGS_COUNTER, info.settingsCounter);
    PutLittle(head + eHEAD_MASK_RESULT, static_cast<INT32>(info.maskResult));
    PutLittle(head + eHEAD_SOURCE, info.source);
}

void PutEntry(const KW_TraceInfo& info, UINT64 samples, char* entry)
{
    PutLittle(entry + eENTRY_CHANNEL, static_cast<INT32>(info.channel));
    PutLittle(entry + eENTRY_FORMAT, static_cast<INT32>(info.format));
    PutLittle(entry + eENTRY_UNIT, static_cast<INT32>(info.unit));
    PutLittle(entry + eENTRY_FLAGS, info.flags);
    PutLittle(entry + eENTRY_COUNT, info.count);
    PutLittle(entry + eENTRY_SETTLING, info.settlingPoints);
    PutLittle(entry + eENTRY_INTERVAL, info.interval);
    PutLittle(entry + eENTRY_START, info.start);
    PutLittle(entry + eENTRY_SCALE, info.scale);
    PutLittle(entry + eENTRY_OFFSET, info.offset);
    PutLittle(entry + eENTRY_SAMPLES, samples);
}

constexpr UINT64 RoundUp(UINT64 size)
{
    return (size + kAlignment - 1) / kAlignment * kAlignment;
}

KW_ACCEPTANCE Refuse(KW_ACCEPTANCE code, const QString& text, KW_RecordReport& report)
{
    report = {false, 0, text};
    return code;
}
} // namespace

QString KW_FormatRecordReport(const QString& fileName, const KW_RecordReport& report)
{
    return report.hasPlace
               ? QStringLiteral("%1: byte %2: %3").arg(fileName).arg(report.place).arg(report.text)
               : fileName + QLatin1String(": ") + report.text;
}

bool KW_IsRecordFile(const QByteArray& beginning)
{
    return beginning.size() >= static_cast<int>(kMagic.size()) &&
           std::equal(kMagic.begin(), kMagic.end(), beginning.constData());
}

KW_ACCEPTANCE KW_ReadRecordBytes(const QByteArray& bytes, CKWRecord& record,
                                 KW_RecordReport& report)
{
    CRecordParser parser(bytes, report);
    if (!parser.Read())
    {
        return eKW_ACC_FILE_NOT_UNDERSTOOD;
    }
    CKWRecord made = parser.Make();
    if (!made)
    {
        return Refuse(eKW_ACC_FILE_NOT_READABLE,
                      QStringLiteral("its samples take more memory than a record may have"),
                      report);
    }
    record = std::move(made);
    report = {};
    return eKW_ACC_OK;
}

KW_ACCEPTANCE KW_ReadRecordFile(const QString& fileName, CKWRecord& record, KW_RecordReport& report)
{
    QByteArray bytes;
    QString error;
    if (!KW_ReadWholeFile(fileName, static_cast<qint64>(kMaxFileSize), bytes, error))
    {
        return Refuse(eKW_ACC_FILE_NOT_READABLE, error, report);
    }
    return KW_ReadRecordBytes(bytes, record, report);
}

KW_ACCEPTANCE KW_WriteRecordBytes(const CKWRecord& record, QByteArray& bytes,
                                  KW_RecordReport& report)
{
    const UINT32 traces = record.GetTraceCount();
    if (traces == 0)
    {
        return Refuse(eKW_ACC_NOTHING_TO_ACT_ON, QStringLiteral("there is no record to write"),
                      report);
    }
    UINT64 size = kHeadSize + kEntrySize * traces;
    std::array<UINT64, eKW_RECORD_TRACES> places{};
    for (UINT32 i = 0; i < traces; ++i)
    {
        places[i] = RoundUp(size);
        size = places[i] + record.GetSamples(i).size();
    }
    QByteArray written(static_cast<int>(size + kDigestSize), '\0');
    char* const begin = written.data();
    PutHead(record.GetInfo(), traces, size + kDigestSize, begin);
    for (UINT32 i = 0; i < traces; ++i)
    {
        const std::span<const std::byte> samples = record.GetSamples(i);
        PutEntry(record.GetTrace(i), places[i], begin + kHeadSize + kEntrySize * i);
        ConvertSamples(reinterpret_cast<const char*>(samples.data()), begin + places[i],
                       samples.size(), record.GetTrace(i).format);
    }
    const QByteArray digest = DigestOf(begin, size);
    std::copy(digest.begin(), digest.end(), begin + size);
    bytes = std::move(written);
    report = {};
    return eKW_ACC_OK;
}

KW_ACCEPTANCE KW_WriteRecordFile(const QString& fileName, const CKWRecord& record,
                                 KW_RecordReport& report)
{
    QByteArray bytes;
    QString error;
    const KW_ACCEPTANCE code = KW_WriteRecordBytes(record, bytes, report);
    if (KW_IsAccepted(code) && !KW_WriteWholeFile(fileName, bytes, error))
    {
        return Refuse(eKW_ACC_FILE_NOT_WRITABLE, error, report);
    }
    return code;
}
