// SPDX-License-Identifier: MIT
#include "RemoteValues.h"

#include "EnumNameInfo.h"
#include "IKWProperties.h"
#include "KWEnumerationsOnOff.h"
#include "KWEnumerationsUnits.h"
#include "KWTexts.h"
#include "RemoteUnits.h"

#include <array>
#include <cmath>
#include <utility>

namespace
{
using eKIND = t_RemoteData::eKIND;

constexpr char kNotANumber[] = "9.91E37";
constexpr char kInfinity[] = "9.9E37";

enum class eWORD
{
    None,
    Minimum,
    Maximum,
    Default,
    Up,
    Down
};

eWORD WordOf(const t_RemoteData& data)
{
    struct t_Word
    {
        const char* name;
        eWORD word;
    };
    static constexpr std::array kWords{
        t_Word{"MIN", eWORD::Minimum}, t_Word{"MINIMUM", eWORD::Minimum},
        t_Word{"MAX", eWORD::Maximum}, t_Word{"MAXIMUM", eWORD::Maximum},
        t_Word{"DEF", eWORD::Default}, t_Word{"DEFAULT", eWORD::Default},
        t_Word{"UP", eWORD::Up},       t_Word{"DOWN", eWORD::Down}};
    const QByteArray name = data.text.toUpper();
    for (const t_Word& row : kWords)
    {
        if (data.kind == eKIND::Character && name == row.name)
        {
            return row.word;
        }
    }
    return eWORD::None;
}

t_RemoteError Fail(eREMOTE_ERROR number, const QByteArray& detail)
{
    return {number, QString::fromUtf8(detail)};
}

/** A file as a client may name it: in the property's folder, which lies in that of settings. */
t_RemoteError WriteFile(IDbProperty& property, const QString& name, const CFilesFolder& files)
{
    const auto handle = std::dynamic_pointer_cast<IKWFilePathProperty>(property.GetHandle());
    QString problem;
    if (!name.isEmpty())
    {
        files.PathOf(name, handle->GetFolder(), problem);
    }
    return problem.isEmpty() ? NRemote::ErrorOf(property.SetText(name))
                             : t_RemoteError{eREMOTE_ILLEGAL_VALUE, problem};
}

/** Types of numbers are called as no other is. */
bool IsNumber(const QString& type)
{
    return type == QLatin1String("double") || type.startsWith(QLatin1String("int")) ||
           type.startsWith(QLatin1String("uint"));
}

const CEnumNameInfo& SwitchNames()
{
    return GetStaticEnumNameInfo<KW_ONOFF>();
}

std::shared_ptr<IKWEnumPropertyBase> EnumHandle(IDbProperty& property)
{
    return std::dynamic_pointer_cast<IKWEnumPropertyBase>(property.GetHandle());
}

/** A value's name in answers: of the protocol, or the file's where it has none. */
QByteArray NameOf(const CEnumNameInfo& names, INT32 value)
{
    if (names.GetType() == SwitchNames().GetType())
    {
        return QByteArray::number(value);
    }
    const QString name = names.GetRemoteName(value);
    return (name.isEmpty() ? KW_FormatEnum(names, value) : name).toUtf8();
}

/** Finds a value by its remote name, else by its serial one. */
KW_ACCEPTANCE FindValue(const CEnumNameInfo& names, const QString& name, INT32& value)
{
    for (const KW_ENUM_NAME kind : {KW_ENUM_NAME::Remote, KW_ENUM_NAME::Serial})
    {
        const CEnumNameInfo::t_Conversion found = names.ConvertName(name, kind);
        if (found.match == CEnumNameInfo::eMATCH::Several)
        {
            return eKW_ACC_AMBIGUOUS_NAME;
        }
        if (found.match == CEnumNameInfo::eMATCH::One)
        {
            value = found.value;
            return eKW_ACC_OK;
        }
    }
    return eKW_ACC_UNKNOWN_VALUE;
}

/** First (step 1) or last (step −1) value that can be selected now, −1 when none can. */
INT32 SelectableFrom(const IKWEnumPropertyBase& handle, INT32 first, INT32 step)
{
    const INT32 count = handle.GetEnumNameInfo().GetEnumSize();
    for (INT32 value = first; value >= 0 && value < count; value += step)
    {
        if (handle.GetValueState(value) != eVALUESTATE_NOT_SELECTABLE)
        {
            return value;
        }
    }
    return -1;
}

INT32 LimitOf(const IKWEnumPropertyBase& handle, eWORD word)
{
    return word == eWORD::Minimum
               ? SelectableFrom(handle, 0, 1)
               : SelectableFrom(handle, handle.GetEnumNameInfo().GetEnumSize() - 1, -1);
}

KW_ACCEPTANCE SetLimit(IDbProperty& property, eWORD word)
{
    if (const auto handle = EnumHandle(property))
    {
        return handle->SetAsInt(LimitOf(*handle, word));
    }
    return property.SetText(word == eWORD::Minimum ? property.GetMinText() : property.GetMaxText());
}

t_RemoteError WriteWord(IDbProperty& property, eWORD word)
{
    switch (word)
    {
    case eWORD::Default:
        return NRemote::ErrorOf(property.SetToDefault());
    case eWORD::Up:
        return NRemote::ErrorOf(property.IncDec(1));
    case eWORD::Down:
        return NRemote::ErrorOf(property.IncDec(-1));
    default:
        return NRemote::ErrorOf(SetLimit(property, word));
    }
}

/** What a name of the type may be written as: a word, or in quotes, or a serial name that begins
    with a digit. */
t_RemoteError WriteEnum(IDbProperty& property, const t_RemoteData& data)
{
    const CEnumNameInfo& names = *property.GetEnumNameInfo();
    INT32 value = 0;
    const KW_ACCEPTANCE code = FindValue(names, QString::fromUtf8(data.text + data.suffix), value);
    if (KW_IsAccepted(code))
    {
        return NRemote::ErrorOf(EnumHandle(property)->SetAsInt(value));
    }
    if (const eWORD word = WordOf(data); word != eWORD::None)
    {
        return WriteWord(property, word);
    }
    const bool isNumber = data.kind == eKIND::Number || data.kind == eKIND::Digits;
    if (isNumber && names.GetType() == SwitchNames().GetType())
    {
        INT64 number = 0;
        const t_RemoteError error = NRemote::ReadWhole(data, number);
        return error ? error : NRemote::ErrorOf(EnumHandle(property)->SetAsInt(number != 0));
    }
    return data.kind == eKIND::Block ? Fail(eREMOTE_DATA_TYPE, "a name is wanted")
                                     : NRemote::ErrorOf(code);
}

t_RemoteError WriteNumber(IDbProperty& property, const t_RemoteData& data)
{
    if (const eWORD word = WordOf(data); word != eWORD::None)
    {
        return WriteWord(property, word);
    }
    QString written = QString::fromLatin1(data.text);
    if (data.kind == eKIND::Character)
    {
        const QByteArray word = data.text.toUpper();
        if (word != "INF" && word != "INFINITY" && word != "NINF" && word != "NAN")
        {
            return Fail(eREMOTE_INVALID_CHARACTER_DATA, data.text);
        }
        written = QLatin1String(word == "NAN" ? "nan" : word == "NINF" ? "-inf" : "inf");
    }
    else if (data.kind != eKIND::Number && data.kind != eKIND::Digits)
    {
        return Fail(eREMOTE_DATA_TYPE, "a number is wanted");
    }
    if (!data.suffix.isEmpty())
    {
        const KW_UNIT unit = property.GetUnitCode();
        const QString named = NRemote::UnitOf(data.suffix, unit);
        if (named.isEmpty())
        {
            return Fail(KW_GetUnitText(unit).isEmpty() ? eREMOTE_SUFFIX_NOT_ALLOWED
                                                       : eREMOTE_INVALID_SUFFIX,
                        data.suffix);
        }
        written += QLatin1Char(' ') + named;
    }
    QString text;
    const KW_ACCEPTANCE code = KW_ParseValue(property, written, text);
    return NRemote::ErrorOf(KW_IsAccepted(code) ? property.SetText(text) : code);
}

t_RemoteError WriteBytes(IDbProperty& property, const t_RemoteData& data)
{
    const auto handle = std::dynamic_pointer_cast<IKWBlobProperty>(property.GetHandle());
    return data.kind == eKIND::Block ? NRemote::ErrorOf(handle->Set(data.text))
                                     : Fail(eREMOTE_DATA_TYPE, "a block is wanted");
}

t_RemoteError WriteText(IDbProperty& property, const t_RemoteData& data, const CFilesFolder& files)
{
    if (WordOf(data) == eWORD::Default)
    {
        return WriteWord(property, eWORD::Default);
    }
    QString text;
    if (const t_RemoteError error = NRemote::ReadText(data, text))
    {
        return error;
    }
    return property.GetTypeName() == QLatin1String("filepath")
               ? WriteFile(property, text, files)
               : NRemote::ErrorOf(property.SetText(text));
}

QByteArray NumberText(const QString& text)
{
    if (text.isEmpty() || text == QLatin1String("nan"))
    {
        return kNotANumber;
    }
    if (text.endsWith(QLatin1String("inf")))
    {
        return (text.startsWith(QLatin1Char('-')) ? "-" : "") + QByteArray(kInfinity);
    }
    return text.toLatin1().toUpper();
}

QByteArray EnumText(const IDbProperty& property, const QString& serial)
{
    const CEnumNameInfo& names = *property.GetEnumNameInfo();
    INT32 value = 0;
    return KW_IsAccepted(KW_ParseEnum(names, serial, value)) ? NameOf(names, value)
                                                             : NRemote::Quoted(serial);
}

QByteArray TextOf(const IDbProperty& property, const QString& text)
{
    return property.GetEnumNameInfo() != nullptr ? EnumText(property, text)
           : IsNumber(property.GetTypeName())    ? NumberText(text)
                                                 : NRemote::Quoted(text);
}

QByteArray ValueOf(IDbProperty& property)
{
    if (const CEnumNameInfo* const names = property.GetEnumNameInfo())
    {
        return NameOf(*names, EnumHandle(property)->GetAsInt());
    }
    const QString type = property.GetTypeName();
    if (IsNumber(type))
    {
        const bool isValid = property.GetValidity() == eKW_VALIDITY_VALID;
        return isValid ? NumberText(property.GetText()) : QByteArray(kNotANumber);
    }
    if (type == QLatin1String("blob"))
    {
        return NRemote::Block(
            std::dynamic_pointer_cast<IKWBlobProperty>(property.GetHandle())->Get());
    }
    return NRemote::Quoted(property.GetText());
}

t_RemoteError ReadLimit(IDbProperty& property, eWORD word, QByteArray& answer)
{
    if (const auto handle = EnumHandle(property); handle && word <= eWORD::Maximum)
    {
        answer = NameOf(handle->GetEnumNameInfo(), LimitOf(*handle, word));
        return {};
    }
    const QString text = word == eWORD::Minimum   ? property.GetMinText()
                         : word == eWORD::Maximum ? property.GetMaxText()
                                                  : property.GetStepText();
    if (text.isEmpty())
    {
        return Fail(eREMOTE_PARAMETER_NOT_ALLOWED, "there is no limit or step");
    }
    answer = NumberText(text);
    return {};
}
} // namespace

t_RemoteError NRemote::Write(IDbProperty& property, const t_RemoteData& data,
                             const CFilesFolder& files)
{
    if (property.GetObjectType() == eOBJECTTYPE_RESULT)
    {
        return ErrorOf(eKW_ACC_READ_ONLY);
    }
    if (property.GetEnumNameInfo() != nullptr)
    {
        return WriteEnum(property, data);
    }
    if (IsNumber(property.GetTypeName()))
    {
        return WriteNumber(property, data);
    }
    return property.GetTypeName() == QLatin1String("blob") ? WriteBytes(property, data)
                                                           : WriteText(property, data, files);
}

t_RemoteError NRemote::Read(IDbProperty& property, const std::vector<t_RemoteData>& data,
                            QByteArray& answer)
{
    if (KW_IsSecret(property))
    {
        return Fail(eREMOTE_NO_WRITE_ACCESS, "a secret is shown to nobody");
    }
    if (data.empty())
    {
        answer = ValueOf(property);
        return {};
    }
    const eWORD word = WordOf(data[0]);
    if (data.size() > 1 || word == eWORD::None)
    {
        return Fail(eREMOTE_PARAMETER_NOT_ALLOWED, data.back().text);
    }
    if (word != eWORD::Default)
    {
        return ReadLimit(property, word, answer);
    }
    answer = property.GetTypeName() == QLatin1String("blob")
                 ? Block(QByteArray::fromBase64(property.GetDefaultText().toLatin1()))
                 : TextOf(property, property.GetDefaultText());
    return {};
}

QByteArray NRemote::Quoted(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    if (bytes.contains('\n') || bytes.contains('\r'))
    {
        return Block(bytes);
    }
    bytes.replace('"', "\"\"");
    return '"' + bytes + '"';
}

QByteArray NRemote::Block(const QByteArray& bytes)
{
    const QByteArray length = QByteArray::number(bytes.size());
    return '#' + QByteArray::number(length.size()) + length + bytes;
}

t_RemoteError NRemote::ReadText(const t_RemoteData& data, QString& text)
{
    if (data.kind != eKIND::String && data.kind != eKIND::Block)
    {
        return Fail(eREMOTE_DATA_TYPE, "a text in quotes is wanted");
    }
    text = QString::fromUtf8(data.text);
    return text.toUtf8() == data.text ? t_RemoteError{}
                                      : Fail(eREMOTE_INVALID_STRING, "the text is no UTF-8");
}

t_RemoteError NRemote::ReadWhole(const t_RemoteData& data, INT64& number)
{
    const bool isNumber = data.kind == eKIND::Number || data.kind == eKIND::Digits;
    if (!isNumber)
    {
        return Fail(eREMOTE_DATA_TYPE, "a number is wanted");
    }
    if (!data.suffix.isEmpty())
    {
        return Fail(eREMOTE_SUFFIX_NOT_ALLOWED, data.suffix);
    }
    constexpr double kMost = 9e15; // doubles below it are exact
    const double value = std::round(data.text.toDouble());
    if (!(std::fabs(value) <= kMost))
    {
        return Fail(eREMOTE_OUT_OF_RANGE, data.text);
    }
    number = static_cast<INT64>(value);
    return {};
}
