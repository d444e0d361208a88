// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerChannelScreenLayoutBase.h"

/** How the curve of a logger channel is drawn. Ends set by the user end the automatic range. The
    upper end stays above the lower one, and both above zero on a logarithmic axis: the end that
    was not written gives way, as far as it can. */
class CPgLoggerChannelScreenLayout : public CPgLoggerChannelScreenLayoutBase
{
public:
    KW_ACCEPTANCE OnPropertySet(const CDbPropBase* property) override;
    void UpdateGroup() override;

    /** The user's range from `bottom` to `top`, which is above it. */
    KW_ACCEPTANCE Show(double bottom, double top);

private:
    bool IsLogarithmic() const;
    void UpdateLimits();
    KW_ACCEPTANCE KeepApart(const CDbPropBase* written);
};
