// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgUARTBusSettingsBase.h"

/** UART decoder: the bit rate follows its usual values, the word that ends a frame has as many bits
    as a word, and what the frame mode does not use is not available. */
class CPgUARTBusSettings : public CPgUARTBusSettingsBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;
    std::vector<t_Twins> GetTwins() const override;

    /** Data bits of a word. */
    INT32 WordLength() const;

private:
    KW_ACCEPTANCE Follow(const CDbPropBase* written);
};
