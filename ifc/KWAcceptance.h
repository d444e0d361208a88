// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

#include <QString>

/** Answer to every write, limit change and action: 0 and 1 mean taken, 2 and above refused. */
using KW_ACCEPTANCE = UINT32;

/** The codes. Only `code > 1` decides whether a request failed; the code tells why. */
enum KW_ACCEPTANCE_CODE : KW_ACCEPTANCE
{
    eKW_ACC_OK = 0,      ///< Taken, and stands as it was asked for.
    eKW_ACC_WARNING = 1, ///< Taken, but limited, rounded, moved or taken back by a rule, or with a
                         ///< dependant left behind: read what stands.

    eKW_ACC_BELOW_MINIMUM,       ///< The value is below the present minimum.
    eKW_ACC_ABOVE_MAXIMUM,       ///< The value is above the present maximum.
    eKW_ACC_NOT_A_NUMBER,        ///< NaN, or a step or resolution that is no positive number.
    eKW_ACC_NOT_IN_VALUE_LIST,   ///< The property takes only the values of its list.
    eKW_ACC_UNKNOWN_VALUE,       ///< The enumeration has no such value or name.
    eKW_ACC_NOT_ENABLED,         ///< The enumeration value exists but can not be selected now.
    eKW_ACC_AMBIGUOUS_NAME,      ///< Several values of the enumeration carry this name.
    eKW_ACC_BAD_TEXT,            ///< The text can not be read as a value of this property.
    eKW_ACC_TOO_LONG,            ///< The text, pattern or byte block exceeds its length limit.
    eKW_ACC_LIMITS_CROSSED,      ///< The minimum would lie above the maximum.
    eKW_ACC_OUTSIDE_DECLARED,    ///< A limit would leave the range that the model declares.
    eKW_ACC_READ_ONLY,           ///< Results, and what is shown only, are not settable.
    eKW_ACC_NOT_AVAILABLE,       ///< The node is not available in this configuration or state.
    eKW_ACC_NO_WRITE_ACCESS,     ///< Remote control holds the instrument, or writes are closed.
    eKW_ACC_DETACHED,            ///< The node's tree is gone, or the node was removed from it.
    eKW_ACC_BAD_INDEX,           ///< No item has this index.
    eKW_ACC_BAD_NAME,            ///< The name is empty, too long or holds forbidden characters.
    eKW_ACC_NAME_IN_USE,         ///< An item of this name or key exists already.
    eKW_ACC_NOT_FOUND,           ///< No item, group or property of this name exists.
    eKW_ACC_CONTAINER_FULL,      ///< The container has its maximum count of items.
    eKW_ACC_FIXED_SIZE,          ///< The container's items are fixed.
    eKW_ACC_CAN_NOT_SHRINK,      ///< Setting a size never removes items.
    eKW_ACC_NOTHING_TO_DO,       ///< There is no step to undo or redo.
    eKW_ACC_IN_TRANSACTION,      ///< Not possible between the start and end of a transaction.
    eKW_ACC_FILE_NOT_READABLE,   ///< The file is missing, too large or can not be read.
    eKW_ACC_FILE_NOT_WRITABLE,   ///< The file can not be written; an old one is kept.
    eKW_ACC_FILE_NOT_UNDERSTOOD, ///< The file is damaged, of another kind or too new.
    eKW_ACC_WRONG_KIND,          ///< Source and target are not of the same kind.
    eKW_ACC_TIMEOUT,             ///< The operation did not complete in time.
    eKW_ACC_OPERATION_FAILED,    ///< The operation completed with another result.
    eKW_ACC_INTERNAL,            ///< A rule of the library was broken; always reported.
    eKW_ACC_NOTHING_TO_ACT_ON,   ///< The action has nothing to act on in the present state.
    eKW_ACC_COUNT                ///< Number of codes.
};

/** A sentence for the code, such as "above the maximum"; "unknown code N" for any other number.
    Callable from any thread. */
KW_EXPORT QString KW_GetAcceptanceText(KW_ACCEPTANCE code);

/** True when the request was taken (codes 0 and 1). */
constexpr bool KW_IsAccepted(KW_ACCEPTANCE code)
{
    return code <= eKW_ACC_WARNING;
}
