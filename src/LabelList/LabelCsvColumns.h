// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelFields.h"

/** Columns of CSV files: the fields of messages and signals, and those whose cells hold more than
    one value. */
namespace NLabelCsv
{
enum class eCOLUMN : UINT8
{
    Message, ///< name; of a signal that of its message
    Identifier,
    IdentifierLength,
    Length,
    CycleTime,
    Fd,
    BitRateSwitch,
    Senders, ///< "Engine;Gateway"
    Signal,  ///< name
    StartBit,
    BitLength,
    Endianness,
    ValueType,
    Factor,
    Offset,
    Minimum,
    Maximum,
    Unit,
    Labels, ///< "0=Off;1=On"
    IsMultiplexor,
    Condition, ///< "Mode = 0-3, 7"
    Receivers,
    ShortName,
    Comment,
    Count
};

constexpr std::size_t kColumns = static_cast<std::size_t>(eCOLUMN::Count);
constexpr const char* kFirstCell = "LabelList";

struct t_Column
{
    const char* name;
    eLABEL_FIELD field; ///< Count for those that are no single field
    bool isOfMessages;
    bool isOfSignals;
    bool isNeeded;
};

/** By their numbers. */
constexpr t_Column kColumn[kColumns] = {
    {"Message", eLABEL_FIELD::Count, true, true, true},
    {"Identifier", eLABEL_FIELD::Identifier, true, false, false},
    {"IdentifierLength", eLABEL_FIELD::IdentifierLength, true, false, false},
    {"Length", eLABEL_FIELD::Length, true, false, true},
    {"CycleTime", eLABEL_FIELD::CycleTime, true, false, false},
    {"Fd", eLABEL_FIELD::Fd, true, false, false},
    {"BitRateSwitch", eLABEL_FIELD::BitRateSwitch, true, false, false},
    {"Senders", eLABEL_FIELD::Count, true, false, false},
    {"Signal", eLABEL_FIELD::Count, false, true, true},
    {"StartBit", eLABEL_FIELD::StartBit, false, true, true},
    {"BitLength", eLABEL_FIELD::BitLength, false, true, true},
    {"Endianness", eLABEL_FIELD::Endianness, false, true, false},
    {"ValueType", eLABEL_FIELD::ValueType, false, true, false},
    {"Factor", eLABEL_FIELD::Factor, false, true, false},
    {"Offset", eLABEL_FIELD::Offset, false, true, false},
    {"Minimum", eLABEL_FIELD::Minimum, false, true, false},
    {"Maximum", eLABEL_FIELD::Maximum, false, true, false},
    {"Unit", eLABEL_FIELD::Unit, false, true, false},
    {"Labels", eLABEL_FIELD::Count, false, true, false},
    {"IsMultiplexor", eLABEL_FIELD::IsMultiplexor, false, true, false},
    {"Condition", eLABEL_FIELD::Count, false, true, false},
    {"Receivers", eLABEL_FIELD::Count, false, true, false},
    {"ShortName", eLABEL_FIELD::ShortName, true, true, false},
    {"Comment", eLABEL_FIELD::Comment, true, true, false},
};
} // namespace NLabelCsv
