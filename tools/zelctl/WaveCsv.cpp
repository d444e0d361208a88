// SPDX-License-Identifier: MIT
#include "WaveCsvLines.h"
#include "WaveFormats.h"
#include "WaveUnits.h"

#include <QFile>
#include <bitset>
#include <cmath>
#include <limits>

namespace
{
constexpr qint64 kMaxFileSize = qint64{1} << 30;
constexpr double kStray = 0.1; ///< of an interval, that a time may be off

/** A column of the table. */
struct t_Column
{
    QString name;
    KW_UNIT unit = eKW_UNIT_NONE;
    double factor = 1.0; ///< of the unit as it is written, such as mV
    std::vector<float> points;
};

class CCsvWaveReader
{
public:
    CCsvWaveReader(const QString& fileName, const QByteArray& text, const t_WaveOptions& options,
                   QStringList& notes)
        : m_fileName(fileName), m_options(options), m_notes(notes),
          m_lines(std::string_view(text.constData(), static_cast<std::size_t>(text.size())))
    {
    }

    CKWRecord Read()
    {
        ReadHead();
        do
        {
            ReadRow();
        } while (m_lines.Next(m_cells));
        return MakeRecord();
    }

private:
    [[noreturn]] void Fail(UINT32 line, std::size_t column, const QString& text) const
    {
        throw BadWave(QStringLiteral("%1:%2:%3").arg(m_fileName).arg(line).arg(column), text);
    }
    [[noreturn]] void Fail(const t_CsvCell& cell, const QString& text) const
    {
        Fail(m_lines.GetLine(), cell.column, text);
    }
    bool IsNumber(const t_CsvCell& cell) const
    {
        double number = 0;
        return m_lines.Parse(cell.text, number);
    }

    /** Names, and perhaps a line of units; ends before the first row of numbers. */
    void ReadHead()
    {
        if (!m_lines.Next(m_cells))
        {
            throw BadWave(m_fileName, QStringLiteral("the file has no lines"));
        }
        const bool hasNames = !IsNumber(m_cells.front());
        m_columns.resize(m_cells.size());
        for (std::size_t i = 0; hasNames && i < m_cells.size(); ++i)
        {
            Name(i);
        }
        if (hasNames && !m_lines.Next(m_cells))
        {
            Fail(m_lines.GetLine() + 1, 1, QStringLiteral("there are no numbers behind the names"));
        }
        if (hasNames && !IsNumber(m_cells.front()) && m_cells.size() == m_columns.size() &&
            !m_cells.front().text.empty())
        {
            ReadUnits();
        }
        const t_Column& first = m_columns.front();
        m_hasTime = hasNames ? IsTime(first) : m_columns.size() > 1;
        if (m_hasTime && m_columns.size() == 1)
        {
            Fail(1, 1, QStringLiteral("there is a time only, and nothing that was measured"));
        }
    }

    /** "C1 (mV)", "time [s]", "C1" */
    void Name(std::size_t place)
    {
        const QString text = QString::fromUtf8(m_cells[place].text.data(),
                                               static_cast<int>(m_cells[place].text.size()))
                                 .trimmed();
        t_Column& column = m_columns[place];
        const bool isRound = text.endsWith(QLatin1Char(')'));
        const auto open = text.lastIndexOf(QLatin1Char(isRound ? '(' : '['));
        const bool hasUnit = open >= 0 && (isRound || text.endsWith(QLatin1Char(']')));
        column.name = (hasUnit ? text.left(open) : text).trimmed();
        if (hasUnit)
        {
            SetUnit(place, text.mid(open + 1, text.size() - open - 2).trimmed());
        }
    }

    void SetUnit(std::size_t place, const QString& text)
    {
        t_Column& column = m_columns[place];
        if (!text.isEmpty() && !FindWaveUnit(text, column.unit, column.factor))
        {
            m_notes << QStringLiteral("%1:%2:%3: the unit \"%4\" is not known; the numbers have "
                                      "none")
                           .arg(m_fileName)
                           .arg(m_lines.GetLine())
                           .arg(m_cells[place].column)
                           .arg(text);
        }
    }

    /** A second line of names has the units, with brackets or without. */
    void ReadUnits()
    {
        for (std::size_t i = 0; i < m_cells.size(); ++i)
        {
            QString text =
                QString::fromUtf8(m_cells[i].text.data(), static_cast<int>(m_cells[i].text.size()))
                    .trimmed();
            if (text.startsWith(QLatin1Char('(')) || text.startsWith(QLatin1Char('[')))
            {
                text = text.mid(1, text.size() - 2);
            }
            SetUnit(i, text);
        }
        if (!m_lines.Next(m_cells))
        {
            Fail(m_lines.GetLine() + 1, 1, QStringLiteral("there are no numbers behind the units"));
        }
    }

    static bool IsTime(const t_Column& column)
    {
        const QString name = column.name.toLower();
        return column.unit == eKW_UNIT_FREQ_SEC || name == QLatin1String("time") ||
               name == QLatin1String("t") || name == QLatin1String("x");
    }

    /** By a power of ten, of which only those from 1 on are exact: 10 µs are 10 / 10^6 s. */
    static double Scale(double number, double factor)
    {
        return factor < 1.0 ? number / std::round(1.0 / factor) : number * factor;
    }

    void ReadRow()
    {
        if (m_cells.size() != m_columns.size())
        {
            Fail(m_lines.GetLine(), m_cells.back().column,
                 QStringLiteral("the line has %1 cells instead of %2")
                     .arg(m_cells.size())
                     .arg(m_columns.size()));
        }
        if ((m_rows.size() + 1) * m_columns.size() * sizeof(float) > eKW_RECORD_BYTES)
        {
            Fail(m_lines.GetLine(), 1, QStringLiteral("the table is larger than a record may be"));
        }
        for (std::size_t i = 0; i < m_columns.size(); ++i)
        {
            const double number = Scale(ReadCell(m_cells[i]), m_columns[i].factor);
            if (i == 0 && m_hasTime)
            {
                m_times.push_back(number);
                continue;
            }
            if (std::abs(number) > std::numeric_limits<float>::max())
            {
                Fail(m_cells[i], QStringLiteral("the number is beyond what a float holds"));
            }
            m_columns[i].points.push_back(static_cast<float>(number));
        }
        m_rows.push_back(m_lines.GetLine());
    }

    /** An invalid point where there is no number. */
    double ReadCell(const t_CsvCell& cell) const
    {
        double number = std::numeric_limits<double>::quiet_NaN();
        const bool isTime = m_hasTime && cell.column == m_cells.front().column;
        if (!cell.text.empty() && !m_lines.Parse(cell.text, number))
        {
            Fail(cell, QStringLiteral("\"%1\" is no number%2")
                           .arg(QString::fromUtf8(
                                    cell.text.data(),
                                    static_cast<int>(std::min<std::size_t>(cell.text.size(), 40))),
                                m_lines.GetHint(cell.text)));
        }
        if (std::isinf(number) || (isTime && std::isnan(number) && m_options.interval == 0))
        {
            Fail(cell, isTime ? QStringLiteral("there is no time")
                              : QStringLiteral("no trace has infinite values"));
        }
        return number;
    }

    /** Of the times, which may be rounded: the shortest number that leads from the first to the
        last one. */
    double FindInterval() const
    {
        const double steps = static_cast<double>(m_times.size()) - 1.0;
        const double length = m_times.back() - m_times.front();
        const double interval = length / steps;
        constexpr double kRounding = 1e-6;
        for (int digits = 1; digits <= 15; ++digits)
        {
            const double shorter = QByteArray::number(interval, 'g', digits).toDouble();
            if (std::abs(shorter * steps - length) <= kRounding * std::abs(interval))
            {
                return shorter;
            }
        }
        return interval;
    }

    void SetTimes(KW_TraceInfo& info) const
    {
        if (m_options.interval > 0)
        {
            info.interval = m_options.interval;
            info.start = m_times.empty() || std::isnan(m_times.front()) ? 0.0 : m_times.front();
            return;
        }
        if (m_times.empty())
        {
            return;
        }
        info.start = m_times.front();
        if (m_times.size() > 1)
        {
            info.interval = FindInterval();
            if (!(info.interval > 0))
            {
                Fail(m_rows.back(), 1, QStringLiteral("the time does not rise"));
            }
            CheckTimes(info);
        }
    }

    void CheckTimes(const KW_TraceInfo& info) const
    {
        const QString hint =
            QStringLiteral("; points of a record have one interval: give it by --interval, if the "
                           "times are only rounded");
        for (std::size_t i = 1; i < m_times.size(); ++i)
        {
            const double expected = info.start + static_cast<double>(i) * info.interval;
            if (!(std::abs(m_times[i] - expected) <= kStray * info.interval))
            {
                Fail(m_rows[i], 1,
                     QStringLiteral("the time is %1 s, and by the interval of %2 s it would be %3 "
                                    "s")
                             .arg(m_times[i], 0, 'g', 9)
                             .arg(info.interval, 0, 'g', 9)
                             .arg(expected, 0, 'g', 9) +
                         hint);
            }
        }
    }

    CKWRecord MakeRecord()
    {
        KW_TraceInfo info;
        info.format = eKW_SAMPLES_FLOAT;
        SetTimes(info);
        t_WaveDraft draft;
        t_Taken taken;
        for (const t_Column& column : m_columns)
        {
            taken.set(static_cast<std::size_t>(WaveChannelOf(column.name)));
        }
        for (std::size_t i = m_hasTime ? 1 : 0; i < m_columns.size(); ++i)
        {
            if (AddLines(i, info, draft))
            {
                i += kLines - 1;
                continue;
            }
            info.channel = TakeChannel(m_columns[i].name, taken);
            info.unit = m_columns[i].unit;
            draft.Add(info, m_columns[i].points);
        }
        if (draft.traces.size() > eKW_RECORD_TRACES)
        {
            throw BadWave(m_fileName, QStringLiteral("the table has %1 traces, and a record has up "
                                                     "to %2")
                                          .arg(draft.traces.size())
                                          .arg(UINT32{eKW_RECORD_TRACES}));
        }
        return draft.Make(m_fileName);
    }

    using t_Taken = std::bitset<eKW_ZEL_CHANNEL_NONE + 1>;

    /** The channel of the name; of another name the next analog channel that no column has. */
    static KW_ZEL_CHANNEL TakeChannel(const QString& name, t_Taken& taken)
    {
        const KW_ZEL_CHANNEL channel = WaveChannelOf(name);
        for (std::size_t free = eKW_ZEL_CHANNEL_C1;
             channel == eKW_ZEL_CHANNEL_NONE && free <= eKW_ZEL_CHANNEL_C4; ++free)
        {
            if (!taken.test(free))
            {
                taken.set(free);
                return static_cast<KW_ZEL_CHANNEL>(free);
            }
        }
        return channel;
    }

    /** Columns D0 to D7 of zeros and ones are digital lines. */
    bool AddLines(std::size_t first, KW_TraceInfo info, t_WaveDraft& draft) const
    {
        if (first + kLines > m_columns.size())
        {
            return false;
        }
        std::vector<UINT8> points(m_rows.size(), 0);
        for (std::size_t line = 0; line < kLines; ++line)
        {
            const t_Column& column = m_columns[first + line];
            if (WaveChannelOf(column.name) != static_cast<INT32>(eKW_ZEL_CHANNEL_D0 + line))
            {
                return false;
            }
            for (std::size_t i = 0; i < points.size(); ++i)
            {
                if (column.points[i] != 0.0F && column.points[i] != 1.0F)
                {
                    return false;
                }
                points[i] =
                    static_cast<UINT8>(points[i] | (column.points[i] != 0.0F ? 1U << line : 0U));
            }
        }
        info.format = eKW_SAMPLES_LINES;
        info.channel = eKW_ZEL_CHANNEL_D0;
        info.unit = eKW_UNIT_NOT_DEFINED;
        draft.Add(info, points);
        return true;
    }

    QString m_fileName;
    t_WaveOptions m_options;
    QStringList& m_notes;
    CCsvLines m_lines;
    std::vector<t_CsvCell> m_cells; ///< of the present line
    std::vector<t_Column> m_columns;
    bool m_hasTime = false;
    std::vector<double> m_times;
    std::vector<UINT32> m_rows; ///< line of each point
};
} // namespace

CKWRecord ReadCsvWave(const QString& fileName, const t_WaveOptions& options, QStringList& notes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
    {
        throw UnreadableWave(fileName, file.errorString());
    }
    if (file.size() > kMaxFileSize)
    {
        throw UnreadableWave(fileName, QStringLiteral("it is larger than 1 GiB"));
    }
    const QByteArray text = file.readAll();
    if (text.contains('\0'))
    {
        throw BadWave(fileName,
                      QStringLiteral("this is no table: byte %1 is zero").arg(text.indexOf('\0')));
    }
    return CCsvWaveReader(fileName, text, options, notes).Read();
}
