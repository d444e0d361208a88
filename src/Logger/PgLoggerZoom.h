// SPDX-License-Identifier: MIT
#pragma once

#include "Logger/PgLoggerZoomBase.h"

class CPgLoggerCursor;
enum KW_ZEL_LOGGER_HORIZONTAL_SCALE : INT32;

/** Stretch that is shown enlarged. The user's scale or position ends the coupling to the cursor
    lines. */
class CPgLoggerZoom : public CPgLoggerZoomBase
{
public:
    t_Couplings Rules() const override;

    /** Led by the logger, which knows both. Keeps the scale finer than the diagram's, but for the
        finest there is. */
    void Follow(KW_ZEL_LOGGER_HORIZONTAL_SCALE ofDiagram, const CPgLoggerCursor& cursor);

private:
    void EndCoupling();
    void OfferScales(KW_ZEL_LOGGER_HORIZONTAL_SCALE ofDiagram);
};
