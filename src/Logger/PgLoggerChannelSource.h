// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerChannelSourceBase.h"

/** What a logger channel records. An item of another function than the source is dropped. */
class CPgLoggerChannelSource : public CPgLoggerChannelSourceBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;

private:
    bool FitsSource(const CDbPropertyGroup& item) const;
};
