// SPDX-License-Identifier: MIT
#pragma once

#include "RemoteErrors.h"
#include "ServiceLimits.h"

#include <QByteArray>
#include <deque>
#include <vector>

/**
 * Cuts a stream of bytes into messages, which end in LF or CR LF. A line feed inside of a block of
 * definite length is data; one inside of quotes ends the message, as a client that forgot a quote
 * must not take what follows with it.
 */
class CRemoteReader
{
public:
    explicit CRemoteReader(const t_RemoteBounds& bounds) : m_bounds(bounds) {}

    void Add(const char* bytes, std::size_t count);

    struct t_Message
    {
        QByteArray bytes;     ///< without its end
        bool isWhole = false; ///< false for one that was too long: it has no bytes
    };
    bool HasMessage() const { return !m_messages.empty(); }
    t_Message Take();
    /** Whether a message has begun whose end has not come. */
    bool IsInMessage() const { return m_isTooLong || !m_bytes.isEmpty(); }
    std::size_t EndedMessages() const { return m_ended; }
    /** Bytes of the messages that wait. */
    std::size_t Waiting() const { return m_waiting; }

private:
    enum class eSTATE
    {
        Plain,
        Quotes,
        Apostrophes,
        BlockSign,   ///< behind "#"
        BlockLength, ///< within the digits of the length
        Block,       ///< within the bytes of a block of definite length
        Indefinite   ///< within a block that the message's end ends
    };

    void Take(char c);
    void EnterBlock(char c);
    void End();
    void Keep(const char* bytes, std::size_t count);
    /** How many bytes leave the state as it is. */
    std::size_t CountPlain(const char* bytes, std::size_t count) const;

    const t_RemoteBounds m_bounds;
    eSTATE m_state = eSTATE::Plain;
    int m_digits = 0;        ///< of the length that are still to come
    std::size_t m_block = 0; ///< bytes of the block that are still to come
    bool m_isTooLong = false;
    QByteArray m_bytes;
    std::deque<t_Message> m_messages;
    std::size_t m_waiting = 0;
    std::size_t m_ended = 0;
};

/** A parameter as it was written. */
struct t_RemoteData
{
    enum class eKIND
    {
        Character, ///< a word, as it was written
        Number,    ///< decimal, with its suffix
        Digits,    ///< hexadecimal, octal or binary: a decimal text here
        String,    ///< without its quotes
        Block      ///< bytes
    };
    eKIND kind = eKIND::Character;
    QByteArray text;
    QByteArray suffix; ///< of a number, in capitals; empty where there is none
};

/** One command of a message. */
struct t_RemoteUnit
{
    bool isCommon = false;         ///< "*" before its one word
    bool isAbsolute = false;       ///< ":" before its first word
    bool isQuery = false;          ///< "?" behind its last word
    std::vector<QByteArray> words; ///< in capitals
    std::vector<t_RemoteData> data;
};

/** Reads the commands of a message one by one, so that what stands before a mistake is done. */
class CRemoteParser
{
public:
    CRemoteParser(QByteArray message, const t_RemoteBounds& bounds)
        : m_text(std::move(message)), m_bounds(bounds)
    {
    }

    /** Whether no command is left. */
    bool IsAtEnd();
    /** The next command. After an error nothing of the message can be read. */
    t_RemoteError Next(t_RemoteUnit& unit);

private:
    char Peek(int ahead = 0) const;
    void SkipBlanks();
    QByteArray TakeWord();
    t_RemoteError TakeHeader(t_RemoteUnit& unit);
    t_RemoteError TakeParameters(t_RemoteUnit& unit);
    t_RemoteError TakeData(t_RemoteData& data);
    t_RemoteError TakeCharacters(t_RemoteData& data);
    t_RemoteError TakeNumber(t_RemoteData& data);
    t_RemoteError TakeExponent(t_RemoteData& data);
    t_RemoteError TakeString(t_RemoteData& data);
    t_RemoteError TakeDigits(t_RemoteData& data, int base);
    t_RemoteError TakeBlock(t_RemoteData& data);
    t_RemoteError Fail(eREMOTE_ERROR number) const;

    QByteArray m_text;
    const t_RemoteBounds m_bounds;
    int m_at = 0;
    bool m_failed = false;
};
