// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"
#include "LabelList/LabelReports.h"

#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

/**
 * A CAN database as its statements have it. What one says of a message may come anywhere behind
 * it, so that a label list comes about only when all are read. Views are of the file's text.
 */

/** A label, with the number that the file has for its value. */
struct t_DbcLabel
{
    INT64 value = 0;      ///< with `isLarge` the bits of an unsigned number
    bool isLarge = false; ///< above what a signed number can be
    std::string text;
};

struct t_DbcSignal
{
    t_TextPlace place;
    std::string_view name;
    UINT32 startBit = 0;
    UINT32 bitLength = 0;
    bool isBigEndian = false;
    bool isSigned = false;
    UINT32 floatKind = 0; ///< 1 a float, 2 a double
    double factor = 1.0;
    double offset = 0.0;
    double minimum = 0.0;
    double maximum = 0.0;
    std::string unit;
    bool isMultiplexed = false;     ///< marked with "m" and a number
    UINT64 page = 0;                ///< that number
    std::string_view multiplexor;   ///< named by SG_MUL_VAL_
    std::vector<t_DbcLabel> labels; ///< in the order of the file
    KW_LabelSignalDetails details;
};

struct t_DbcMessage
{
    t_TextPlace place;
    std::string_view name;
    UINT32 number = 0; ///< as statements name it: bit 31 stands for an extended identifier
    UINT32 length = 0;
    bool isBad = false;
    std::vector<t_DbcSignal> signalList;
    std::vector<UINT32> byName;   ///< of signals, made for the first that is looked for
    std::vector<UINT32> oddNames; ///< signals with blanks or commas in their names; a few
    KW_LabelMessageDetails details;
};

struct t_DbcDefault
{
    KW_LabelAttribute value;
    t_TextPlace place;
};

struct t_DbcDraft
{
    std::vector<t_DbcMessage> messages;
    std::unordered_map<UINT32, std::size_t> byNumber;         ///< the first of each
    std::unordered_map<std::string_view, std::size_t> byNode; ///< places in the list's nodes
    std::map<std::string, t_DbcDefault> defaults;             ///< of attributes, by name
    std::map<std::string, t_DbcDefault> relationDefaults;
    /** Statements that are kept as they stand, but go with their message; by its place. */
    std::vector<std::pair<std::size_t, std::string>> dependents;
    std::map<std::string, t_TextPlace> used; ///< attributes by name, with their first value
    bool isUtf8 = false;
};

namespace NDbcDraft
{
constexpr UINT32 kExtended = 0x80000000U;  ///< flag of a message's number
constexpr UINT32 kNoMessage = 0xc0000000U; ///< stands for signals that are in no message
constexpr UINT32 kLastStandard = 0x7ffU;   ///< highest identifier of 11 bits
constexpr UINT32 kLastExtended = 0x1fffffffU;

/** The number that stands for the message, whether it has the flag in the file or lacks it. */
constexpr UINT32 NumberOf(UINT32 inFile)
{
    return inFile > kLastStandard ? inFile | kExtended : inFile;
}

/** The first signal of that name; null for none. */
t_DbcSignal* FindSignal(t_DbcMessage& message, std::string_view name);

/** Makes a label list of it: all that is said in several statements is put together, fields take
    the place of attributes, and messages are checked. Bad ones are left out, with errors. */
void Assemble(t_DbcDraft& draft, KW_LabelList& list, CLabelReports& reports);
} // namespace NDbcDraft
