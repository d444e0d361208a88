// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"
#include "LabelList/LabelReports.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

/**
 * What XML and CSV say of a message or a signal: the same fields of the same names, attributes in
 * one and columns in the other. What has many values is left to the formats: senders, receivers,
 * labels, attributes of databases.
 */
enum class eLABEL_FIELD : UINT8
{
    Name, // of both
    // Of messages.
    Identifier,
    IdentifierLength,
    Length,
    CycleTime,
    Fd,
    BitRateSwitch,
    // Of signals.
    StartBit,
    BitLength,
    Endianness,
    ValueType,
    Factor,
    Offset,
    Minimum,
    Maximum,
    Unit,
    IsMultiplexor,
    Multiplexor,
    SelectedBy,
    // Of both.
    ShortName,
    Comment,
    Count
};

constexpr std::size_t kLabelFields = static_cast<std::size_t>(eLABEL_FIELD::Count);

/** Texts of fields, as they are written; empty ones are left out. */
using t_LabelFieldTexts = std::array<std::string, kLabelFields>;

/** Fields as they were read. */
class CLabelFields
{
public:
    /** A field that the file has, and where its text stands. */
    struct t_Text
    {
        std::string text;
        t_TextPlace place;
    };

    void Set(eLABEL_FIELD field, std::string_view text, t_TextPlace place);
    const std::optional<t_Text>& At(eLABEL_FIELD field) const;

private:
    std::array<std::optional<t_Text>, kLabelFields> m_texts;
};

namespace NLabelFields
{
/** "BitLength" */
const char* NameOf(eLABEL_FIELD field);

bool IsOfMessages(eLABEL_FIELD field);
bool IsOfSignals(eLABEL_FIELD field);

t_LabelFieldTexts TextsOf(const KW_LabelEntry& entry);
t_LabelFieldTexts TextsOf(const CLabelListSignal& signal, const KW_LabelSignalDetails& details);

/**
 * Reads fields; what is missing takes its default. False after an error: a number that is none, a
 * name that an enumeration does not have, a field that is needed and missing.
 *
 * @param place of the whole, for what is missing
 */
///@{
bool Read(const CLabelFields& fields, t_TextPlace place, KW_ZEL_SERIALBUS_PROTOCOL protocol,
          KW_LabelEntry& entry, CLabelReports& reports);
bool Read(const CLabelFields& fields, t_TextPlace place, CLabelListSignal& signal,
          KW_LabelSignalDetails& details, CLabelReports& reports);
///@}

/** A label as files have it: of a signed signal its negative values are negative. */
struct t_Label
{
    INT64 value;
    std::string_view text;
};

/** Labels a signal: where its bits can have the value and the table has room for it, there, else
    among the further labels. False for a value that has a label already. */
bool AddLabel(const t_Label& label, CLabelListSignal& signal, KW_LabelSignalDetails& details);

/** All labels of a signal, by value. */
std::map<INT64, std::string_view> LabelsOf(const CLabelListSignal& signal,
                                           const KW_LabelSignalDetails& details);

/** A signal with labels and without a type of its own is one of the type enum. */
void TakeTypeFromLabels(CLabelListSignal& signal);

/** The serial names of an enumeration, with commas between them. */
QString NamesOf(const CEnumNameInfo& names);
} // namespace NLabelFields
