// SPDX-License-Identifier: MIT
#pragma once

#include "KWEnumerationsLogger.h"
#include "Masks/MaskTest.h"
#include "Streams/Acquisition.h"

#include <array>
#include <memory>

class IKWFunctionMaskChannelSetup;
class IKWFunctionZEL;

/** Masks in the tree (Mask), and the test that it runs. */

/** Replaces the mask of a channel, as one step for undo; one without points removes it. Any thread;
    takes the tree's lock.
    @return eKW_ACC_OK, eKW_ACC_NO_WRITE_ACCESS, eKW_ACC_NOT_AVAILABLE, eKW_ACC_DETACHED, or a code
   of KW_CheckMask; then nothing changes */
KW_EXPORT KW_ACCEPTANCE KW_PutMask(IKWFunctionMaskChannelSetup& setup, const KW_Mask& mask);

/** Gives the mask of a channel as it was made or loaded, neither shifted nor stretched. Any thread;
    takes the tree's lock. */
KW_EXPORT KW_Mask KW_GetMask(const IKWFunctionMaskChannelSetup& setup);

/** The mask of a channel where it stands now: shifted and stretched as MaskSettings says. */
struct KW_PlacedMask
{
    /** Its frame: the picture that it stands in. Locked to the screen this is the channel's present
        picture, else that in which it has its levels and times; KW_MoveMaskToFrame brings it into
        another one to be drawn. */
    KW_Mask mask;
    bool isTested = false;  ///< part of the test, and there
    bool isVisible = false; ///< to be drawn
};

/** The masks of all channels at one moment. Stays as it is. */
struct KW_MaskSet
{
    UINT64 number = 0;                       ///< rises whenever one of them changes
    std::array<KW_PlacedMask, 4> channels{}; ///< C1 to C4
};

/** What a client is to do because of violations. */
struct KW_MaskEvent
{
    /** Mask/ViolationAction of violations since the last delivery; none when there were none. What
        stops the acquisition is done already. */
    KW_ZEL_MASK_VIOLATION_ACTIONS action = eKW_ZEL_MASK_VIOLATION_ACTIONS_NONE;
    UINT64 violations = 0; ///< acquisitions that failed since the last delivery
    UINT64 record = 0;     ///< number of the last one; a draft's is that of the published record
};

/**
 * The mask test of the tree: tests records while Mask/State is running, counts, and ends as the
 * settings say. A record passes when each channel that is part of the test passes; one without a
 * mask or a trace does.
 */
class KW_EXPORT IKWMaskRun : public IKWRecordTest
{
public:
    ~IKWMaskRun() override;

    /**
     * For the thread that acquires, or any one thread. Compares some numbers while settings stand;
     * takes the lock of the tree and memory when they changed. After the last acquisition that is
     * to be tested, and after a violation that stops the acquisition, no other one is.
     *
     * @return eKW_MASK_NOT_TESTED while no test runs, and for the record at which changed settings
     *         are noticed, unless its `settingsCounter` says that it was armed by them
     */
    KW_MASK_RESULT Test(const CKWRecord& draft) override = 0;

    /**
     * Delivers to the tree, in one go: counts, failure rate, elapsed time, what each channel last
     * violated, the end of the test, and the stop of the acquisition. Not for the thread that
     * acquires: it takes the tree's lock. One thread at a time, at the rate of a display; the
     * longest time of a test is as exact as that.
     */
    virtual KW_MaskEvent Deliver() = 0;

    /** Masks to be drawn, never null; another one only when something changed. One thread at a
        time; takes the tree's lock then. */
    virtual std::shared_ptr<const KW_MaskSet> GetMasks() = 0;
};

/** A test that goes on with the counts of the tree. While it lives, CreateMask uses what the
    acquisition shows; that may be null. Keeps tree and acquisition alive. Null without a root. */
KW_EXPORT std::shared_ptr<IKWMaskRun>
KW_MakeMaskRun(std::shared_ptr<IKWFunctionZEL> root,
               std::shared_ptr<IKWAcquisition> acquisition = nullptr);
