// SPDX-License-Identifier: MIT
#include "RemoteErrors.h"

#include <algorithm>
#include <array>

namespace
{
struct t_Text
{
    eREMOTE_ERROR number;
    const char* text;
};

constexpr std::array kTexts{
    t_Text{eREMOTE_NO_ERROR, "No error"},
    t_Text{eREMOTE_INVALID_CHARACTER, "Invalid character"},
    t_Text{eREMOTE_SYNTAX, "Syntax error"},
    t_Text{eREMOTE_INVALID_SEPARATOR, "Invalid separator"},
    t_Text{eREMOTE_DATA_TYPE, "Data type error"},
    t_Text{eREMOTE_PARAMETER_NOT_ALLOWED, "Parameter not allowed"},
    t_Text{eREMOTE_MISSING_PARAMETER, "Missing parameter"},
    t_Text{eREMOTE_MNEMONIC_TOO_LONG, "Program mnemonic too long"},
    t_Text{eREMOTE_UNDEFINED_HEADER, "Undefined header"},
    t_Text{eREMOTE_HEADER_SUFFIX, "Header suffix out of range"},
    t_Text{eREMOTE_INVALID_NUMBER, "Invalid character in number"},
    t_Text{eREMOTE_EXPONENT_TOO_LARGE, "Exponent too large"},
    t_Text{eREMOTE_TOO_MANY_DIGITS, "Too many digits"},
    t_Text{eREMOTE_INVALID_SUFFIX, "Invalid suffix"},
    t_Text{eREMOTE_SUFFIX_NOT_ALLOWED, "Suffix not allowed"},
    t_Text{eREMOTE_INVALID_CHARACTER_DATA, "Invalid character data"},
    t_Text{eREMOTE_CHARACTER_DATA_TOO_LONG, "Character data too long"},
    t_Text{eREMOTE_INVALID_STRING, "Invalid string data"},
    t_Text{eREMOTE_INVALID_BLOCK, "Invalid block data"},
    t_Text{eREMOTE_EXECUTION, "Execution error"},
    t_Text{eREMOTE_NO_WRITE_ACCESS, "Command protected"},
    t_Text{eREMOTE_SETTINGS_CONFLICT, "Settings conflict"},
    t_Text{eREMOTE_OUT_OF_RANGE, "Data out of range"},
    t_Text{eREMOTE_TOO_MUCH_DATA, "Too much data"},
    t_Text{eREMOTE_ILLEGAL_VALUE, "Illegal parameter value"},
    t_Text{eREMOTE_OUT_OF_MEMORY, "Out of memory"},
    t_Text{eREMOTE_MASS_STORAGE, "Mass storage error"},
    t_Text{eREMOTE_CORRUPT_FILE, "Corrupt media"},
    t_Text{eREMOTE_FILE_NOT_FOUND, "File name not found"},
    t_Text{eREMOTE_ITEM_NOT_FOUND, "Referenced name does not exist"},
    t_Text{eREMOTE_NAME_IN_USE, "Referenced name already exists"},
    t_Text{eREMOTE_WRONG_KIND, "Incompatible type"},
    t_Text{eREMOTE_SYSTEM, "System error"},
    t_Text{eREMOTE_QUEUE_OVERFLOW, "Queue overflow"},
    t_Text{eREMOTE_INPUT_OVERRUN, "Input buffer overrun"},
    t_Text{eREMOTE_TIMEOUT, "Time out error"},
};

eREMOTE_ERROR NumberOf(KW_ACCEPTANCE code)
{
    switch (code)
    {
    case eKW_ACC_OK:
    case eKW_ACC_WARNING:
        return eREMOTE_NO_ERROR;
    case eKW_ACC_BELOW_MINIMUM:
    case eKW_ACC_ABOVE_MAXIMUM:
    case eKW_ACC_LIMITS_CROSSED:
    case eKW_ACC_OUTSIDE_DECLARED:
        return eREMOTE_OUT_OF_RANGE;
    case eKW_ACC_NOT_A_NUMBER:
    case eKW_ACC_NOT_IN_VALUE_LIST:
    case eKW_ACC_UNKNOWN_VALUE:
    case eKW_ACC_AMBIGUOUS_NAME:
    case eKW_ACC_BAD_TEXT:
    case eKW_ACC_BAD_NAME:
        return eREMOTE_ILLEGAL_VALUE;
    case eKW_ACC_NOT_ENABLED:
    case eKW_ACC_NOT_AVAILABLE:
    case eKW_ACC_IN_TRANSACTION:
    case eKW_ACC_FIXED_SIZE:
    case eKW_ACC_CAN_NOT_SHRINK:
    case eKW_ACC_NOTHING_TO_DO:
    case eKW_ACC_NOTHING_TO_ACT_ON:
        return eREMOTE_SETTINGS_CONFLICT;
    case eKW_ACC_TOO_LONG:
        return eREMOTE_TOO_MUCH_DATA;
    case eKW_ACC_READ_ONLY:
        return eREMOTE_UNDEFINED_HEADER;
    case eKW_ACC_NO_WRITE_ACCESS:
        return eREMOTE_NO_WRITE_ACCESS;
    case eKW_ACC_BAD_INDEX:
        return eREMOTE_HEADER_SUFFIX;
    case eKW_ACC_NOT_FOUND:
        return eREMOTE_ITEM_NOT_FOUND;
    case eKW_ACC_NAME_IN_USE:
        return eREMOTE_NAME_IN_USE;
    case eKW_ACC_WRONG_KIND:
        return eREMOTE_WRONG_KIND;
    case eKW_ACC_CONTAINER_FULL:
        return eREMOTE_OUT_OF_MEMORY;
    case eKW_ACC_FILE_NOT_READABLE:
        return eREMOTE_FILE_NOT_FOUND;
    case eKW_ACC_FILE_NOT_WRITABLE:
        return eREMOTE_MASS_STORAGE;
    case eKW_ACC_FILE_NOT_UNDERSTOOD:
        return eREMOTE_CORRUPT_FILE;
    case eKW_ACC_TIMEOUT:
        return eREMOTE_TIMEOUT;
    case eKW_ACC_DETACHED:
    case eKW_ACC_INTERNAL:
        return eREMOTE_SYSTEM;
    default:
        return eREMOTE_EXECUTION;
    }
}
} // namespace

t_RemoteError NRemote::ErrorOf(KW_ACCEPTANCE code)
{
    const eREMOTE_ERROR number = NumberOf(code);
    return {number, code == eKW_ACC_OK ? QString() : KW_GetAcceptanceText(code)};
}

QByteArray NRemote::Plain(const QString& text)
{
    QByteArray plain;
    for (const QChar c : text)
    {
        const char letter = c >= u' ' && c <= u'~' ? c.toLatin1() : '?';
        plain += letter == '"' ? '\'' : letter;
    }
    return plain;
}

QByteArray NRemote::Format(const t_RemoteError& error)
{
    constexpr int kLongestText = 255;
    const auto* const found =
        std::find_if(kTexts.begin(), kTexts.end(),
                     [&error](const t_Text& row) { return row.number == error.number; });
    QByteArray text = found == kTexts.end() ? "Device-specific error" : found->text;
    if (!error.detail.isEmpty())
    {
        text += ';' + Plain(error.detail);
    }
    return QByteArray::number(error.number) + ",\"" + text.left(kLongestText) + '"';
}

UINT8 NRemote::EventBitOf(eREMOTE_ERROR number)
{
    constexpr UINT8 kOfHundreds[] = {0x00, 0x20, 0x10, 0x08, 0x04};
    const int hundreds = -number / 100;
    return hundreds < static_cast<int>(std::size(kOfHundreds)) ? kOfHundreds[hundreds] : 0x08;
}

void CRemoteErrorQueue::Add(t_RemoteError error)
{
    if (m_errors.size() < m_most)
    {
        m_errors.push_back(std::move(error));
    }
    else
    {
        m_errors.back() = {eREMOTE_QUEUE_OVERFLOW, QString()};
    }
}

t_RemoteError CRemoteErrorQueue::Take()
{
    if (m_errors.empty())
    {
        return {};
    }
    t_RemoteError error = std::move(m_errors.front());
    m_errors.pop_front();
    return error;
}
