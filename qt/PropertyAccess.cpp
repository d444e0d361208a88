// SPDX-License-Identifier: MIT
#include "PropertyAccess.h"

#include "IKWProperties.h"
#include "KWTexts.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>

namespace
{
using t_Node = std::shared_ptr<IDbProperty>;

bool IsText(const QVariant& value)
{
    return value.userType() == QMetaType::QString;
}

KW_ACCEPTANCE SetWritten(IDbProperty& node, const QString& written)
{
    QString text;
    const KW_ACCEPTANCE code = KW_ParseValue(node, written, text);
    return KW_IsAccepted(code) ? node.SetText(text) : code;
}

QVariantMap Choice(const QVariant& value, const QString& text)
{
    return {{QStringLiteral("value"), value}, {QStringLiteral("text"), text}};
}

UINT64 ToMark(double value)
{
    return std::bit_cast<UINT64>(value);
}

template <typename T>
UINT64 ToMark(T value)
{
    return static_cast<UINT64>(value);
}

/** Shorter integers than int are int for scripts. */
template <typename T>
QVariant ToVariant(T value)
{
    if constexpr (sizeof(T) < sizeof(int))
    {
        return QVariant::fromValue(static_cast<int>(value));
    }
    else if constexpr (sizeof(T) == sizeof(qlonglong) && std::is_integral_v<T>)
    {
        using t_Long = std::conditional_t<std::is_signed_v<T>, qlonglong, qulonglong>;
        return QVariant::fromValue(static_cast<t_Long>(value));
    }
    else
    {
        return QVariant::fromValue(value);
    }
}

/** The integer between two limits that is nearest to a number. */
template <typename T>
T ToLimited(double value, T least, T most)
{
    const double whole = std::round(value);
    if (whole <= static_cast<double>(least))
    {
        return least;
    }
    return whole >= static_cast<double>(most) ? most : static_cast<T>(whole);
}

/** Script engines know but one type of number: a whole double is an integer. */
QString ToIntegerText(const QVariant& value)
{
    constexpr double kExact = 9007199254740992.0; // 2^53
    const double number = value.toDouble();
    const bool isWhole = value.userType() == QMetaType::Double && std::abs(number) <= kExact &&
                         number == std::trunc(number);
    return isWhole ? QString::number(static_cast<qlonglong>(number)) : value.toString();
}

template <typename T>
class CNumberAccess : public IPropertyAccess
{
public:
    CNumberAccess(const t_Node& node, std::shared_ptr<IKWNumericProperty<T>> handle)
        : m_node(node), m_handle(std::move(handle)), m_list(node->GetValueTexts())
    {
    }

    t_Marks Read() const override
    {
        return {ToMark(m_handle->Get()),
                ToMark(m_handle->GetMin()),
                ToMark(m_handle->GetMax()),
                ToMark(m_handle->GetStep()),
                0,
                {},
                m_node->GetUnitCode()};
    }
    QVariant GetValue() const override { return ToVariant(m_handle->Get()); }
    QString GetText() const override { return KW_FormatValue(KW_GetValueText(*m_node)); }
    QVariant GetMinimum() const override { return ToVariant(m_handle->GetMin()); }
    QVariant GetMaximum() const override { return ToVariant(m_handle->GetMax()); }
    QVariant GetStep() const override { return ToVariant(m_handle->GetStep()); }

    KW_ACCEPTANCE SetValue(const QVariant& value) override
    {
        if (IsText(value))
        {
            return SetWritten(*m_node, value.toString());
        }
        bool isNumber = false;
        const double number = value.toDouble(&isNumber);
        if (!isNumber)
        {
            return eKW_ACC_BAD_TEXT;
        }
        if constexpr (std::is_same_v<T, double>)
        {
            return m_handle->Set(number);
        }
        else
        {
            return m_node->SetText(ToIntegerText(value));
        }
    }

    KW_ACCEPTANCE SetLimited(double value) override
    {
        if constexpr (std::is_same_v<T, double>)
        {
            return m_handle->SetLimited(value);
        }
        else
        {
            if (std::isnan(value))
            {
                return eKW_ACC_NOT_A_NUMBER;
            }
            const T nearest = ToLimited(value, m_handle->GetMin(), m_handle->GetMax());
            const KW_ACCEPTANCE code = m_handle->SetLimited(nearest);
            const bool isOther = static_cast<double>(nearest) != value;
            return isOther && code == eKW_ACC_OK ? eKW_ACC_WARNING : code;
        }
    }

    QVariantList GetChoices() const override
    {
        QVariantList choices;
        for (const QString& text : m_list)
        {
            const QVariant value =
                std::is_same_v<T, double> ? QVariant(text.toDouble()) : QVariant(text.toLongLong());
            choices.append(Choice(value, KW_FormatNumber(text, m_node->GetUnitCode())));
        }
        return choices;
    }

private:
    t_Node m_node;
    std::shared_ptr<IKWNumericProperty<T>> m_handle;
    QStringList m_list; ///< declared: never changes
};

class CEnumAccess : public IPropertyAccess
{
public:
    CEnumAccess(const t_Node& node, std::shared_ptr<IKWEnumPropertyBase> handle)
        : m_node(node), m_handle(std::move(handle)), m_names(m_handle->GetEnumNameInfo())
    {
    }

    t_Marks Read() const override
    {
        constexpr UINT64 kPrime = 0x100000001B3;
        t_Marks marks;
        marks.value = ToMark(m_handle->GetAsInt());
        for (INT32 value = 0; value < m_names.GetEnumSize(); ++value)
        {
            marks.selectable =
                (marks.selectable ^ ToMark(m_handle->GetValueState(value))) * kPrime + 1;
        }
        return marks;
    }
    QVariant GetValue() const override { return m_handle->GetAsInt(); }
    QString GetText() const override { return NameOf(m_handle->GetAsInt()); }

    KW_ACCEPTANCE SetValue(const QVariant& value) override
    {
        if (IsText(value))
        {
            return SetWritten(*m_node, value.toString());
        }
        bool isNumber = false;
        const INT32 number = ToIntegerText(value).toInt(&isNumber);
        if (value.userType() == QMetaType::Bool)
        {
            return m_handle->SetAsInt(value.toBool() ? 1 : 0);
        }
        return isNumber ? m_handle->SetAsInt(number) : eKW_ACC_UNKNOWN_VALUE;
    }
    KW_ACCEPTANCE SetLimited(double /*value*/) override { return eKW_ACC_WRONG_KIND; }

    QVariantList GetChoices() const override
    {
        QVariantList choices;
        for (INT32 value = 0; value < m_names.GetEnumSize(); ++value)
        {
            if (m_handle->GetValueState(value) != eVALUESTATE_NOT_SELECTABLE)
            {
                choices.append(Choice(value, NameOf(value)));
            }
        }
        return choices;
    }

private:
    QString NameOf(INT32 value) const
    {
        const QString display = m_names.GetName(value);
        return display.isEmpty() ? KW_FormatEnum(m_names, value) : display;
    }

    t_Node m_node;
    std::shared_ptr<IKWEnumPropertyBase> m_handle;
    const CEnumNameInfo& m_names;
};

/** Texts, patterns, file names, references and byte blocks. What is secret never reaches a page:
    whoever holds a page could show it. */
class CTextAccess : public IPropertyAccess
{
public:
    explicit CTextAccess(const t_Node& node)
        : m_node(node), m_list(node->GetValueTexts()), m_secret(KW_IsSecret(*node)),
          m_isBlock(node->GetTypeName() == QLatin1String("blob"))
    {
    }

    t_Marks Read() const override
    {
        t_Marks marks;
        marks.text = m_node->GetText();
        return marks;
    }
    QVariant GetValue() const override
    {
        if (m_isBlock)
        {
            return QByteArray::fromBase64(m_node->GetText().toLatin1());
        }
        return m_secret ? KW_GetSecretText() : m_node->GetText();
    }
    QString GetText() const override
    {
        return m_isBlock || m_secret ? KW_FormatValue(KW_GetValueText(*m_node)) : m_node->GetText();
    }

    KW_ACCEPTANCE SetValue(const QVariant& value) override
    {
        if (m_isBlock && value.userType() == QMetaType::QByteArray)
        {
            return m_node->SetText(QString::fromLatin1(value.toByteArray().toBase64()));
        }
        return value.canConvert<QString>() ? SetWritten(*m_node, value.toString())
                                           : eKW_ACC_BAD_TEXT;
    }
    KW_ACCEPTANCE SetLimited(double /*value*/) override { return eKW_ACC_WRONG_KIND; }

    QVariantList GetChoices() const override
    {
        QVariantList choices;
        for (const QString& text : m_list)
        {
            choices.append(Choice(text, text));
        }
        return choices;
    }

private:
    t_Node m_node;
    QStringList m_list; ///< declared: never changes
    bool m_secret;
    bool m_isBlock;
};

template <typename T>
std::unique_ptr<IPropertyAccess> MakeNumberAccess(const t_Node& node,
                                                  const std::shared_ptr<IKWPropertyBase>& handle)
{
    auto number = std::dynamic_pointer_cast<IKWNumericProperty<T>>(handle);
    return number ? std::make_unique<CNumberAccess<T>>(node, std::move(number)) : nullptr;
}
} // namespace

std::unique_ptr<IPropertyAccess> MakePropertyAccess(const std::shared_ptr<IDbProperty>& node)
{
    const auto handle = node->GetHandle();
    if (auto enumeration = std::dynamic_pointer_cast<IKWEnumPropertyBase>(handle))
    {
        return std::make_unique<CEnumAccess>(node, std::move(enumeration));
    }
    for (const auto& make :
         {MakeNumberAccess<double>, MakeNumberAccess<INT32>, MakeNumberAccess<UINT32>,
          MakeNumberAccess<INT64>, MakeNumberAccess<UINT64>, MakeNumberAccess<INT16>,
          MakeNumberAccess<UINT16>})
    {
        if (auto access = make(node, handle))
        {
            return access;
        }
    }
    return std::make_unique<CTextAccess>(node);
}
