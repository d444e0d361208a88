// SPDX-License-Identifier: MIT
#pragma once

#include "Channels/PgVerticalBase.h"

class CPgAnalogSignalStream;

/**
 * The analog inputs and the sample streams behind them. There is a converter for each input; the
 * higher sample-rate modes let two or four of them sample one channel in turn, so the channels of
 * such a group share one stream, which the lowest of them that is on has.
 */
class CPgVertical : public CPgVerticalBase
{
public:
    t_Couplings Rules() const override;

private:
    void ResetDeskew();
    /** Follows what is on and the sample-rate mode; streams that carry nothing show the channel of
        their place, at rate 0. */
    void UpdateStreams();
    void NameDroppedChannels();
    /** The channel of a group of converters, −1 when none of its channels is on. */
    INT32 ChannelOfGroup(INT32 first, INT32 size) const;
    /** `channel` −1 for a stream that carries nothing; `parts` converters sample it in turn. */
    void UpdateStream(INT32 index, INT32 channel, INT32 parts);
    /** `stream` −1 for a channel that no stream carries. */
    void UpdateMapping(INT32 channel, INT32 stream, INT32 parts);
};
