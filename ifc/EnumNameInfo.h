// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>
#include <optional>
#include <vector>

/** The texts of an enumeration's values as literals: in value order, separated by zero characters.
    A single U+0001 stands for a text that is not set; a null pointer for a kind with no texts. */
struct CEnumTexts
{
    const char16_t* display;   ///< KW_ENUM_NAME::Display
    const char16_t* shortName; ///< KW_ENUM_NAME::Short
    const char16_t* remote;    ///< KW_ENUM_NAME::Remote
    const char16_t* serial;    ///< KW_ENUM_NAME::Serial
};

/** The four kinds of names that a value carries. */
enum class KW_ENUM_NAME : INT32
{
    Display, ///< shown to the user; may change with presentation
    Short,   ///< for narrow displays; few types have them
    Remote,  ///< mnemonic of remote control
    Serial   ///< written to files; the stable identifier
};

/**
 * The name table of one enumeration type: values 0 … count − 1, each with up to four texts, and
 * for types that stand for numbers (a bit rate, a time) that number.
 *
 * Tables of the library's types come from GetStaticEnumNameInfo and are immutable: they are filled
 * inside the initialisation of a function-local static, so any number of threads may make the
 * first call together. A value outside the type and a text that was never set both read as a null
 * QString (isNull()); a blank entry reads as an empty one.
 */
class KW_EXPORT CEnumNameInfo
{
public:
    /** An empty table of `count` values; a negative count is taken as 0. */
    CEnumNameInfo(INT32 count, const QString& typeName);

    /** A filled table. All literals, and `numbers` (count entries), must live as long as it. */
    CEnumNameInfo(INT32 count, const char16_t* typeName, const CEnumTexts& texts,
                  const double* numbers = nullptr);

    /** Fills one text of a value; the kind is in the function's name. A value outside the type is
        ignored. Not for tables already shared. */
    ///@{
    void SetName(INT32 value, const QString& text);
    void SetShortName(INT32 value, const QString& text);
    void SetRemoteName(INT32 value, const QString& text);
    void SetSerialName(INT32 value, const QString& text);
    ///@}

    /** A text of a value, of the kind in the function's name or the argument. */
    ///@{
    QString GetName(INT32 value) const;
    QString GetShortName(INT32 value) const;
    QString GetRemoteName(INT32 value) const;
    QString GetSerialName(INT32 value) const;
    QString GetText(KW_ENUM_NAME kind, INT32 value) const;
    ///@}

    /** The number that a value stands for (a bit rate in bit/s, a time in s); nothing for types
        without numbers and for values outside the type. */
    std::optional<double> GetNumber(INT32 value) const;

    /** Number of values. */
    INT32 GetEnumSize() const;
    /** Name of the enumeration type, such as "KW_ONOFF". */
    const QString& GetType() const;
    /** Whether the value is one of the type: 0 … count − 1. */
    bool IsValue(INT32 value) const;

    /** Result of a search for a name. */
    enum class eMATCH
    {
        None,
        One,
        Several ///< more than one value carries the name; `value` is the lowest
    };
    /** What ConvertName found. */
    struct t_Conversion
    {
        eMATCH match; ///< whether there is a value, and only one
        INT32 value;  ///< −1 when nothing matches
    };

    /** Finds the value that carries `name`, without regard to case where no exact match exists.
        An empty name finds a blank entry only. */
    t_Conversion ConvertName(const QString& name, KW_ENUM_NAME kind = KW_ENUM_NAME::Serial) const;

private:
    static constexpr int kNameKinds = 4;

    void Fill(KW_ENUM_NAME kind, const char16_t* texts);
    void SetText(KW_ENUM_NAME kind, INT32 value, const QString& text);
    t_Conversion Search(const QString& name, KW_ENUM_NAME kind, Qt::CaseSensitivity cs) const;

    INT32 m_count;
    QString m_type;
    std::vector<QString> m_texts[kNameKinds];
    const double* m_numbers;
};

/** The one name table of enumeration type T. Every call returns the same object. */
template <typename T>
const CEnumNameInfo& GetStaticEnumNameInfo();

/** Whether steps over the values of T go from number to number (CEnumNameInfo::GetNumber), with
    values without a number behind all others, instead of from value to value. */
template <typename T>
inline constexpr bool KW_STEPS_BY_NUMBER = false;
