// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <array>
#include <span>
#include <string_view>

/** A frame of a log. */
struct KW_LoggedFrame
{
    static constexpr std::size_t kLongest = 64; ///< bytes of the longest payload

    bool hasTime = false;    ///< whether the line has a time
    INT64 nanoseconds = 0;   ///< since 1970, or since the log began; 0 without a time
    std::string_view bus;    ///< name or number; good as long as the line
    UINT32 identifier = 0;   ///< of an error frame the kind of error
    bool isExtended = false; ///< identifier of 29 bits, else 11
    bool isFd = false;       ///< CAN FD frame
    bool isRemote = false;   ///< remote frame: it has no data
    bool isError = false;    ///< error frame: identifier and data say which
    UINT32 length = 0; ///< bytes of the payload; of a remote frame those that it asks for, ≤ 15
    std::array<UINT8, kLongest> bytes; ///< as many as `length` says; none of a remote frame

    /** What the frame carries; nothing of a remote frame. Good as long as this object. */
    std::span<const UINT8> Payload() const
    {
        return std::span<const UINT8>(bytes).first(isRemote ? 0 : length);
    }
};

/**
 * Reads logs of CAN buses line by line, of any of these kinds, which need not be told apart before:
 * - `candump -L` and the files of `candump -l`: "(1436509052.249713) can0 123#11223344";
 * - `candump` as it prints on a terminal, "can0  123   [4]  11 22 33 44", behind a time of any kind
 *   or none, also with -a, -e and -x; not with -i and -S;
 * - ".asc": "0.015991 1  123x  Rx  d 8 11 22 33 44 55 66 77 88" and "CANFD …".
 *
 * Times are exact to the nanosecond. Those of a day and hour (`candump -t A`) are taken for UTC;
 * relative ones of ".asc" are added up, those of `candump -t d` stay what they are. Takes no
 * memory, and throws nothing. An object reads one log: ".asc" has its base of numbers and its kind
 * of times in the header.
 */
class KW_EXPORT CFrameLogReader
{
public:
    /** What a line is. */
    enum class e_Line
    {
        Frame,
        Nothing,       ///< blank, a header, a comment, or another event than a frame
        NotUnderstood, ///< none of these, cut off, or longer than 4096 bytes
    };

    /** Reads a line, with or without its line end.
        @param frame counts only for e_Line::Frame */
    e_Line Read(std::string_view line, KW_LoggedFrame& frame) noexcept;

private:
    e_Line ReadCandump(std::string_view line, KW_LoggedFrame& frame) noexcept;
    e_Line ReadAsc(std::string_view line, KW_LoggedFrame& frame) noexcept;
    bool ReadHeader(std::string_view line) noexcept;

    int m_base = 16;           ///< of identifiers and bytes in ".asc"
    bool m_isRelative = false; ///< times of ".asc" count from the line before
    INT64 m_nanoseconds = 0;   ///< of the last line in ".asc"
    bool m_wasError = false;   ///< the line before was an error frame, which others may explain
};
