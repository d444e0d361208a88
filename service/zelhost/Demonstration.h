// SPDX-License-Identifier: MIT
#pragma once

#include "Masks/MaskTree.h"
#include "Mathematics/MathematicsTree.h"
#include "Streams/Acquisition.h"

#include <atomic>
#include <memory>
#include <thread>

/**
 * Made-up signals where there is no instrument: acquired and delivered as the tree's settings say,
 * twenty times a second, on two threads. With them come a spectrum of the source that the settings
 * name, and the test of masks.
 */
class CDemonstration
{
public:
    explicit CDemonstration(const std::shared_ptr<IKWFunctionZEL>& root);
    ~CDemonstration();
    CDemonstration(const CDemonstration&) = delete;
    CDemonstration& operator=(const CDemonstration&) = delete;

    /** Null where there was no memory. */
    std::shared_ptr<IKWAcquisition> GetAcquisition() const { return m_acquisition; }
    /** As KW_ServiceOptions has them. */
    std::shared_ptr<IKWStream> GetSpectra() const { return m_spectra; }

private:
    void Acquire();
    void Deliver();

    const std::shared_ptr<IKWFunctionZEL> m_root;
    const std::shared_ptr<IKWAcquisition> m_acquisition;
    const std::shared_ptr<IKWStream> m_spectra;
    const std::shared_ptr<IKWMaskRun> m_masks;
    const std::shared_ptr<IKWMathematicsCurve> m_mathematics;
    std::atomic<bool> m_isEnd{false};
    std::thread m_acquiring;
    std::thread m_delivering;
};
