// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSerialBusBase.h"

class CDbPgArrayBase;

/** Serial bus: knows what belongs to the present protocol. */
class CPgSerialBus : public CPgSerialBusBase
{
public:
    KW_ACCEPTANCE OnFunction(const CDbFunction* function) override;
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;

    /** What the table lists: decoded frames of the present protocol; words of a UART that knows no
        frames. */
    CDbPgArrayBase* PresentFrames() const;
    /** Frames of a protocol came or went. */
    void OnFramesChanged(const CDbPropertyGroup& results) const;
    /** Removes the decoded frames of all protocols and their summary. */
    void ClearResults();

private:
    CDbPropertyGroup* OfProtocol(INT32 protocol, const char* what) const;
};
