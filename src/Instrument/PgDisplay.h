// SPDX-License-Identifier: MIT
#pragma once

#include "Instrument/PgDisplayBase.h"

/** Display: the language is one of the map, or the built-in one. */
class CPgDisplay : public CPgDisplayBase
{
public:
    t_Couplings Rules() const override;

private:
    void RefuseForeignLanguage();
};
