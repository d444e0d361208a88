// SPDX-License-Identifier: MIT
#pragma once

#include "LabelList/LabelList.h"
#include "LabelList/LabelReports.h"

#include <QStringList>
#include <functional>
#include <optional>

/** What every reader of label lists looks at once a message is complete, whatever its format. */
namespace NLabelChecks
{
/** Bits of the message's identifier; none where its format is no number. */
std::optional<UINT32> IdentifierLengthOf(const CLabelListMessage& message);

/** Where a signal of a message stands in the file, by its number in the order of the file; −1 for
    the message itself. */
using t_PlaceOf = std::function<t_TextPlace(int signal)>;

/**
 * Errors, which make the message a bad one: an identifier of a length that the bus does not have,
 * or that does not fit its length; a payload longer than the bus has; a signal of no bits or more
 * than 64, a float or double of another length than its own, a signal outside of the payload; a
 * factor, offset, minimum or maximum that is no finite number.
 * Warnings: a factor of 0, a minimum above the maximum, signals that share bits without being
 * multiplexed apart, a name twice or none, a multiplexor that the message has not.
 *
 * @return false after an error
 */
bool Check(KW_ZEL_SERIALBUS_PROTOCOL protocol, const KW_LabelEntry& entry, const t_PlaceOf& placeOf,
           CLabelReports& reports);

/** The errors of Check, as texts: what a list that comes from no file is refused or left out for.
 */
QStringList ErrorsOf(KW_ZEL_SERIALBUS_PROTOCOL protocol, const KW_LabelEntry& entry);

/** Warns of messages with the same identifier of the same length. `placeOf` gives the place of a
    message by its number in the list. */
void CheckIdentifiers(const KW_LabelList& list, const t_PlaceOf& placeOf, CLabelReports& reports);
} // namespace NLabelChecks
