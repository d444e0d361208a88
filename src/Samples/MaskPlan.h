// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsLogger.h"
#include "Masks/MaskTree.h"

class CDbPgRoot;

namespace NSamples
{
constexpr INT32 kMaskChannels = 4;

/** All settings that the mask test goes by, as numbers that are quick to compare. */
struct t_MaskValues
{
    struct t_Channel
    {
        UINT64 checksum = 0; ///< of the mask
        bool isEnabled = false;
        bool isVisible = false;
        KW_MaskFrame frame; ///< of the channel on the screen
        bool operator==(const t_Channel& other) const = default;
    };
    std::array<t_Channel, kMaskChannels> channels;
    bool isLocked = false;
    double positionY = 0.0;
    double stretchY = 1.0;
    bool isRunning = false;
    UINT64 run = 0;   ///< of the scope
    UINT64 begin = 0; ///< rises with each start of the test and each clearing of its counts
    UINT32 maximum = 0;
    UINT32 stopAfter = 0;
    KW_ZEL_MASK_VIOLATION_ACTIONS action = eKW_ZEL_MASK_VIOLATION_ACTIONS_NONE;

    bool operator==(const t_MaskValues& other) const = default;
    bool HasSamePlaces(const t_MaskValues& other) const
    {
        return channels == other.channels && isLocked == other.isLocked &&
               positionY == other.positionY && stretchY == other.stretchY;
    }
};

/** Of one moment under the lock; without it numbers of a write that is under way may be mixed.
   Never blocks, takes no memory. */
t_MaskValues ReadMaskValues(const CDbPgRoot& root);

/** Those masks where they stand by `values`: under the lock. */
std::array<KW_PlacedMask, kMaskChannels> ReadPlacedMasks(const CDbPgRoot& root,
                                                         const t_MaskValues& values);
} // namespace NSamples
