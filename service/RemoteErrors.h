// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"

#include <QByteArray>
#include <QString>
#include <deque>

/** Numbers of errors that remote control answers: those of SCPI-1999, and −203 to −365 for what the
    tree refuses (NRemote::ErrorOf). */
enum eREMOTE_ERROR : INT32
{
    eREMOTE_NO_ERROR = 0,
    eREMOTE_INVALID_CHARACTER = -101,
    eREMOTE_SYNTAX = -102,
    eREMOTE_INVALID_SEPARATOR = -103,
    eREMOTE_DATA_TYPE = -104,
    eREMOTE_PARAMETER_NOT_ALLOWED = -108,
    eREMOTE_MISSING_PARAMETER = -109,
    eREMOTE_MNEMONIC_TOO_LONG = -112,
    eREMOTE_UNDEFINED_HEADER = -113,
    eREMOTE_HEADER_SUFFIX = -114,
    eREMOTE_INVALID_NUMBER = -121,
    eREMOTE_EXPONENT_TOO_LARGE = -123,
    eREMOTE_TOO_MANY_DIGITS = -124,
    eREMOTE_INVALID_SUFFIX = -131,
    eREMOTE_SUFFIX_NOT_ALLOWED = -138,
    eREMOTE_INVALID_CHARACTER_DATA = -141,
    eREMOTE_CHARACTER_DATA_TOO_LONG = -144,
    eREMOTE_INVALID_STRING = -151,
    eREMOTE_INVALID_BLOCK = -161,
    eREMOTE_EXECUTION = -200,
    eREMOTE_NO_WRITE_ACCESS = -203,
    eREMOTE_SETTINGS_CONFLICT = -221,
    eREMOTE_OUT_OF_RANGE = -222,
    eREMOTE_TOO_MUCH_DATA = -223,
    eREMOTE_ILLEGAL_VALUE = -224,
    eREMOTE_OUT_OF_MEMORY = -225,
    eREMOTE_MASS_STORAGE = -250,
    eREMOTE_CORRUPT_FILE = -253,
    eREMOTE_FILE_NOT_FOUND = -256,
    eREMOTE_ITEM_NOT_FOUND = -292,
    eREMOTE_NAME_IN_USE = -293,
    eREMOTE_WRONG_KIND = -294,
    eREMOTE_SYSTEM = -310,
    eREMOTE_QUEUE_OVERFLOW = -350,
    eREMOTE_INPUT_OVERRUN = -363,
    eREMOTE_TIMEOUT = -365
};

/** What was wrong with a message; the number 0 for nothing. */
struct t_RemoteError
{
    eREMOTE_ERROR number = eREMOTE_NO_ERROR;
    QString detail; ///< what it was about, in the tree's own words where the tree refused it

    explicit operator bool() const { return number != eREMOTE_NO_ERROR; }
};

namespace NRemote
{
/** The error that a code of the tree is; none for what was taken, with the tree's own text as
   detail where it was taken with a warning. */
t_RemoteError ErrorOf(KW_ACCEPTANCE code);

/** Printable ASCII alone, without quotes: a client may read no other, and a line feed would end the
    answer. */
QByteArray Plain(const QString& text);

/** `−222,"Data out of range;above the maximum"`: at most 255 characters in the quotes. */
QByteArray Format(const t_RemoteError& error);

/** The bit of the standard event status register that a number sets. */
UINT8 EventBitOf(eREMOTE_ERROR number);
} // namespace NRemote

/** The errors of one connection, the oldest first. When it is full, its last entry says so. */
class CRemoteErrorQueue
{
public:
    explicit CRemoteErrorQueue(std::size_t most) : m_most(most) {}

    void Add(t_RemoteError error);
    /** Takes the oldest; the number 0 when there is none. */
    t_RemoteError Take();
    std::size_t Count() const { return m_errors.size(); }
    void Clear() { m_errors.clear(); }

private:
    std::size_t m_most; ///< ≥ 2
    std::deque<t_RemoteError> m_errors;
};
