// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/LabelRules.h"
#include "Buses/PgSerialBusLabelItemBase.h"

struct KW_LabelEntry;

/** Label of one frame: its identifier has a length that the bus knows and fits it, its payload is
    not longer than the bus has, and its signals lie within the payload. Another label with the same
    identifier takes turns with it (CPgLabelListSettings). */
class CPgSerialBusLabelItem : public CPgSerialBusLabelItemBase, public NRules::ILabel
{
public:
    t_Couplings Rules() const override;

    NRules::t_FrameKey Key() const;
    bool IsOn() const;
    /** Whether the user has switched it on, whoever else has the identifier. */
    bool IsWanted() const;
    /** Whether no other label has the identifier. */
    void LetMatch(bool isFree);
    INT32 PayloadBits() const override;
    /** With its signals, in their order in the tree. */
    KW_LabelEntry Message() const;
    /** The same as it was given, whatever the bus lets it be now; without signals that lie in no
        such payload. */
    KW_LabelEntry GivenMessage() const;
    /** Whether a CAN frame with so many bytes can only be one of CAN FD. */
    static bool IsFd(UINT32 payloadLength);

private:
    KW_LabelEntry MessageOf(UINT32 payloadLength) const;
    const NRules::ILabelledBus& Bus() const;
    /** Declares the lengths of the bus: a label never changes its bus. */
    void TakeLengthsOfBus();
    void LimitIdentifier();
    void LimitPayload();
    void FitSignals();
    KW_ACCEPTANCE KeepApart();
    void TellList();
};
