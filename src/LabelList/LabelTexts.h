// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"
#include "LabelList/LabelReports.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** Texts and numbers in files of label lists: UTF-8, numbers without regard to the locale. */
namespace NLabelTexts
{
/**
 * Place of the first thing that no file can hold: damaged UTF-8, a control character other than
 * tabulator and line ends, and the two characters that XML has not. Nothing when all is well.
 */
std::optional<t_TextPlace> FindUnholdable(std::string_view text);

/** The text with U+FFFD in place of each such thing; counts them in `replaced`. */
std::string Holdable(std::string_view text, std::size_t& replaced);

/** The shortest text that reads back to the same number. */
std::string TextOf(double value);

/** Reads a text whole; nothing for anything else than a number that the type holds. */
///@{
std::optional<double> ReadReal(std::string_view text);
std::optional<INT64> ReadInteger(std::string_view text);
std::optional<UINT32> ReadUnsigned(std::string_view text);   ///< decimal
std::optional<UINT32> ReadIdentifier(std::string_view text); ///< decimal, or hexadecimal after 0x
///@}

/** "yes", "true" and "1", "no", "false" and "0", in any case. */
std::optional<bool> ReadFlag(std::string_view text);

/** Parts with ";" between them; a ";" or "\" in a part has a "\" before it. */
///@{
std::string Join(const std::vector<std::string>& parts);
std::vector<std::string> Split(std::string_view text); ///< of an empty text no part
///@}

/** Without blanks and tabulators at its ends. */
std::string_view Trimmed(std::string_view text);
} // namespace NLabelTexts
