// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <string>
#include <string_view>

/** Texts of CAN databases: how they are encoded and quoted. Label lists have UTF-8. */
namespace NDbcText
{
/** In KW_AttributeDefinition::object, before the kind of a relation. */
inline constexpr std::string_view kRelations = "BA_DEF_REL_ ";

/** How many bytes come before the first above 127. */
std::size_t AsciiLength(std::string_view bytes);

/** Whether all bytes are well-formed UTF-8. */
bool IsUtf8(std::string_view bytes);

/** Appends Windows-1252 as UTF-8; the five bytes that it does not define become the control
    characters of their number. */
void AppendWindows1252(std::string& text, std::string_view bytes);

/** UTF-8 as Windows-1252; false when it has a character that this lacks. */
bool ToWindows1252(std::string_view text, std::string& bytes);

/** What stands between quotes as text: every line end a line feed; backslashes stand for themselves
    but before a quote, where two are one and one makes the quote a part of the text. */
std::string Unquoted(std::string_view bytes, bool isUtf8);

/** The other way, with the quotes around it. */
void AppendQuoted(std::string& to, std::string_view text);

/** A statement in one line: blanks and line ends between its words as one blank, quoted texts as
    they are, all as UTF-8. */
std::string InOneLine(std::string_view statement, bool isUtf8);
} // namespace NDbcText
