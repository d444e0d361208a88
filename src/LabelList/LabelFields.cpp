// SPDX-License-Identifier: MIT
#include "LabelList/LabelFields.h"

#include "LabelList/LabelBuses.h"
#include "LabelList/LabelConditions.h"
#include "LabelList/LabelTexts.h"

#include <QStringList>
#include <cmath>
#include <set>

namespace
{
constexpr const char* kFieldNames[kLabelFields] = {
    "Name",          "Identifier", "IdentifierLength", "Length",     "CycleTime",     "Fd",
    "BitRateSwitch", "StartBit",   "BitLength",        "Endianness", "ValueType",     "Factor",
    "Offset",        "Minimum",    "Maximum",          "Unit",       "IsMultiplexor", "Multiplexor",
    "SelectedBy",    "ShortName",  "Comment"};

using F = eLABEL_FIELD;

std::string& Field(t_LabelFieldTexts& texts, F field)
{
    return texts[static_cast<std::size_t>(field)];
}

std::string FlagText(bool flag)
{
    return flag ? "true" : std::string();
}

std::string HexText(UINT32 number)
{
    return "0x" + QByteArray::number(number, 16).toUpper().toStdString();
}

/** Reads fields one after the other, and remembers whether all could be read. */
class CFieldReader
{
public:
    CFieldReader(const CLabelFields& fields, t_TextPlace place, CLabelReports& reports)
        : m_fields(fields), m_place(place), m_reports(reports)
    {
    }

    bool IsGood() const { return m_isGood; }
    bool Has(F field) const { return m_fields.At(field).has_value(); }

    std::string Text(F field) const
    {
        return Has(field) ? m_fields.At(field)->text : std::string();
    }

    double Real(F field, double otherwise)
    {
        const bool hasComma = Text(field).find(',') != std::string::npos;
        return Parse(field, NLabelTexts::ReadReal, otherwise,
                     hasComma ? QStringLiteral("is no number: decimals stand behind a point")
                              : QStringLiteral("is no number"));
    }

    UINT32 Unsigned(F field, std::optional<UINT32> otherwise)
    {
        Need(field, otherwise.has_value());
        return Parse(field, NLabelTexts::ReadUnsigned, otherwise.value_or(0),
                     QStringLiteral("is no whole number from 0 to 4294967295"));
    }

    UINT32 Identifier(bool isNeeded)
    {
        Need(F::Identifier, !isNeeded);
        return Parse(F::Identifier, NLabelTexts::ReadIdentifier, UINT32{0},
                     QStringLiteral("is no identifier such as 256 or 0x100"));
    }

    bool Flag(F field)
    {
        return Parse(field, NLabelTexts::ReadFlag, false,
                     QStringLiteral("is neither true nor false"));
    }

    template <typename T>
    T Enum(F field, T otherwise)
    {
        const CEnumNameInfo& names = GetStaticEnumNameInfo<T>();
        if (!Has(field))
        {
            return otherwise;
        }
        const auto found = names.ConvertName(QString::fromStdString(Text(field)));
        if (found.match != CEnumNameInfo::eMATCH::One)
        {
            Fail(field, QStringLiteral("is none of ") + NLabelFields::NamesOf(names));
            return otherwise;
        }
        return static_cast<T>(found.value);
    }

    void Fail(F field, const QString& what)
    {
        m_isGood = false;
        m_reports.Error(m_fields.At(field)->place,
                        QStringLiteral("%1: \"%2\" %3")
                            .arg(QLatin1String(NLabelFields::NameOf(field)),
                                 QString::fromStdString(Text(field)), what));
    }

private:
    void Need(F field, bool hasDefault)
    {
        if (!hasDefault && !Has(field))
        {
            m_isGood = false;
            m_reports.Error(
                m_place,
                QStringLiteral("%1 is missing").arg(QLatin1String(NLabelFields::NameOf(field))));
        }
    }

    template <typename T>
    T Parse(F field, std::optional<T> (*read)(std::string_view), T otherwise, const QString& what)
    {
        if (!Has(field))
        {
            return otherwise;
        }
        const auto value = read(NLabelTexts::Trimmed(m_fields.At(field)->text));
        if (!value)
        {
            Fail(field, what);
        }
        return value.value_or(otherwise);
    }

    const CLabelFields& m_fields;
    t_TextPlace m_place;
    CLabelReports& m_reports;
    bool m_isGood = true;
};

std::optional<double> ReadCycleTime(CFieldReader& reader)
{
    if (!reader.Has(F::CycleTime))
    {
        return std::nullopt;
    }
    const double time = reader.Real(F::CycleTime, 1.0);
    if (!(time > 0.0) || !std::isfinite(time))
    {
        reader.Fail(F::CycleTime, QStringLiteral("is no time above 0 s"));
    }
    return time;
}

/** The numbers that select a signal are text of their own, with the same rules as in a condition.
 */
void ReadSelection(CFieldReader& reader, KW_LabelSignalDetails& details)
{
    details.multiplexor = reader.Text(F::Multiplexor);
    if (!reader.Has(F::SelectedBy))
    {
        return;
    }
    if (details.multiplexor.empty())
    {
        reader.Fail(F::SelectedBy, QStringLiteral("says nothing without a Multiplexor"));
        return;
    }
    KW_LabelSignalDetails selection;
    const QString values = QString::fromStdString(reader.Text(F::SelectedBy));
    if (values.contains(QLatin1Char('=')) ||
        !NLabelConditions::Read(QStringLiteral("m = ") + values, selection))
    {
        reader.Fail(F::SelectedBy, QStringLiteral("is no list of raw values such as 0-3, 7"));
    }
    details.selectedBy = std::move(selection.selectedBy);
}

bool IsSigned(const CLabelListSignal& signal)
{
    return signal.getValueType() == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
}

/** The raw bits that a label of a file stands for; nothing when the signal can not have them, or
    the table has no room for them. */
std::optional<UINT32> RawOfLabel(INT64 value, const CLabelListSignal& signal)
{
    constexpr UINT32 kTableBits = 32;
    const UINT32 bits = signal.getBitLength();
    if (value >= 0)
    {
        const UINT32 magnitude = std::min(bits, kTableBits);
        return static_cast<UINT64>(value) >> magnitude == 0
                   ? std::optional(static_cast<UINT32>(value))
                   : std::nullopt;
    }
    const bool isHeld =
        IsSigned(signal) && bits >= 1 && bits <= kTableBits && value >= -(INT64{1} << (bits - 1));
    return isHeld ? std::optional(static_cast<UINT32>(value + (INT64{1} << bits))) : std::nullopt;
}

INT64 LabelOfRaw(UINT32 raw, const CLabelListSignal& signal)
{
    const UINT32 bits = signal.getBitLength();
    const bool isNegative = IsSigned(signal) && bits >= 1 && bits <= 32 &&
                            UINT64{raw} >> bits == 0 && (raw >> (bits - 1)) != 0;
    return isNegative ? INT64{raw} - (INT64{1} << bits) : INT64{raw};
}
} // namespace

void CLabelFields::Set(eLABEL_FIELD field, std::string_view text, t_TextPlace place)
{
    m_texts[static_cast<std::size_t>(field)] = t_Text{std::string(text), place};
}

const std::optional<CLabelFields::t_Text>& CLabelFields::At(eLABEL_FIELD field) const
{
    return m_texts[static_cast<std::size_t>(field)];
}

const char* NLabelFields::NameOf(eLABEL_FIELD field)
{
    return kFieldNames[static_cast<std::size_t>(field)];
}

bool NLabelFields::IsOfMessages(eLABEL_FIELD field)
{
    return field < F::StartBit || field >= F::ShortName;
}

bool NLabelFields::IsOfSignals(eLABEL_FIELD field)
{
    return field == F::Name || field >= F::StartBit;
}

t_LabelFieldTexts NLabelFields::TextsOf(const KW_LabelEntry& entry)
{
    t_LabelFieldTexts texts;
    const CLabelListMessage& message = entry.message;
    const KW_LabelMessageDetails& details = entry.details;
    Field(texts, F::Name) = message.getName();
    Field(texts, F::ShortName) = details.shortName;
    Field(texts, F::Comment) = details.comment;
    Field(texts, F::Identifier) = HexText(message.getIdentifier());
    Field(texts, F::IdentifierLength) = message.getIdentifierFormat();
    Field(texts, F::Length) = std::to_string(message.getLength());
    Field(texts, F::CycleTime) =
        details.cycleTime ? NLabelTexts::TextOf(*details.cycleTime) : std::string();
    Field(texts, F::Fd) = FlagText(details.isFd);
    Field(texts, F::BitRateSwitch) = FlagText(details.hasBitRateSwitch);
    return texts;
}

t_LabelFieldTexts NLabelFields::TextsOf(const CLabelListSignal& signal,
                                        const KW_LabelSignalDetails& details)
{
    const auto serial = [](const auto& names, INT32 value)
    { return names.GetSerialName(value).toStdString(); };
    t_LabelFieldTexts texts;
    Field(texts, F::Name) = signal.getName();
    Field(texts, F::ShortName) = details.shortName;
    Field(texts, F::Comment) = details.comment;
    Field(texts, F::StartBit) = std::to_string(signal.getStartBit());
    Field(texts, F::BitLength) = std::to_string(signal.getBitLength());
    Field(texts, F::Endianness) =
        serial(GetStaticEnumNameInfo<KW_ENDIANNESS>(), signal.getEndianness());
    Field(texts, F::ValueType) =
        serial(GetStaticEnumNameInfo<KW_SIGNAL_TRANSLATION_VALUE_TYPE>(), signal.getValueType());
    Field(texts, F::Factor) = NLabelTexts::TextOf(signal.getFactor());
    Field(texts, F::Offset) = NLabelTexts::TextOf(signal.getOffset());
    Field(texts, F::Minimum) = NLabelTexts::TextOf(signal.getMinimum());
    Field(texts, F::Maximum) = NLabelTexts::TextOf(signal.getMaximum());
    Field(texts, F::Unit) = signal.getUnit();
    Field(texts, F::IsMultiplexor) = FlagText(details.isMultiplexor);
    Field(texts, F::Multiplexor) = details.multiplexor;
    const QString condition = NLabelConditions::TextOf(details);
    Field(texts, F::SelectedBy) =
        condition.mid(condition.lastIndexOf(QLatin1Char('=')) + 1).trimmed().toStdString();
    return texts;
}

bool NLabelFields::Read(const CLabelFields& fields, t_TextPlace place,
                        KW_ZEL_SERIALBUS_PROTOCOL protocol, KW_LabelEntry& entry,
                        CLabelReports& reports)
{
    CFieldReader reader(fields, place, reports);
    const UINT32 usual = NLabelBuses::Of(protocol).identifierLengths.front();
    const UINT32 identifierLength = reader.Unsigned(F::IdentifierLength, usual);
    const UINT32 identifier = reader.Identifier(identifierLength != 0);
    entry.message.setParameters(reader.Text(F::Name), std::to_string(identifierLength), identifier,
                                reader.Unsigned(F::Length, std::nullopt));
    entry.details.shortName = reader.Text(F::ShortName);
    entry.details.comment = reader.Text(F::Comment);
    entry.details.cycleTime = ReadCycleTime(reader);
    entry.details.isFd = reader.Flag(F::Fd);
    entry.details.hasBitRateSwitch = reader.Flag(F::BitRateSwitch);
    return reader.IsGood();
}

bool NLabelFields::Read(const CLabelFields& fields, t_TextPlace place, CLabelListSignal& signal,
                        KW_LabelSignalDetails& details, CLabelReports& reports)
{
    CFieldReader reader(fields, place, reports);
    const UINT32 startBit = reader.Unsigned(F::StartBit, std::nullopt);
    const UINT32 bitLength = reader.Unsigned(F::BitLength, std::nullopt);
    const auto endianness = reader.Enum(F::Endianness, eKW_ENDIANNESS_LITTLE_ENDIAN);
    const auto valueType =
        reader.Enum(F::ValueType, eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT);
    const double factor = reader.Real(F::Factor, 1.0);
    const double offset = reader.Real(F::Offset, 0.0);
    const double minimum = reader.Real(F::Minimum, 0.0);
    const double maximum = reader.Real(F::Maximum, 0.0);
    signal.setParameters(reader.Text(F::Name), startBit, bitLength, endianness, valueType, factor,
                         offset, minimum, maximum, reader.Text(F::Unit));
    details.shortName = reader.Text(F::ShortName);
    details.comment = reader.Text(F::Comment);
    details.isMultiplexor = reader.Flag(F::IsMultiplexor);
    ReadSelection(reader, details);
    return reader.IsGood();
}

bool NLabelFields::AddLabel(const t_Label& label, CLabelListSignal& signal,
                            KW_LabelSignalDetails& details)
{
    const auto raw = RawOfLabel(label.value, signal);
    if (!raw)
    {
        return details.furtherLabels.emplace(label.value, label.text).second;
    }
    if (signal.getSignalEnumValues().count(*raw) != 0)
    {
        return false;
    }
    signal.addSignalEnumValue(
        {*raw, QByteArray(label.text.data(), static_cast<int>(label.text.size()))});
    return true;
}

std::map<INT64, std::string_view> NLabelFields::LabelsOf(const CLabelListSignal& signal,
                                                         const KW_LabelSignalDetails& details)
{
    std::map<INT64, std::string_view> labels;
    for (const auto& [raw, text] : signal.getSignalEnumValues())
    {
        labels.emplace(LabelOfRaw(raw, signal),
                       std::string_view(text.constData(), static_cast<std::size_t>(text.size())));
    }
    for (const auto& [value, text] : details.furtherLabels)
    {
        labels.emplace(value, text);
    }
    return labels;
}

void NLabelFields::TakeTypeFromLabels(CLabelListSignal& signal)
{
    if (!signal.getSignalEnumValues().empty())
    {
        signal.setValueType(eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM);
    }
}

QString NLabelFields::NamesOf(const CEnumNameInfo& names)
{
    QStringList all;
    for (INT32 value = 0; value < names.GetEnumSize(); ++value)
    {
        all << names.GetSerialName(value);
    }
    return all.join(QStringLiteral(", "));
}
