// SPDX-License-Identifier: MIT
#pragma once

#include "Buses/PgSignalTranslationEnumValuesBase.h"

#include <QByteArray>
#include <utility>

/** Text of a raw value: the frames that show it follow it. */
class CPgSignalTranslationEnumValues : public CPgSignalTranslationEnumValuesBase
{
public:
    t_Couplings Rules() const override;

    /** Raw value and text. */
    std::pair<UINT32, QByteArray> Entry() const;

private:
    void TellList();
};
