// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsSerialBus.h"
#include "LabelList/LabelListMessage.h"

#include <QByteArray>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/**
 * A whole label list: the messages and signals of a bus, and what databases know of them beyond
 * CLabelListMessage and CLabelListSignal. Plain values: copies are independent. Texts are UTF-8.
 * Not for several threads at once while one of them writes.
 */

/** Raw values, both ends included. */
struct KW_RawRange
{
    UINT64 first = 0; ///< lowest of them
    UINT64 last = 0;  ///< ≥ first
};

/** Value of an attribute, as it stands in a file: a number or the text of a quoted one. */
struct KW_LabelAttribute
{
    std::string value;   ///< a number in decimal, or the text without its quotes
    bool isText = false; ///< whether it stood in quotes
};

/** Attributes by their name. */
using KW_LabelAttributes = std::map<std::string, KW_LabelAttribute>;

/** What databases know of a signal beyond CLabelListSignal. */
struct KW_LabelSignalDetails
{
    std::string multiplexor; ///< name of the signal that selects this one; empty: always there
    std::vector<KW_RawRange> selectedBy; ///< raw values of the multiplexor with which it is there;
                                         ///< in order and apart. Empty without a multiplexor.
    bool isMultiplexor = false;          ///< whether it may select others, even if it selects none
    std::vector<std::string> receivers;  ///< names of nodes
    std::string comment;                 ///< remark of the file
    std::string shortName; ///< name in CAN database files, whose names end at 32 characters; empty:
                           ///< the signal's own
    /** Labels that CLabelListSignal has no room for: of raw values above 32 bits, and as the file
        wrote them, of values that the signal's bits can not have. */
    std::map<INT64, std::string> furtherLabels;
    KW_LabelAttributes attributes; ///< but for those that fields stand for
};

/** What databases know of a message beyond CLabelListMessage. */
struct KW_LabelMessageDetails
{
    std::vector<std::string> senders;       ///< names of nodes, the usual one first
    std::string comment;                    ///< remark of the file
    std::string shortName;                  ///< as of a signal
    bool isFd = false;                      ///< CAN FD frame
    bool hasBitRateSwitch = false;          ///< data of a CAN FD frame at the data bit rate
    std::optional<double> cycleTime;        ///< seconds between two of its frames; > 0
    KW_LabelAttributes attributes;          ///< but for those that fields stand for
    std::vector<QByteArray> signalsInOrder; ///< keys of all signals, in the order of the file
    std::map<QByteArray, KW_LabelSignalDetails> signalDetails; ///< by key; none: nothing is known
};

/**
 * A message and what is known of it. Signals are filed under CLabelListSignal::getSignalKey; where
 * that is taken, "/" and its place in the message stand behind it. KW_AddSignal does so.
 */
struct KW_LabelEntry
{
    CLabelListMessage message;      ///< its name, identifier, length and signals
    KW_LabelMessageDetails details; ///< what only databases know
};

/** A signal of a message and what is known of it. Good as long as the entry stays as it is. */
struct KW_LabelSignal
{
    const CLabelListSignal* signal;       ///< never null
    const KW_LabelSignalDetails* details; ///< never null; of a signal without any they say nothing
};

/** All signals of a message, each once: those that signalsInOrder names in its order, then the
    others in that of their keys. */
KW_EXPORT std::vector<KW_LabelSignal> KW_GetSignals(const KW_LabelEntry& entry);

/** Files a signal behind all others.
    @return its key; `details` are left out where they say nothing */
KW_EXPORT QByteArray KW_AddSignal(KW_LabelEntry& entry, const CLabelListSignal& signal,
                                  KW_LabelSignalDetails details = {});

/** A node of the network. */
struct KW_LabelNode
{
    std::string name;              ///< as senders and receivers name it
    std::string shortName;         ///< as of a signal
    std::string comment;           ///< remark of the file
    KW_LabelAttributes attributes; ///< but for those that fields stand for
};

/** A table of labels that has a name of its own. */
struct KW_ValueTable
{
    std::string name;                    ///< as the file calls it
    std::map<INT64, std::string> labels; ///< by value
};

/** What values an attribute can have. */
struct KW_AttributeDefinition
{
    std::string object; ///< "BU_", "BO_", "SG_", "EV_", or empty for the list as a whole; behind
                        ///< "BA_DEF_REL_ " the kinds of relations
    std::string name;   ///< as attributes have it
    std::string type;   ///< as CAN database files have it: "INT 0 100", "ENUM \"no\",\"yes\""
    std::optional<KW_LabelAttribute> defaultValue; ///< of objects that have none of their own
};

/** What CAN database files hold beside messages; kept, so that a file that is read and written
    loses nothing. */
struct KW_CanDatabase
{
    std::string version;                                      ///< text of VERSION
    std::vector<KW_LabelNode> nodes;                          ///< in the order of the file
    std::vector<KW_ValueTable> valueTables;                   ///< in the order of the file
    std::vector<KW_AttributeDefinition> attributeDefinitions; ///< in the order of the file
    KW_LabelAttributes attributes;                            ///< of the list as a whole
    /** Statements that say nothing of messages and signals, environment variables and groups of
        signals among them: each as it stood, without line ends outside of quoted texts. */
    std::vector<std::string> otherStatements;
    bool isUtf8 = false; ///< else Windows-1252
};

/** A label list. */
struct KW_LabelList
{
    KW_ZEL_SERIALBUS_PROTOCOL protocol =
        eKW_ZEL_SERIALBUS_PROTOCOL_CAN;  ///< bus of the list: what identifiers and payloads can be
    std::string name;                    ///< name of the list; of a CAN database its DBName
    std::string comment;                 ///< remark to the list as a whole
    std::vector<KW_LabelEntry> messages; ///< in the order of the file
    KW_CanDatabase database;             ///< of other protocols it stays empty
};
