// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerChannelScreenLayoutBase.h"

/** How the curve of a logger channel is drawn. Ends set by the user end the automatic range. The
    upper end stays above the lower one, and both above zero on a logarithmic axis: the end that
    was not written gives way, as far as it can. */
class CPgLoggerChannelScreenLayout : public CPgLoggerChannelScreenLayoutBase
{
public:
    t_Couplings Rules() const override;

    /** The user's range from `bottom` to `top`, which is above it; eKW_ACC_WARNING where a limit
        keeps an end back. */
    KW_ACCEPTANCE Show(double bottom, double top);

private:
    bool IsLogarithmic() const;
    void SelectUserRange();
    void UpdateLimits();
    void KeepApart(const CDbPropBase* written);
};
