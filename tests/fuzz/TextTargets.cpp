// SPDX-License-Identifier: MIT
#include "CommonDatabase/Values/NumberText.h"
#include "KWMath.h"
#include "LabelList/LabelListConversion.h"
#include "LabelList/LabelListMessage.h"
#include "Mathematics/MathExpression.h"
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

namespace
{
/** What an expression is computed to, as bytes. */
QByteArray ResultOf(const CKWMathExpression& expression)
{
    constexpr KW_UNIT kUnits[eKW_MATH_CHANNELS] = {eKW_UNIT_LEVEL_V, eKW_UNIT_LEVEL_A,
                                                   eKW_UNIT_NONE};
    constexpr double kValues[eKW_MATH_CHANNELS] = {0.0, -3.25, 1e300, 0.5, 1.0, 1e-300};
    const double value = expression.Evaluate(kValues);
    KW_FuzzRequire(!std::isinf(value), "an infinite result", "");
    return std::isnan(value) ? QByteArray("nan")
                             : QByteArray::number(value, 'e', 17) + ' ' +
                                   QByteArray::number(expression.GetUnit(kUnits));
}
} // namespace

void KW_TryExpressions(const QByteArray& text)
{
    KW_MathElements elements;
    KW_MathError error;
    CKWMathExpression expression;
    const QString source = QString::fromUtf8(text);
    const KW_ACCEPTANCE code = expression.Read(source, error);
    KW_FuzzRequire(KW_IsAccepted(code) == static_cast<bool>(expression) &&
                       KW_IsAccepted(code) == error.text.isEmpty(),
                   "a refusal without a reason", text);
    KW_FuzzRequire(KW_IsAccepted(code) ||
                       (error.column >= 1 && error.column <= UINT32(source.size()) + 1),
                   "a refusal without a place", text);
    if (!KW_IsAccepted(KW_ReadMathElements(source, elements, error)))
    {
        return;
    }
    const QString written = KW_WriteMathElements(elements);
    KW_MathElements again;
    const KW_ACCEPTANCE codeAgain = KW_ReadMathElements(written, again, error);
    KW_FuzzRequire(KW_IsAccepted(codeAgain) && again.size() == elements.size(), "own text not read",
                   text);
    KW_FuzzRequire(KW_WriteMathElements(again) == written, "own text reads differently", text);
    for (std::size_t i = 0; i < elements.size(); ++i)
    {
        KW_FuzzRequire(again[i].type == elements[i].type &&
                           again[i].constant == elements[i].constant &&
                           again[i].unit == elements[i].unit,
                       "an element reads differently", text);
    }
    CKWMathExpression second;
    KW_FuzzRequire(KW_IsAccepted(second.Read(written, error)) == KW_IsAccepted(code) &&
                       ResultOf(second) == ResultOf(expression),
                   "own text is computed differently", text);
}
