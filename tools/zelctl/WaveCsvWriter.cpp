// SPDX-License-Identifier: MIT
#include "EnumText.h"
#include "WaveFormats.h"

#include <QSaveFile>
#include <array>
#include <charconv>
#include <cmath>

namespace
{
constexpr int kPiece = 1 << 20;

/** A file of text that grows piece by piece, and stands when it is whole. */
class CTableFile
{
public:
    explicit CTableFile(const QString& fileName) : m_fileName(fileName), m_file(fileName)
    {
        if (!m_file.open(QIODevice::WriteOnly))
        {
            throw UnwritableWave(m_fileName, m_file.errorString());
        }
    }
    void Add(std::string_view text)
    {
        m_text.append(text.data(), static_cast<int>(text.size()));
        if (m_text.size() > kPiece)
        {
            Flush();
        }
    }
    void Add(const QString& text) { Add(text.toUtf8().toStdString()); }
    /** With the digits that a decimal number needs, and not those of its rounding. */
    void AddTime(double time)
    {
        constexpr int kDigits = 15;
        const auto end = std::to_chars(m_number.data(), m_number.data() + m_number.size(), time,
                                       std::chars_format::general, kDigits);
        Add({m_number.data(), static_cast<std::size_t>(end.ptr - m_number.data())});
    }
    /** As a float needs them; nothing for an invalid one. */
    void AddValue(double value)
    {
        if (!std::isnan(value))
        {
            const auto end = std::to_chars(m_number.data(), m_number.data() + m_number.size(),
                                           static_cast<float>(value));
            Add({m_number.data(), static_cast<std::size_t>(end.ptr - m_number.data())});
        }
    }
    void Finish()
    {
        Flush();
        if (!m_file.commit())
        {
            throw UnwritableWave(m_fileName, m_file.errorString());
        }
    }

private:
    void Flush()
    {
        if (m_file.write(m_text) != m_text.size())
        {
            throw UnwritableWave(m_fileName, m_file.errorString());
        }
        m_text.clear();
    }

    QString m_fileName;
    QSaveFile m_file;
    QByteArray m_text;
    std::array<char, 64> m_number{};
};

QString NameOf(const CKWRecord& record, UINT32 trace, const char* suffix = "")
{
    const QString unit = KW_GetUnitText(record.GetTrace(trace).unit);
    const bool hasUnit = !unit.isEmpty() && record.GetTrace(trace).unit != eKW_UNIT_NOT_DEFINED;
    return GetTraceName(record, trace) + QLatin1String(suffix) +
           (hasUnit ? QStringLiteral(" (%1)").arg(unit) : QString());
}

/** A trace as columns. */
class CColumns
{
public:
    CColumns(const CKWRecord& record, UINT32 trace)
        : m_record(record), m_trace(trace), m_format(record.GetTrace(trace).format),
          m_values(record, trace)
    {
    }

    QStringList GetNames() const
    {
        QStringList names;
        switch (m_format)
        {
        case eKW_SAMPLES_LINES:
            for (UINT32 line = 0; line < kLines; ++line)
            {
                names << QStringLiteral("D%1").arg(line);
            }
            return names;
        case eKW_SAMPLES_MINMAX:
            return {NameOf(m_record, m_trace, " min"), NameOf(m_record, m_trace, " max")};
        default:
            return {NameOf(m_record, m_trace)};
        }
    }

    void Write(CTableFile& file, UINT32 point, char separator) const
    {
        const std::string_view part(&separator, 1);
        if (m_format == eKW_SAMPLES_LINES)
        {
            const auto lines = std::to_integer<UINT32>(m_record.GetSamples(m_trace)[point]);
            for (UINT32 line = 0; line < kLines; ++line)
            {
                file.Add(part);
                file.Add(std::string_view((lines >> line & 1U) != 0 ? "1" : "0"));
            }
            return;
        }
        file.Add(part);
        file.AddValue(m_values.Get(point));
        if (m_format == eKW_SAMPLES_MINMAX)
        {
            file.Add(part);
            file.AddValue(m_values.Get(point, true));
        }
    }

private:
    CKWRecord m_record;
    UINT32 m_trace;
    KW_SAMPLE_FORMAT m_format;
    CWaveValues m_values;
};

void NoteLosses(const CKWRecord& record, const t_TimeBase& base, const QString& fileName,
                QStringList& notes)
{
    for (const UINT32 trace : base.traces)
    {
        const KW_TraceInfo info = record.GetTrace(trace);
        if (info.settlingPoints > 0)
        {
            notes << QStringLiteral("%1: that the first %2 points of %3 are settling is not kept")
                         .arg(fileName)
                         .arg(info.settlingPoints)
                         .arg(GetTraceName(record, trace));
        }
    }
}
} // namespace

void WriteCsvWave(const QString& fileName, const CKWRecord& record, QStringList& notes)
{
    const t_TimeBase base = RequireTimeBase(record, fileName, true);
    const bool isCsv = fileName.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive);
    const char separator = isCsv ? ',' : '\t';
    CTableFile file(fileName);
    std::vector<CColumns> columns;
    file.Add(std::string_view("time (s)"));
    for (const UINT32 trace : base.traces)
    {
        columns.emplace_back(record, trace);
        for (const QString& name : columns.back().GetNames())
        {
            file.Add({&separator, 1});
            file.Add(name);
        }
    }
    file.Add(std::string_view("\n"));
    for (UINT32 point = 0; point < base.count; ++point)
    {
        file.AddTime(base.start + point * base.interval);
        for (const CColumns& column : columns)
        {
            column.Write(file, point, separator);
        }
        file.Add(std::string_view("\n"));
    }
    file.Finish();
    NoteLosses(record, base, fileName, notes);
}
