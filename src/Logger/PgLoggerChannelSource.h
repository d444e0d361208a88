// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerChannelSourceBase.h"

/** What a logger channel records. An item of another function than the source is dropped. */
class CPgLoggerChannelSource : public CPgLoggerChannelSourceBase
{
public:
    t_Couplings Rules() const override;

private:
    void DropItemOfOtherSource();
    bool FitsSource(const CDbPropertyGroup& item) const;
};
