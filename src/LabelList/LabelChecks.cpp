// SPDX-License-Identifier: MIT
#include "LabelList/LabelChecks.h"

#include "LabelList/LabelBuses.h"
#include "LabelList/LabelConditions.h"
#include "LabelList/SignalBits.h"

#include <bitset>
#include <cmath>
#include <set>
#include <unordered_map>
#include <vector>

namespace
{
constexpr UINT32 kMaxBits = 64;
constexpr UINT32 kFloatBits = 32;
constexpr UINT32 kDoubleBits = 64;
constexpr std::size_t kLongestPayload = 512; ///< bits, of all buses

using t_Occupied = std::bitset<kLongestPayload>;

QString MessageError(KW_ZEL_SERIALBUS_PROTOCOL protocol, const CLabelListMessage& message)
{
    const auto length = NLabelChecks::IdentifierLengthOf(message);
    if (!length || !NLabelBuses::HasLength(protocol, *length))
    {
        return QStringLiteral("message %1: the bus has no identifiers of %2 bits")
            .arg(QuotedName(message.getName()),
                 QString::fromStdString(message.getIdentifierFormat()));
    }
    if (UINT64{message.getIdentifier()} >> *length != 0)
    {
        return QStringLiteral("message %1: identifier %2 has more than %3 bits")
            .arg(QuotedName(message.getName()))
            .arg(message.getIdentifier())
            .arg(*length);
    }
    const UINT32 longest = NLabelBuses::Of(protocol).longestPayload;
    return message.getLength() <= longest
               ? QString()
               : QStringLiteral("message %1: %2 bytes, the longest payload has %3")
                     .arg(QuotedName(message.getName()))
                     .arg(message.getLength())
                     .arg(longest);
}

QString LengthError(const CLabelListSignal& signal)
{
    const UINT32 bits = signal.getBitLength();
    if (bits < 1 || bits > kMaxBits)
    {
        return QStringLiteral("%1 bits; a signal has 1 to 64").arg(bits);
    }
    const auto type = signal.getValueType();
    if (type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT && bits != kFloatBits)
    {
        return QStringLiteral("%1 bits; a float has 32").arg(bits);
    }
    return type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_DOUBLE && bits != kDoubleBits
               ? QStringLiteral("%1 bits; a double has 64").arg(bits)
               : QString();
}

QString SignalError(const CLabelListSignal& signal, UINT32 unit, UINT32 payloadBits)
{
    const QString length = LengthError(signal);
    if (!length.isEmpty())
    {
        return length;
    }
    const NSignalBits::t_Signal bits{signal.getStartBit(), signal.getBitLength(),
                                     signal.getEndianness(), unit};
    if (NSignalBits::BitsUpTo(bits) > payloadBits)
    {
        return QStringLiteral("does not lie in the payload: start bit %1, %2 bits, %3 in all")
            .arg(signal.getStartBit())
            .arg(signal.getBitLength())
            .arg(payloadBits);
    }
    for (const double number :
         {signal.getFactor(), signal.getOffset(), signal.getMinimum(), signal.getMaximum()})
    {
        if (!std::isfinite(number))
        {
            return QStringLiteral("factor, offset, minimum and maximum have to be finite numbers");
        }
    }
    return {};
}

/** The signals of one message, looked at one after the other. */
class CMessageCheck
{
public:
    CMessageCheck(KW_ZEL_SERIALBUS_PROTOCOL protocol, const KW_LabelEntry& entry,
                  const NLabelChecks::t_PlaceOf& placeOf, CLabelReports& reports)
        : m_entry(entry), m_placeOf(placeOf), m_reports(reports),
          m_unit(NLabelBuses::Of(protocol).unit)
    {
    }

    bool Check()
    {
        const auto known = KW_GetSignals(m_entry);
        for (const KW_LabelSignal& signal : known)
        {
            m_names.insert(signal.signal->getName());
        }
        bool isGood = true;
        for (std::size_t i = 0; i < known.size(); ++i)
        {
            m_place = m_placeOf(static_cast<int>(i));
            isGood = CheckSignal(*known[i].signal, *known[i].details) && isGood;
        }
        return isGood;
    }

private:
    bool CheckSignal(const CLabelListSignal& signal, const KW_LabelSignalDetails& details)
    {
        const QString error = SignalError(signal, m_unit, 8 * m_entry.message.getLength());
        if (!error.isEmpty())
        {
            m_reports.Error(
                m_place, QStringLiteral("signal %1: ").arg(QuotedName(signal.getName())) + error);
            return false;
        }
        CheckName(signal.getName());
        CheckNumbers(signal);
        CheckMultiplexor(signal, details);
        CheckBits(signal, details);
        return true;
    }

    void Warn(const std::string& name, const QString& text)
    {
        m_reports.Warning(m_place, QStringLiteral("signal %1: ").arg(QuotedName(name)) + text);
    }

    void CheckName(const std::string& name)
    {
        if (name.empty())
        {
            m_reports.Warning(m_place, QStringLiteral("signal without a name"));
        }
        else if (!m_seen.insert(name).second)
        {
            Warn(name, QStringLiteral("another signal of the message has this name"));
        }
    }

    void CheckNumbers(const CLabelListSignal& signal)
    {
        if (signal.getFactor() == 0.0)
        {
            Warn(signal.getName(), QStringLiteral("with a factor of 0 it can not be read"));
        }
        if (signal.getMinimum() > signal.getMaximum())
        {
            Warn(signal.getName(), QStringLiteral("its minimum is above its maximum"));
        }
    }

    void CheckMultiplexor(const CLabelListSignal& signal, const KW_LabelSignalDetails& details)
    {
        if (!details.multiplexor.empty() && m_names.count(details.multiplexor) == 0)
        {
            Warn(signal.getName(),
                 QStringLiteral("the message has no signal %1 that could select it")
                     .arg(QuotedName(details.multiplexor)));
        }
    }

    /** A multiplexed signal is held against what is always there and what its own values bring; the
        first value stands for all of a range. */
    void CheckBits(const CLabelListSignal& signal, const KW_LabelSignalDetails& details)
    {
        t_Occupied own;
        const NSignalBits::t_Signal bits{signal.getStartBit(), signal.getBitLength(),
                                         signal.getEndianness(), m_unit};
        for (UINT32 i = 0; i < signal.getBitLength(); ++i)
        {
            own.set(NSignalBits::PlaceOf(bits, i));
        }
        const UINT64 page = details.selectedBy.empty() ? 0 : details.selectedBy.front().first;
        t_Occupied& taken =
            details.multiplexor.empty() ? m_always : m_pages[details.multiplexor][page];
        if ((own & (taken | m_always)).any())
        {
            Warn(signal.getName(), QStringLiteral("shares bits with another signal"));
        }
        taken |= own;
    }

    const KW_LabelEntry& m_entry;
    const NLabelChecks::t_PlaceOf& m_placeOf;
    CLabelReports& m_reports;
    UINT32 m_unit;
    t_TextPlace m_place;
    std::set<std::string> m_names;
    std::set<std::string> m_seen;
    t_Occupied m_always;
    std::unordered_map<std::string, std::unordered_map<UINT64, t_Occupied>> m_pages;
};
} // namespace

std::optional<UINT32> NLabelChecks::IdentifierLengthOf(const CLabelListMessage& message)
{
    bool isNumber = false;
    const UINT32 length =
        QByteArray::fromStdString(message.getIdentifierFormat()).toUInt(&isNumber);
    return isNumber ? std::optional(length) : std::nullopt;
}

bool NLabelChecks::Check(KW_ZEL_SERIALBUS_PROTOCOL protocol, const KW_LabelEntry& entry,
                         const t_PlaceOf& placeOf, CLabelReports& reports)
{
    const QString error = MessageError(protocol, entry.message);
    if (!error.isEmpty())
    {
        reports.Error(placeOf(-1), error);
        return false;
    }
    if (entry.message.getName().empty())
    {
        reports.Warning(placeOf(-1), QStringLiteral("message without a name"));
    }
    return CMessageCheck(protocol, entry, placeOf, reports).Check();
}

QStringList NLabelChecks::ErrorsOf(KW_ZEL_SERIALBUS_PROTOCOL protocol, const KW_LabelEntry& entry)
{
    CLabelReports found;
    QStringList errors;
    if (!Check(
            protocol, entry, [](int) { return t_TextPlace(); }, found))
    {
        std::vector<KW_LabelReport> reports;
        found.MoveTo(reports);
        for (const KW_LabelReport& report : reports)
        {
            if (report.type == e_KW_MESSAGE_TYPE_ERROR)
            {
                errors << report.text;
            }
        }
    }
    return errors;
}

void NLabelChecks::CheckIdentifiers(const KW_LabelList& list, const t_PlaceOf& placeOf,
                                    CLabelReports& reports)
{
    std::unordered_map<UINT64, std::size_t> first;
    for (std::size_t i = 0; i < list.messages.size(); ++i)
    {
        const CLabelListMessage& message = list.messages[i].message;
        const UINT64 key = UINT64{NLabelChecks::IdentifierLengthOf(message).value_or(0)} << 32U |
                           message.getIdentifier();
        const auto [found, isFirst] = first.emplace(key, i);
        if (!isFirst)
        {
            reports.Warning(placeOf(static_cast<int>(i)),
                            QStringLiteral("message %1 has the identifier of %2, which comes first")
                                .arg(QuotedName(message.getName()),
                                     QuotedName(list.messages[found->second].message.getName())));
        }
    }
}
