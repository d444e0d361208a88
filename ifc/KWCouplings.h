// SPDX-License-Identifier: MIT
#pragma once

#include "IDbObject.h"

#include <functional>
#include <vector>

/**
 * Which setting moves what, as the rules declare it, and which of them is at work. Each class of
 * groups states its rules in one table; a row says when it starts and which steps then run:
 *
 *     Changed(FFT/State) >> Derive<OfferInputs>
 *
 * A row says what starts it, not what its steps write: that is seen by watching.
 */

/** A row of a group's rules. */
struct KW_CouplingRow
{
    QString group;  ///< path of the group that the row belongs to, empty for the root
    int number = 0; ///< place in the group's table, from 1
    /** When it runs. "On": at once, when a client writes one of these settings or runs one of these
        actions; "OnAny": the same for any setting of the group; "Delivered": at once, when the
        acquisition or a rule writes; "Changed": once at the end of a write, whoever wrote; "Items":
        when items of one of these containers come, go or are renamed; "Fresh": once, when the group
        has become part of the tree; "Twins": two settings that say the same, when a file names
        one of them; empty: only when everything is computed. */
    QString word;
    QStringList sources; ///< their paths; "[each]" stands for all items of a container
    /** "Do"; "Derive" and "Settle" run also when everything is computed, Settle at its end. Empty
        for twins. */
    QString what;
    QStringList steps; ///< names of what runs, in this order
};

/**
 * The rows of a group, in their order; none for a group without rules. Of a group that has left its
 * tree paths of sources begin at what is left above it. Callable from any thread; takes the tree's
 * lock. The rows of a class never change while the process runs; paths do where items are renamed.
 */
KW_EXPORT std::vector<KW_CouplingRow> KW_GetCouplingRows(const IDbGroup& group);

/** When a row runs, as its table reads: "Changed(FFT/State)", own settings by their name alone.
    Empty where nothing but computing everything starts it. Needs no tree. */
KW_EXPORT QString KW_FormatCouplingWhen(const KW_CouplingRow& row);

/** A step of a row that runs. */
struct KW_CouplingStep
{
    QString group; ///< as KW_CouplingRow::group
    int row = 0;   ///< as KW_CouplingRow::number
    QString step;  ///< name of the step
};

/**
 * Told of every change of value, limits, validity or availability of a property, of the
 * availability of a group, and of the items of a container, once for each: the node's path, and the
 * steps that run, the outermost first; none for what a client wrote itself. Undo and redo restore
 * states without running rules and are not told of.
 *
 * Called in the thread that writes, inside the write, with the tree's lock held, hence never twice
 * at once. It may read the tree; it must not write to it, wait for other threads, or throw.
 */
using KW_CouplingWatch =
    std::function<void(const QString& path, const std::vector<KW_CouplingStep>& running)>;

/**
 * Watches all changes from now on; an empty `watch` ends it. There is one for the process: another
 * takes the place of the one before, which is not called any more when this returns. While nobody
 * watches a write costs the same as ever; while somebody does, each change costs the texts that are
 * passed. Callable from any thread but from inside a watch; takes the tree's lock.
 */
KW_EXPORT void KW_WatchCouplings(KW_CouplingWatch watch);

/**
 * Watches the changes of the tree that `group` belongs to, and of no other: a private copy beside
 * the living tree, without taking anybody's watch away. Each tree has one such watch, to be ended
 * by an empty `watch` before the tree goes. Otherwise as above.
 */
KW_EXPORT void KW_WatchCouplings(const IDbGroup& group, KW_CouplingWatch watch);
