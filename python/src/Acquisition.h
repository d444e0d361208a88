// SPDX-License-Identifier: MIT
#pragma once

#include "Shared.h"

#include "Masks/MaskTree.h"
#include "Streams/Acquisition.h"

/** A reader of a stream; for one thread at a time. */
struct t_Reader
{
    std::unique_ptr<IKWStreamReader> reader;
    bool isInUse = false;

    /** Throws where another thread waits with it. */
    IKWStreamReader& Get()
    {
        const CInUse check(isInUse);
        return *reader;
    }
    /** As IKWStreamReader::Wait, interrupted by signals. */
    bool Wait(std::optional<double> seconds)
    {
        const CInUse waiting(isInUse);
        double left = seconds.value_or(0.0) * 1e3;
        bool isNew = reader->HasNew();
        while (!isNew && (!seconds || left > 0.0))
        {
            const INT32 slice = !seconds || left > kSlice ? kSlice : static_cast<INT32>(left) + 1;
            isNew = Released([&] { return reader->Wait(slice); });
            left -= slice;
            if (PyErr_CheckSignals() != 0)
            {
                throw py::error_already_set();
            }
        }
        return isNew;
    }

    static constexpr INT32 kSlice = 50; ///< ms until a signal is seen
};

/** The mask test of the tree. What it keeps of the tree is let go without Python's lock. */
struct t_MaskRun
{
    std::shared_ptr<IKWMaskRun> run;
    bool isTesting = false;
    bool isDelivering = false;

    explicit t_MaskRun(std::shared_ptr<IKWMaskRun> made) : run(std::move(made)) {}
    t_MaskRun(const t_MaskRun&) = delete;
    t_MaskRun& operator=(const t_MaskRun&) = delete;
    ~t_MaskRun() { LetGoUnlessEnding(run); }
};

/** A stream that follows the tree, likewise. */
struct t_Acquisition
{
    std::shared_ptr<IKWAcquisition> acquisition;
    std::shared_ptr<t_MaskRun> test; ///< null: none
    bool isAcquiring = false;
    bool isDelivering = false;

    explicit t_Acquisition(std::shared_ptr<IKWAcquisition> made) : acquisition(std::move(made)) {}
    t_Acquisition(const t_Acquisition&) = delete;
    t_Acquisition& operator=(const t_Acquisition&) = delete;
    ~t_Acquisition();
};
