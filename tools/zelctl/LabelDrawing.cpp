// SPDX-License-Identifier: MIT
#include "LabelDrawing.h"

#include <algorithm>
#include <limits>

namespace
{
constexpr std::size_t kLetters = 26;
constexpr UINT32 kBitsOfByte = 8;
constexpr UINT32 kBitsOfNibble = 4;

UINT32 UnitOf(const KW_LabelList& list)
{
    return list.protocol == eKW_ZEL_SERIALBUS_PROTOCOL_SENT ? kBitsOfNibble : kBitsOfByte;
}

/** Number of the next less significant bit of a big-endian signal. */
UINT32 NextBit(UINT32 bit, UINT32 unit)
{
    return bit % unit == 0 ? bit + 2 * unit - 1 : bit - 1;
}

/** What stands in each bit of a payload, by the bit's number. */
class CBits
{
public:
    CBits(UINT32 bits, UINT32 unit) : m_unit(unit), m_cells(bits) {}

    void Add(const CLabelListSignal& signal, const QString& letters)
    {
        const bool isBig = signal.getEndianness() == eKW_ENDIANNESS_BIG_ENDIAN;
        UINT32 bit = signal.getStartBit();
        const UINT32 last = signal.getBitLength() - 1;
        for (UINT32 i = 0; i < signal.getBitLength() && bit < m_cells.size(); ++i)
        {
            const bool isMost = i == (isBig ? 0 : last);
            const bool isLeast = i == (isBig ? last : 0);
            Put(bit,
                letters + QLatin1String(isMost ? "^" : "") + QLatin1String(isLeast ? "_" : ""));
            bit = isBig ? NextBit(bit, m_unit) : bit + 1;
        }
    }

    QStringList GetLines() const
    {
        const int width = GetWidth();
        QString head = QLatin1String(m_unit == kBitsOfByte ? "  byte" : "  nibble") + QString();
        head = head.leftJustified(kMargin);
        for (UINT32 column = m_unit; column-- > 0;)
        {
            head += QString::number(column).leftJustified(width);
        }
        QStringList lines{Trimmed(head)};
        for (UINT32 row = 0; row * m_unit < m_cells.size(); ++row)
        {
            QString line = QStringLiteral("%1").arg(row, 6).leftJustified(kMargin);
            for (UINT32 column = m_unit; column-- > 0;)
            {
                const QString& cell = m_cells[row * m_unit + column];
                line += (cell.isEmpty() ? QStringLiteral(".") : cell).leftJustified(width);
            }
            lines << Trimmed(line);
        }
        return lines;
    }

private:
    static constexpr int kMargin = 10;
    static constexpr int kWidest = 8;

    /** Signals that share a bit stand beside each other; of many the first. */
    void Put(UINT32 bit, const QString& text)
    {
        QString& cell = m_cells[bit];
        const QString both = cell.isEmpty() ? text : cell + QLatin1Char('/') + text;
        const bool isFull = cell.endsWith(QLatin1String("/…"));
        const bool fits = both.size() < kWidest;
        cell = isFull ? cell : fits ? both : cell + QStringLiteral("/…");
    }

    int GetWidth() const
    {
        constexpr int kLeast = 5;
        int width = kLeast;
        for (const QString& cell : m_cells)
        {
            width = std::max(width, static_cast<int>(cell.size()) + 1);
        }
        return width;
    }

    static QString Trimmed(QString line)
    {
        while (line.endsWith(QLatin1Char(' ')))
        {
            line.chop(1);
        }
        return line;
    }

    UINT32 m_unit;
    std::vector<QString> m_cells;
};

bool Selects(const std::vector<KW_RawRange>& ranges, UINT64 raw)
{
    return std::any_of(ranges.begin(), ranges.end(),
                       [raw](const KW_RawRange& range)
                       { return range.first <= raw && raw <= range.last; });
}

/** Multiplexed signals of a message by what selects them. */
class CMultiplex
{
public:
    explicit CMultiplex(const KW_LabelEntry& entry) : m_signals(KW_GetSignals(entry))
    {
        for (std::size_t i = 0; i < m_signals.size(); ++i)
        {
            const std::string& multiplexor = m_signals[i].details->multiplexor;
            m_numbers.emplace(m_signals[i].signal->getName(), i);
            if (multiplexor.empty())
            {
                m_always.push_back(i);
            }
            else if (m_selected[multiplexor].empty())
            {
                m_selected[multiplexor].push_back(i);
                m_multiplexors.push_back(multiplexor);
            }
            else
            {
                m_selected[multiplexor].push_back(i);
            }
        }
    }

    t_LabelPages GetPages(std::size_t most)
    {
        t_LabelPages pages;
        for (const std::string& multiplexor : m_multiplexors)
        {
            AddPages(multiplexor, most, pages);
        }
        if (m_multiplexors.empty())
        {
            pages.pages.push_back({{}, m_always});
        }
        return pages;
    }

    t_LabelPage GetPage(const t_Multiplex& values) const
    {
        t_LabelPage page;
        for (std::size_t i = 0; i < m_signals.size(); ++i)
        {
            if (IsThere(i, values))
            {
                page.signals.push_back(i);
            }
        }
        return page;
    }

private:
    /** The values from one to the next at which signals come or go, in order. */
    std::map<UINT64, std::vector<std::size_t>> GetSteps(const std::string& multiplexor) const
    {
        std::map<UINT64, std::vector<std::size_t>> steps;
        for (const std::size_t number : m_selected.at(multiplexor))
        {
            for (const KW_RawRange& range : m_signals[number].details->selectedBy)
            {
                steps[range.first].push_back(number);
                if (range.last != std::numeric_limits<UINT64>::max())
                {
                    steps[range.last + 1].push_back(number);
                }
            }
        }
        return steps;
    }

    void AddPages(const std::string& multiplexor, std::size_t most, t_LabelPages& pages) const
    {
        const auto steps = GetSteps(multiplexor);
        std::vector<std::pair<std::vector<std::size_t>, std::vector<KW_RawRange>>> sets;
        std::vector<std::size_t> there;
        for (auto step = steps.begin(); step != steps.end(); ++step)
        {
            Turn(step->second, there);
            const auto next = std::next(step);
            const UINT64 last =
                next == steps.end() ? std::numeric_limits<UINT64>::max() : next->first - 1;
            if (there.empty())
            {
                continue;
            }
            const auto same = std::find_if(sets.begin(), sets.end(),
                                           [&](const auto& set) { return set.first == there; });
            if (same != sets.end())
            {
                same->second.push_back({step->first, last});
            }
            else if (pages.pages.size() + sets.size() < most)
            {
                sets.push_back({there, {{step->first, last}}});
            }
            else
            {
                ++pages.more;
            }
        }
        for (const auto& [signals, ranges] : sets)
        {
            pages.pages.push_back(MakePage(multiplexor, signals, ranges));
        }
    }

    /** Signals that are named come when they are not there, and else go. */
    static void Turn(const std::vector<std::size_t>& numbers, std::vector<std::size_t>& there)
    {
        for (const std::size_t number : numbers)
        {
            const auto place = std::lower_bound(there.begin(), there.end(), number);
            if (place != there.end() && *place == number)
            {
                there.erase(place);
            }
            else
            {
                there.insert(place, number);
            }
        }
    }

    t_LabelPage MakePage(const std::string& multiplexor, const std::vector<std::size_t>& signals,
                         const std::vector<KW_RawRange>& ranges) const
    {
        t_LabelPage page{QString::fromStdString(multiplexor) + QStringLiteral(" = ") +
                             GetRangesText(ranges),
                         m_always};
        page.signals.insert(page.signals.end(), signals.begin(), signals.end());
        // What selects the multiplexor itself; a circle of them ends where it began.
        auto found = m_numbers.find(multiplexor);
        for (std::size_t steps = 0; found != m_numbers.end() && steps < m_signals.size(); ++steps)
        {
            const KW_LabelSignal& selecting = m_signals[found->second];
            page.signals.push_back(found->second);
            if (selecting.details->multiplexor.empty())
            {
                break;
            }
            page.title += QStringLiteral(", with ") + GetConditionText(*selecting.details);
            found = m_numbers.find(selecting.details->multiplexor);
        }
        std::sort(page.signals.begin(), page.signals.end());
        page.signals.erase(std::unique(page.signals.begin(), page.signals.end()),
                           page.signals.end());
        return page;
    }

    bool IsThere(std::size_t number, const t_Multiplex& values) const
    {
        for (std::size_t steps = 0; steps <= m_signals.size(); ++steps)
        {
            const KW_LabelSignalDetails& details = *m_signals[number].details;
            const auto value = values.find(details.multiplexor);
            if (details.multiplexor.empty())
            {
                return true;
            }
            const auto selecting = m_numbers.find(details.multiplexor);
            if (value == values.end() || !Selects(details.selectedBy, value->second) ||
                selecting == m_numbers.end())
            {
                return false;
            }
            number = selecting->second;
        }
        return false;
    }

    std::vector<KW_LabelSignal> m_signals;
    std::map<std::string, std::size_t> m_numbers; ///< by name
    std::vector<std::size_t> m_always;
    std::vector<std::string> m_multiplexors; ///< that select something, in the order of the file
    std::map<std::string, std::vector<std::size_t>> m_selected;
};
} // namespace

t_LabelPages GetPages(const KW_LabelEntry& entry, std::size_t most)
{
    return CMultiplex(entry).GetPages(most);
}

t_LabelPage GetPage(const KW_LabelEntry& entry, const t_Multiplex& values)
{
    return CMultiplex(entry).GetPage(values);
}

QString GetLetters(std::size_t number)
{
    const QChar letter(static_cast<char16_t>(u'A' + number % kLetters));
    return number < kLetters ? QString(letter) : GetLetters(number / kLetters - 1) + letter;
}

QStringList DrawPayload(const KW_LabelList& list, const KW_LabelEntry& entry,
                        const std::vector<std::size_t>& signals)
{
    const auto all = KW_GetSignals(entry);
    CBits bits(kBitsOfByte * entry.message.getLength(), UnitOf(list));
    for (const std::size_t number : signals)
    {
        bits.Add(*all[number].signal, GetLetters(number));
    }
    return bits.GetLines();
}
