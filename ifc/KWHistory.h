// SPDX-License-Identifier: MIT
#pragma once

#include "IKWFunctionRootBase.h"

/**
 * The steps that can be undone and redone, as a whole: IKWFunctionRootBase tells of the next one
 * and takes one at a time.
 */

/** The texts that name the steps, the next one first; at most 100 of each. */
struct KW_History
{
    QStringList undo; ///< what GetUndoText names first
    QStringList redo; ///< what GetRedoText names first
};

/** All steps of one moment; none for a root that is not this process's own. Callable from any
    thread; takes the tree's lock. */
KW_EXPORT KW_History KW_GetHistory(const IKWFunctionRootBase& tree);

/** Several steps back or forward, between which nobody else writes: all of them, or none with
    eKW_ACC_NOTHING_TO_DO (there are fewer, or less than one is asked for), eKW_ACC_IN_TRANSACTION
    (inside a bracket), eKW_ACC_NO_WRITE_ACCESS (local lockout), or eKW_ACC_DETACHED for a root that
    is not this process's own. Where memory is too short, all is as before (std::bad_alloc).
    Callable from any thread; takes the tree's lock. */
///@{
KW_EXPORT KW_ACCEPTANCE KW_UndoSteps(const IKWFunctionRootBase& tree, int steps);
KW_EXPORT KW_ACCEPTANCE KW_RedoSteps(const IKWFunctionRootBase& tree, int steps);
///@}
