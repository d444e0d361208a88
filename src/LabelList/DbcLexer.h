// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelReports.h"

#include <string_view>

enum class e_DbcToken
{
    End,
    Word,   ///< letters, digits and "_", from no digit on; bytes above 127 are letters
    Number, ///< as far as something could belong to it, so that "1.#INF" is one that is wrong
    Text,
    OpenText, ///< a quote without its partner
    Sign,     ///< a single character
};

/** A word of a CAN database, a view of the file. */
struct t_DbcToken
{
    e_DbcToken kind = e_DbcToken::End;
    std::string_view text; ///< of a text, what stands between the quotes
    t_TextPlace place;
    bool startsLine = false; ///< nothing but blanks stands before it in its line
    const char* begin = nullptr;
    const char* lineBegin = nullptr;

    bool IsSign(char sign) const { return kind == e_DbcToken::Sign && text.front() == sign; }
    bool IsWord(std::string_view word) const { return kind == e_DbcToken::Word && text == word; }
    /** Whether it stands in the first column: lists may go on in a further line, but not so. */
    bool BeginsLine() const { return startsLine && place.column == 1; }
};

/** Parts a CAN database into words, one ahead. A copy reads on by itself. */
class CDbcLexer
{
public:
    explicit CDbcLexer(std::string_view text);

    /** The word that comes next. */
    const t_DbcToken& Peek() const { return m_token; }
    /** Takes it. */
    t_DbcToken Take();
    /** Takes a sign where it comes next. */
    bool TakeSign(char sign);
    /** Takes digits, and nothing that stands right behind them; empty for none. */
    std::string_view TakeDigits();
    /** Takes one of these characters, whatever stands right behind it; empty for another. */
    std::string_view TakeCharacter(std::string_view characters);
    /** Whether a name in a list can begin with it: no sign, and no keyword that goes on behind a
        list. */
    static bool StartsName(const t_DbcToken& token);
    /** Takes what comes up to a blank or one of `,;:"`: names of any characters. */
    std::string_view TakeName();
    /** Takes what comes before a colon, without the blanks around it; empty, and nothing taken,
        when the line, a text or a statement ends before, or there is none within 1024 bytes. */
    std::string_view TakeToColon();
    /** Takes that very text where it comes next, as a whole word. */
    bool TakeExactly(std::string_view text);

    /** Goes back, or on, to a word. */
    void GoTo(const t_DbcToken& token);
    /** Goes on with the next line. */
    void SkipLine();

private:
    void Advance();
    void SkipBlanks();
    void ReadText();
    void MoveTo(const char* to);

    const char* m_at;
    const char* m_end;
    const char* m_lineBegin;
    UINT32 m_line = 1;
    bool m_isLineStart = true;
    t_DbcToken m_token;
};
