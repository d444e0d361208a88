// SPDX-License-Identifier: MIT
#pragma once

#include "Streams/Stream.h"

#include <memory>

/** Makes spectra of records: magnitudes in dBV, of a Hann window over as many points as fit. */
class CDemonstrationSpectrum
{
public:
    static constexpr UINT32 kMostPoints = 4096; ///< of a record that are looked at

    explicit CDemonstrationSpectrum(IKWStream& stream);

    /** The spectrum of a channel's trace; none where the record has no samples of it. */
    void Publish(const CKWRecord& record, KW_ZEL_CHANNEL channel);

private:
    const std::unique_ptr<IKWStreamWriter> m_writer;
};
