// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsChannels.h"
#include "KWEnumerationsUnits.h"

#include <QString>

/** The unit that a text such as "mV" means, and what one of it is in that unit; false and both as
    they were for what is none. */
bool FindWaveUnit(const QString& text, KW_UNIT& unit, double& factor);

/** The channel of a name; eKW_ZEL_CHANNEL_NONE for what is none. */
KW_ZEL_CHANNEL WaveChannelOf(const QString& name);
