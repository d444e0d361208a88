// SPDX-License-Identifier: MIT
#pragma once

#include "CommonDatabase/Properties/DbPropEnum.h"
#include "CommonDatabase/Properties/DbPropNum.h"
#include "CommonDatabase/Properties/DbPropText.h"
#include "LabelList/LabelBuses.h"
#include "LabelList/LabelListDecoder.h"

#include <optional>

class CDbPropertyGroup;

/** What a bus, its label list and its decoded frames have to do with each other. Everything here
    runs under the tree's lock. */
namespace NRules
{
/** What a label is found by: the length of an identifier in bits, and the identifier. */
struct t_FrameKey
{
    UINT32 length;
    UINT32 identifier;
};

/** A bus whose frames can have labels: the settings of a protocol, which hold the list. */
class ILabelledBus
{
public:
    virtual ~ILabelledBus() = default;
    virtual KW_ZEL_SERIALBUS_PROTOCOL Protocol() const = 0;
    /** Bits of the longest payload that a frame with an identifier of that length has now. */
    virtual INT32 PayloadBits(UINT32 identifierLength) const = 0;
    /** Bits of what the bytes of a payload are to this bus. */
    UINT32 Unit() const { return NLabelBuses::Of(Protocol()).unit; }
};

/** A label list, as what is in it and what it names knows it. */
class ILabelList
{
public:
    virtual ~ILabelList() = default;
    /** The settings that the list belongs to. */
    virtual const ILabelledBus& Bus() const = 0;
    /** The label that matches a frame, null for none; good until the list changes. A list that is
        off has none. The first call after a change compiles the list, later ones look up. */
    virtual const CLabelListDecoder::t_Message* FindLabel(const t_FrameKey& key) = 0;
    /** Something in the list is another now. */
    virtual void CountChange() = 0;
    /** Switches labels off and on again, so that each frame has one at most. `written` gives way to
        those that have its identifier. */
    virtual void KeepApart(const CDbPropertyGroup* written) = 0;
    /** The labels, or payloads of the bus, are others now. */
    virtual void FitToBus() = 0;
};

/** A label, as its signals know it. */
class ILabel
{
public:
    virtual ~ILabel() = default;
    /** Bits that signals can lie in. */
    virtual INT32 PayloadBits() const = 0;
};

/** The list that a label, a signal or a value's text is in. */
ILabelList& LabelListAbove(const CDbPropertyGroup& part);

/** Lets the length of an identifier be one that the bus has; the usual one is the default. */
void DeclareLengths(CDbPropNum<UINT32>& length, const ILabelledBus& bus);

/** Bits of the longest payload of all that frames of a bus can have. */
INT32 LongestPayload(const ILabelledBus& bus);

/** The key of an identifier; none while that is not valid. */
std::optional<t_FrameKey> KeyOf(UINT32 length, const CDbPropNum<UINT32>& identifier);
/** The same with the figure of a type for the length. */
std::optional<t_FrameKey> KeyOf(const CDbPropEnumIntAccess& type,
                                const CDbPropNum<UINT32>& identifier);

/** Results of a frame that its label gives it. */
struct t_FrameTexts
{
    CDbPropString& label;
    CDbPropString& signals;
};

/** Names a frame and writes the values of its signals, which are empty and invalid where there are
    none. A frame without a key has no label. */
void NameFrame(ILabelList& list, const std::optional<t_FrameKey>& key,
               const CDbPropBitPattern& data, const t_FrameTexts& texts);
} // namespace NRules
