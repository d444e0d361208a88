// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Record.h"

#include <QByteArray>
#include <vector>

/** What a WAV file does not say of its samples stands in its comment, as a document of JSON. */
struct t_SoundText
{
    bool isOurs = false;
    KW_RecordInfo info;
    std::vector<KW_TraceInfo> traces; ///< `scale` is that of full scale, which is 1 in a WAV file
};

QByteArray MakeSoundText(const t_SoundText& text);

/** False for what MakeSoundText does not make; `text` then does not count. */
bool ParseSoundText(const QByteArray& comment, t_SoundText& text);

/** The whole number of samples per second nearest to an interval; 0: none that WAV files have. */
int RateOf(double interval);
