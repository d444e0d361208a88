// SPDX-License-Identifier: MIT
#pragma once

#include "KWTypes.h"

/** What a node of the tree is. */
enum KW_NODE_KIND : INT32
{
    eKW_NODE_PROPERTY = 0,
    eKW_NODE_GROUP,
    eKW_NODE_ARRAY,
    eKW_NODE_MAP,
    eKW_NODE_FUNCTION,
    eKW_NODE_OPERATION
};

/** A setting is written by clients; a result is delivered by the acquisition or by a rule. */
enum KW_OBJECT_TYPE : INT32
{
    eOBJECTTYPE_SETTING = 0,
    eOBJECTTYPE_RESULT = 1
};

/** Whether a property's value can be relied on. A write makes it valid; clearing invalid. */
enum KW_VALIDITY : INT32
{
    eKW_VALIDITY_INVALID = 0,
    eKW_VALIDITY_VALID = 1
};

/** What can be done with a node. The stricter of configuration, state and parents counts. */
enum KW_AVAILABILITY : INT32
{
    eAVAILABILITY_AVAILABLE = 0,
    eAVAILABILITY_READ_ONLY = 1,    ///< Shown, but client writes are refused.
    eAVAILABILITY_NOT_AVAILABLE = 2 ///< Neither shown nor writable.
};

/** Whether one value of an enumeration can be selected. */
enum KW_VALUE_STATE : INT32
{
    eVALUESTATE_SELECTABLE = 0,
    eVALUESTATE_LAST_RESORT = 1, ///< Selectable because nothing else is ("none").
    eVALUESTATE_NOT_SELECTABLE = 2
};

/** Which files carry a property: a combination of bits. */
enum KW_SAVE_RECALL : INT32
{
    eSAVERECALL_NONE = 0,     ///< In no file.
    eSAVERECALL_SETTINGS = 1, ///< Part of the user's settings: save, recall and preset.
    eSAVERECALL_SYSTEM = 2,   ///< State of the instrument: only shutdown, startup, factory preset.
    eSAVERECALL_ALL = 3
};

/** How Inc and Dec find the next value. */
enum E_STEPMODES : INT32
{
    eSTEPMODE_LINEAR = 0, ///< value ± n × step
    eSTEPMODE_FACTOR,     ///< value × or ÷ the step factor, n times
    eSTEPMODE_LADDER125,  ///< next 1-2-5 value of the decades, n times
    eSTEPMODE_LIST,       ///< next entry of the value list, n times
    eSTEPMODE_LADDER1245  ///< next 1-2-4-5 value of the decades, n times: vertical scales
};

/** What a step past a limit does. */
enum E_STEP_BEHAVIOUR : INT32
{
    eSTEP_BEHAVIOUR_LIMIT = 0, ///< Stops at the limit and answers code 1.
    eSTEP_BEHAVIOUR_WRAP,      ///< Goes on at the other limit.
    eSTEP_BEHAVIOUR_REFUSE     ///< Changes nothing and answers the limit's code.
};

/** How a display should write a number. Text in and out of the tree is always plain decimal. */
enum E_NUMBERFORMAT : INT32
{
    eNUMBERFORMAT_DECIMAL = 0,
    eNUMBERFORMAT_SCIENTIFIC,
    eNUMBERFORMAT_ENGINEERING,
    eNUMBERFORMAT_HEX,
    eNUMBERFORMAT_BINARY
};

/** Who asks for a write: remote control can lock the local user out. */
enum KW_CLIENT_ORIGIN : INT32
{
    eCLIENT_LOCAL = 0,
    eCLIENT_REMOTE = 1
};

/** Who may write. */
enum KW_CONTROL_MODE : INT32
{
    eCONTROL_LOCAL = 0,    ///< Everybody may write; the instrument is operated locally.
    eCONTROL_REMOTE,       ///< Everybody may write; remote control is active.
    eCONTROL_LOCAL_LOCKOUT ///< Only writes bracketed as remote are taken.
};

/** Events that drive an operation object. */
enum KW_OP_EVENT : INT32
{
    eKW_OP_EVENT_NONE = 0,
    eKW_OP_EVENT_START,
    eKW_OP_EVENT_ABORT
};

/** How an operation ended. */
enum KW_OP_RESULT : INT32
{
    eKW_OP_RESULT_NONE = 0, ///< Never run, or still running.
    eKW_OP_RESULT_SUCCESS,
    eKW_OP_RESULT_FAILURE,
    eKW_OP_RESULT_ABORTED
};
