// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <QString>

/** What remote control calls a node: its word in a header such as VERTical:CHANnel2:SCALe. */
struct KW_RemoteNames
{
    QString longForm;  ///< the node's name in capitals: "HORIZONTALSPAN"
    QString shortForm; ///< at most 12 capitals, digits and "_", a letter first: "HORSPAN"
    QString mnemonic;  ///< both in one, the short form as capitals: "HORizontalSPAN"
};

/**
 * The names of a node. Each word of the node's name keeps its first four letters, three where the
 * fourth is a vowel, and all where it has no more than four; a number is a word. Where siblings
 * would meet, or the short form would be too long, the model names another. Both forms are unique
 * among siblings of the model, without regard to case.
 *
 * An item of an array or map has the names of its container: its number goes behind them. The root
 * has none; a node that has left its tree has those that its name makes. Callable from any thread;
 * takes the tree's lock for its own duration. Names never change while a node lives.
 */
KW_EXPORT KW_RemoteNames KW_GetRemoteNames(const IDbObject& node);
