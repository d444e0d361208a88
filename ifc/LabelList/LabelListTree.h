// SPDX-License-Identifier: MIT
#pragma once

#include "KWAcceptance.h"
#include "LabelList/LabelList.h"
#include "LabelList/LabelListFile.h"

#include <vector>

class IKWFunctionLabelListSettings;

/**
 * Label lists in the tree: SerialBus/CANBusSettings/LabelListSettings, and the same of LIN, I²C and
 * SENT. Its nodes hold names, identifiers, payloads, comments of messages, and signals with the
 * labels of their values and the condition under which they are there; not what only databases
 * know, such as senders and attributes.
 *
 * Both may be called from any thread and take the tree's lock; neither reports through the error
 * handler: what is to be said is returned, at most 100 of it and then how much more there was.
 */

/**
 * Replaces the list of a bus by another one, as one step for undo, with the name "Load labels".
 * Frames are named by the new list when this returns, or when the bracket around it ends.
 *
 * What the tree has no room for is left out or cut, and reported by its name:
 * - left out: messages beyond 4096, and those that would make the list larger than a settings file
 *   can be; signals of a message beyond 512; signals with a factor or offset above 1e15, or with a
 *   condition of more than 1024 characters; texts of values beyond 256 of one signal; messages that
 *   are against the rules of label lists, as a reader would refuse them
 * - cut: names and texts of values to 64 characters, units to 16, comments to 128; minimum and
 *   maximum to 1e30, and a maximum below the minimum to that; control characters become blanks
 * - not held: one report counts what the tree has no nodes for
 *
 * Payloads and signals longer than the bus has now are taken and limited by it: with CAN FD they
 * are as long as the list says. Of messages with one identifier the first is on.
 *
 * @return eKW_ACC_OK; eKW_ACC_WARNING when something is to be said. Refused, and the tree as it
 *         was: eKW_ACC_WRONG_KIND (a list of another bus), eKW_ACC_NO_WRITE_ACCESS,
 *         eKW_ACC_NOT_AVAILABLE, eKW_ACC_DETACHED
 */
KW_EXPORT KW_ACCEPTANCE KW_PutLabels(IKWFunctionLabelListSettings& settings,
                                     const KW_LabelList& list,
                                     std::vector<KW_LabelReport>& reports);

/**
 * Gives the list of a bus, with all its labels and as long as they were given, whatever the bus
 * lets them be now. A signal without a name has that of its place in the tree; one that lies in no
 * such payload, as a float in two bytes, is left out. What this gives can be written and read
 * again. `list` is replaced.
 *
 * @return eKW_ACC_OK; eKW_ACC_WARNING when signals were left out, or labels are off, which lists
 * can not say; eKW_ACC_DETACHED leaves `list` as it was
 */
KW_EXPORT KW_ACCEPTANCE KW_GetLabels(const IKWFunctionLabelListSettings& settings,
                                     KW_LabelList& list, std::vector<KW_LabelReport>& reports);
