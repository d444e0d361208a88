// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/NumberText.h"
#include "KWMath.h"
#include "LabelList/LabelListConversion.h"
#include "LabelList/LabelListMessage.h"
#include "Rules/MathExpression.h"
#include "fuzz/Targets.h"

#include <QList>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <typeinfo>

namespace
{
struct t_Signal
{
    KW_SIGNAL_TRANSLATION_VALUE_TYPE type;
    UINT16 length;
    double factor;
    double offset;
};

std::optional<std::string> Encode(const t_Signal& signal, double physical)
{
    try
    {
        return getRawValue(physical, signal.length, signal.type, signal.factor, signal.offset);
    }
    catch (const std::bad_cast&)
    {
        return std::nullopt;
    }
    catch (const std::out_of_range&)
    {
        KW_FuzzRequire(signal.type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT &&
                           signal.length > 64,
                       "a length refused that the type allows", "");
        return std::nullopt;
    }
}

std::optional<std::string> Decode(const t_Signal& signal, const std::string& bits)
{
    try
    {
        return getPhysicalValue(bits, signal.type, signal.factor, signal.offset);
    }
    catch (const std::bad_cast&)
    {
        KW_FuzzRequire(signal.type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_FLOAT,
                       "bits refused that the type allows", QByteArray::fromStdString(bits));
        return std::nullopt;
    }
}

/** Whether six digits hold every number of the length, so that nothing may get lost. */
bool IsExact(const t_Signal& signal)
{
    const bool isSigned = signal.type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_SIGNED_INT;
    const bool isWhole = isSigned ||
                         signal.type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT ||
                         signal.type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM;
    return isWhole && signal.length >= 1 && signal.length <= (isSigned ? 20 : 16) &&
           signal.factor == 1.0 && signal.offset == 0.0;
}

void TryWay(const t_Signal& signal, const std::string& bits)
{
    const QByteArray detail = QByteArray::fromStdString(bits);
    const auto text = Decode(signal, bits);
    if (!text || *text == "???")
    {
        return;
    }
    double value = 0.0;
    const bool isNumber = KW_TextToNumber(QStringView(QString::fromStdString(*text)), value);
    KW_FuzzRequire(isNumber, "a physical value that is no number", detail);
    if (IsExact(signal) && bits.size() == signal.length &&
        bits.find_first_not_of("01") == std::string::npos)
    {
        KW_FuzzRequire(Encode(signal, value) == bits, "bits do not survive", detail);
    }
}

void TryValue(const t_Signal& signal, double physical)
{
    const auto bits = Encode(signal, physical);
    if (!bits)
    {
        return;
    }
    const bool isUnsigned = signal.type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_UNSIGNED_INT ||
                            signal.type == eKW_SIGNAL_TRANSLATION_VALUE_TYPE_ENUM;
    const bool isSixteen = isUnsigned && signal.length == 0 && signal.factor != 0.0;
    KW_FuzzRequire(bits->size() == (isSixteen ? 16 : signal.length), "bits of another length",
                   QByteArray::fromStdString(*bits));
    const bool isUnknown = bits->find_first_not_of('X') == std::string::npos;
    KW_FuzzRequire(isUnknown || bits->find_first_not_of("01") == std::string::npos,
                   "bits half known", QByteArray::fromStdString(*bits));
    TryWay(signal, *bits);
}

/** Labels for the raw values 0, 1, 2 …; a copy has its own. */
void TryLabels(const QList<QByteArray>& labels)
{
    CLabelListSignal signal;
    for (const QByteArray& label : labels)
    {
        signal.addSignalEnumValue({static_cast<UINT32>(label.size()), label});
    }
    CLabelListMessage message;
    message.addSignal({signal.getSignalKey(), signal});
    for (const QByteArray& label : labels)
    {
        CLabelListSignal copy = signal;
        QByteArray found;
        const auto raw = static_cast<UINT32>(label.size());
        KW_FuzzRequire(copy.getSignalEnumValue(raw, found), "a label is lost", label);
        KW_FuzzRequire(copy.getCurrentEnumLabel() == found && copy.getCurrentEnumIndex() == raw,
                       "the cursor stands elsewhere", label);
        KW_FuzzRequire(signal.getCurrentEnumLabel().isEmpty(), "a copy moved the cursor", label);
        message.addSignalEnumValue(signal.getSignalKey(), {raw, label});
    }
    KW_FuzzRequire(!message.CreateMessageLabel().empty(), "a message without its signal", "");
}

double Number(const QList<QByteArray>& words, int index)
{
    double value = 0.0;
    KW_TextToNumber(QStringView(QString::fromUtf8(words.value(index))), value);
    return value;
}

KW_UNIT UnitOfSource(KW_ZEL_CHANNEL source)
{
    return source == eKW_ZEL_CHANNEL_C1 ? eKW_UNIT_LEVEL_V : eKW_UNIT_LEVEL_A;
}
} // namespace

void KW_FuzzRequire(bool holds, const char* what, const QByteArray& detail)
{
    if (!holds)
    {
        std::fprintf(stderr, "%s: %s\n", what, detail.constData());
        std::abort();
    }
}

void KW_TrySignals(const QByteArray& words)
{
    const QList<QByteArray> list = words.split(' ');
    const t_Signal signal{
        static_cast<KW_SIGNAL_TRANSLATION_VALUE_TYPE>(KWMath::ToInteger<INT32>(Number(list, 0))),
        KWMath::ToInteger<UINT16>(Number(list, 1)), Number(list, 2), Number(list, 3)};
    TryValue(signal, Number(list, 4));
    TryWay(signal, list.value(5).toStdString());
    TryLabels(list.mid(6));
}

void KW_TryExpressions(const QByteArray& text)
{
    const auto elements = NMathExpression::Read(QString::fromUtf8(text));
    if (!elements)
    {
        return;
    }
    const QString written = NMathExpression::Write(*elements);
    const auto again = NMathExpression::Read(written);
    KW_FuzzRequire(again && again->size() == elements->size(), "own text not read", text);
    KW_FuzzRequire(NMathExpression::Write(*again) == written, "own text reads differently", text);
    for (std::size_t i = 0; i < elements->size(); ++i)
    {
        KW_FuzzRequire((*again)[i].type == (*elements)[i].type &&
                           (*again)[i].constant == (*elements)[i].constant &&
                           (*again)[i].unit == (*elements)[i].unit,
                       "an element reads differently", text);
    }
    KW_FuzzRequire(NMathExpression::UnitOf(*again, UnitOfSource) ==
                       NMathExpression::UnitOf(*elements, UnitOfSource),
                   "another unit", text);
}
