// SPDX-License-Identifier: MIT
#pragma once

#include "LabelText.h"

#include <map>

/** Raw values of multiplexors by their name. */
using t_Multiplex = std::map<std::string, UINT64>;

/** Signals of a message that one frame can have together, by their number in the message. */
struct t_LabelPage
{
    QString title; ///< "Mode = 3"; empty where nothing is multiplexed
    std::vector<std::size_t> signals;
};

/** All pages of a message, or none but the first `most` and how many more there are. */
struct t_LabelPages
{
    std::vector<t_LabelPage> pages;
    std::size_t more = 0;
};

/** A page for each set of values that selects the same signals, with what is always there. */
t_LabelPages GetPages(const KW_LabelEntry& entry, std::size_t most);

/** The signals that are there with these values; one whose multiplexor is not named is not. */
t_LabelPage GetPage(const KW_LabelEntry& entry, const t_Multiplex& values);

/** How a drawing calls a signal: A … Z, AA …, by its number in the message. */
QString GetLetters(std::size_t number);

/** The bits of the payload, a byte in a line with bit 7 first, of SENT a nibble: in each place the
    letters of its signal, "^" at the most and "_" at the least significant bit; a dot where there
    is none. */
QStringList DrawPayload(const KW_LabelList& list, const KW_LabelEntry& entry,
                        const std::vector<std::size_t>& signals);
