// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsChannels.h"
#include "Streams/Record.h"

#include <memory>

/** Gives traces to make masks of; whoever acquires implements it. Callable from any thread, without
    the tree's lock. */
class IMaskSource
{
public:
    virtual ~IMaskSource() = default;
    /** The record that is shown and the place of the channel's trace in it; none when there is no
        such trace. */
    virtual CKWRecord GetShown(KW_ZEL_CHANNEL channel, UINT32& trace) = 0;
};

/** Makes masks of such traces. */
class IMaskMaker
{
public:
    virtual ~IMaskMaker() = default;
    /** None any more when the source goes. */
    virtual void SetSource(const std::weak_ptr<IMaskSource>& source) = 0;
};
