// SPDX-License-Identifier: MIT
#pragma once

#include "Failure.h"
#include "WaveFile.h"

#include <QByteArray>
#include <vector>

constexpr UINT32 kLines = 8; ///< digital ones, D0 to D7, of a trace

/** A record on its way from a file. */
struct t_WaveDraft
{
    KW_RecordInfo info;
    std::vector<KW_TraceInfo> traces;            ///< counts are made from the samples
    std::vector<std::vector<std::byte>> samples; ///< of each trace

    /** A trace of such points. */
    template <class T>
    void Add(const KW_TraceInfo& trace, const std::vector<T>& points)
    {
        const auto* const bytes = reinterpret_cast<const std::byte*>(points.data());
        traces.push_back(trace);
        samples.emplace_back(bytes, bytes + points.size() * sizeof(T));
    }
    /** Fails when there is no room for it. */
    CKWRecord Make(const QString& fileName);
};

/** A file that can not be used: "file: text". */
CFailure BadWave(const QString& fileName, const QString& text);
/** The reason why a file can not be opened. */
CFailure UnreadableWave(const QString& fileName, const QString& cause);
CFailure UnwritableWave(const QString& fileName, const QString& cause);

/** What all traces with points have in common, where the format has one time for all of them. */
struct t_TimeBase
{
    std::vector<UINT32> traces; ///< those with points
    UINT32 count = 0;
    double interval = 1.0;
    double start = 0.0;
};
/** Fails where times or lengths differ, and without points. `sharesStart`: that too. */
t_TimeBase RequireTimeBase(const CKWRecord& record, const QString& fileName, bool sharesStart);

/** Physical values of a trace without its invalid points, which are NaN: of pairs the lower or the
    upper one. Not for digital lines. */
class CWaveValues
{
public:
    CWaveValues(const CKWRecord& record, UINT32 trace);
    double Get(UINT32 point, bool upper = false) const;

private:
    std::span<const std::byte> m_samples;
    KW_TraceInfo m_info;
};

CKWRecord ReadCsvWave(const QString& fileName, const t_WaveOptions& options, QStringList& notes);
void WriteCsvWave(const QString& fileName, const CKWRecord& record, QStringList& notes);

CKWRecord ReadSoundWave(const QString& fileName, QStringList& notes);
void WriteSoundWave(const QString& fileName, const CKWRecord& record, QStringList& notes);
