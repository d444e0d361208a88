// SPDX-License-Identifier: MIT
#include "Calculation.h"
#include "KWEnumerationsSerialBus.h"
#include "KWEnumerationsUnits.h"
#include "LabelList/LabelListConversion.h"
#include "LabelList/LabelListMessage.h"

#include <functional>
#include <stdexcept>
#include <typeinfo>

namespace
{
const t_Argument kType{"--type", "KW_SIGNAL_TRANSLATION_VALUE_TYPE", "UNSIGNED_INT"};
const t_Argument kFactor{"--factor", "Physical value per count", "1"};
const t_Argument kOffset{"--offset", "Physical value of a raw 0", "0"};

/** A conversion that does not fit its type is the only thing that the conversions throw. */
QString Convert(const std::function<std::string()>& conversion)
{
    try
    {
        return QString::fromStdString(conversion());
    }
    catch (const std::bad_cast&)
    {
        throw CFailure(eSTATUS_REFUSED, QStringLiteral("the value does not fit the signal's type"));
    }
    catch (const std::out_of_range&)
    {
        throw CFailure(eSTATUS_REFUSED, QStringLiteral("a signed integer has at most 64 bits"));
    }
}

void Raw(const CArguments& in, CFigures& out)
{
    const double physical = in.Number("value");
    const auto bits = in.Whole<UINT16>("--bits");
    const auto type = in.Enum<KW_SIGNAL_TRANSLATION_VALUE_TYPE>("--type");
    const double factor = in.Number("--factor");
    const double offset = in.Number("--offset");
    out.Add("bits", Convert([&] { return getRawValue(physical, bits, type, factor, offset); }));
}

void Physical(const CArguments& in, CFigures& out)
{
    const std::string& bits = in.Text("bits");
    const auto type = in.Enum<KW_SIGNAL_TRANSLATION_VALUE_TYPE>("--type");
    const double factor = in.Number("--factor");
    const double offset = in.Number("--offset");
    out.Add("value", Convert([&] { return getPhysicalValue(bits, type, factor, offset); }));
}

std::pair<std::string, std::string> SplitAt(const std::string& text, char sign)
{
    const auto place = text.find(sign);
    return {text.substr(0, place), place == std::string::npos ? "" : text.substr(place + 1)};
}

CLabelListSignal MakeSignal(const std::string& name, UINT32 startBit, const std::string& unit)
{
    return {name,
            startBit,
            8,
            static_cast<KW_ENDIANNESS>(0),
            eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM,
            1.0,
            0.0,
            0.0,
            255.0,
            unit};
}

void Signal(const CArguments& in, CFigures& out)
{
    CLabelListSignal signal = MakeSignal(in.Text("name"), in.Whole<UINT32>("start"), "");
    out.Add("key", QString::fromUtf8(signal.getSignalKey()));
    for (const std::string& written : in.List("--label"))
    {
        const auto [raw, label] = SplitAt(written, '=');
        const auto number = static_cast<UINT32>(ReadWhole(
            raw, eKW_UNIT_NONE, QStringLiteral("LABEL"), std::numeric_limits<UINT32>::max()));
        signal.addSignalEnumValue({number, QByteArray::fromStdString(label)});
    }
    if (in.Has("--raw"))
    {
        QByteArray label;
        const bool found = signal.getSignalEnumValue(in.Whole<UINT32>("--raw"), label);
        out.Add("label", found ? QString::fromUtf8(label) : QStringLiteral("none"));
    }
}

void Message(const CArguments& in, CFigures& out)
{
    CLabelListMessage message(in.Text("name"), "11", 0, 8);
    UINT32 startBit = 0;
    for (const std::string& written : in.List("--signal"))
    {
        const auto [name, unit] = SplitAt(written, ':');
        const CLabelListSignal signal = MakeSignal(name, startBit, unit);
        message.addSignal({signal.getSignalKey(), signal});
        startBit += signal.getBitLength();
    }
    const QStringList lines =
        QString::fromStdString(message.CreateMessageLabel()).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i)
    {
        out.AddText(QStringLiteral("line %1").arg(i + 1), lines[i]);
    }
}
} // namespace

t_CalculationGroup GetLabelCalculations()
{
    return {"Bus signals",
            {{"raw",
              "Bits of a physical value",
              {"getRawValue"},
              {{"value", "Physical value"},
               {"--bits", "Number of bits of the signal"},
               kType,
               kFactor,
               kOffset},
              &Raw,
              {"2500 --bits 16 --factor 0.25"}},
             {"physical",
              "Physical value of bits",
              {"getPhysicalValue"},
              {{"bits", "Bits of the signal, most significant first"}, kType, kFactor, kOffset},
              &Physical,
              {"11110110 --type SIGNED_INT"}},
             {"signal",
              "Key of a signal, and the label of a raw value",
              {"getSignalKey", "addSignalEnumValue", "getSignalEnumValue"},
              {{"name", "Name of the signal"},
               {"start", "First bit in the payload"},
               {"--label", "RAW=LABEL", "", t_Argument::eTAKES::List},
               {"--raw", "Raw value to look up", ""}},
              &Signal,
              {"Gear 8 --label 0=Park 1=Drive --raw 1"}},
             {"message",
              "Text that a display shows of a bus message",
              {"CreateMessageLabel", "addSignal"},
              {{"name", "Name of the message"},
               {"--signal", "NAME or NAME:UNIT", "", t_Argument::eTAKES::List}},
              &Message,
              {"Engine --signal Speed:rpm Gear"}}}};
}
