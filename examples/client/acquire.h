// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Acquisition.h"

#include <atomic>

/** Acquires a synthetic signal, as the settings ask for, until `isEnd`: what the thread of an
    instrument's driver does. */
void Acquire(IKWAcquisition& acquisition, const std::atomic<bool>& isEnd);
