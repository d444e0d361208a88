// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

/** What a window does to a spectrum, found from its weights. */
class CWindowSpectrum
{
public:
    /** Transforms the weights, continued with zeros. At least 2 weights with a sum that is not 0
        (HasGain tells before). */
    explicit CWindowSpectrum(const std::vector<double>& weights);
    static bool HasGain(const std::vector<double>& weights);

    /** Mean of the weights: what a sine at the middle of a bin is multiplied with. */
    double GetCoherentGain() const { return m_coherentGain; }
    /** Equivalent noise bandwidth in bins: N·Σw² / (Σw)². */
    double GetNoiseBandwidth() const { return m_noiseBandwidth; }
    /** Highest lobe beside the main one, in dB against its peak; none where there is only one. */
    std::optional<double> GetHighestSideLobe() const;

    /** Bins per step of GetLevels. */
    double GetResolution() const { return m_resolution; }
    /** Magnitude in dB against the peak, from the peak (index 0) to half the sample rate. */
    const std::vector<double>& GetLevels() const { return m_levels; }

private:
    double m_coherentGain;
    double m_noiseBandwidth;
    double m_resolution;
    std::vector<double> m_levels;
};
