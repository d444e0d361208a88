// SPDX-License-Identifier: MIT
#include "WindowSpectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numeric>

namespace
{
using t_Complex = std::complex<double>;

constexpr double kPi = 3.14159265358979323846;
constexpr std::size_t kStepsPerBin = 16;
/** Below all that is shown; takes the place of the logarithm of 0. */
constexpr double kSilence = -400.0;

void SwapToBitReverse(std::vector<t_Complex>& values)
{
    for (std::size_t i = 1, reversed = 0; i < values.size(); ++i)
    {
        std::size_t bit = values.size() / 2;
        for (; (reversed & bit) != 0; bit /= 2)
        {
            reversed ^= bit;
        }
        reversed ^= bit;
        if (i < reversed)
        {
            std::swap(values[i], values[reversed]);
        }
    }
}

/** Discrete Fourier transform in place; the size is a power of two. */
void Transform(std::vector<t_Complex>& values)
{
    SwapToBitReverse(values);
    for (std::size_t half = 1; half < values.size(); half *= 2)
    {
        for (std::size_t k = 0; k < half; ++k)
        {
            const t_Complex turn =
                std::polar(1.0, -kPi * static_cast<double>(k) / static_cast<double>(half));
            for (std::size_t i = k; i < values.size(); i += 2 * half)
            {
                const t_Complex odd = turn * values[i + half];
                values[i + half] = values[i] - odd;
                values[i] += odd;
            }
        }
    }
}

std::size_t GetTransformSize(std::size_t length)
{
    std::size_t size = 1;
    while (size < length * kStepsPerBin)
    {
        size *= 2;
    }
    return size;
}

double GetSum(const std::vector<double>& weights)
{
    return std::accumulate(weights.begin(), weights.end(), 0.0);
}
} // namespace

bool CWindowSpectrum::HasGain(const std::vector<double>& weights)
{
    constexpr double kRoundingOfSums = 1e-12;
    return std::fabs(GetSum(weights)) > kRoundingOfSums * static_cast<double>(weights.size());
}

CWindowSpectrum::CWindowSpectrum(const std::vector<double>& weights)
{
    const auto length = static_cast<double>(weights.size());
    const double sum = GetSum(weights);
    const double squares = std::inner_product(weights.begin(), weights.end(), weights.begin(), 0.0);
    m_coherentGain = sum / length;
    m_noiseBandwidth = length * squares / (sum * sum);
    std::vector<t_Complex> values(weights.begin(), weights.end());
    values.resize(GetTransformSize(weights.size()));
    m_resolution = length / static_cast<double>(values.size());
    Transform(values);
    const double peak = std::abs(values.front());
    for (std::size_t i = 0; i <= values.size() / 2; ++i)
    {
        const double relative = std::abs(values[i]) / peak;
        m_levels.push_back(relative > 0 ? std::max(20.0 * std::log10(relative), kSilence)
                                        : kSilence);
    }
}

std::optional<double> CWindowSpectrum::GetHighestSideLobe() const
{
    constexpr double kNoRise = 1e-6;
    std::size_t edge = 0;
    while (edge + 1 < m_levels.size() && m_levels[edge + 1] <= m_levels[edge] + kNoRise)
    {
        ++edge;
    }
    if (edge + 1 >= m_levels.size())
    {
        return std::nullopt;
    }
    const auto top =
        std::max_element(m_levels.begin() + static_cast<std::ptrdiff_t>(edge), m_levels.end());
    if (top + 1 == m_levels.end())
    {
        return *top;
    }
    // The lobe's own top lies between the steps: that of the parabola through three of them.
    const double curvature = *(top - 1) - 2.0 * *top + *(top + 1);
    const double slope = 0.5 * (*(top + 1) - *(top - 1));
    return *top - 0.5 * slope * slope / curvature;
}
