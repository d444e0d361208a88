// SPDX-License-Identifier: MIT
#include "WaveFormats.h"

#ifdef ZELCTL_WITH_SNDFILE
#include "EnumText.h"
#include "WaveSoundText.h"

#include <QFile>
#include <QSaveFile>
#include <QtEndian>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <sndfile.h>

namespace
{
constexpr double kFullScale = 32768.0; ///< counts of 16 bits
constexpr sf_count_t kPiece = 65536;   ///< points at once

// What libsndfile calls for bytes; errors are those of the device, looked at later.
QFileDevice& DeviceOf(void* device)
{
    return *static_cast<QFileDevice*>(device);
}
sf_count_t GetLength(void* device)
{
    return DeviceOf(device).size();
}
sf_count_t Seek(sf_count_t offset, int whence, void* device)
{
    QFileDevice& file = DeviceOf(device);
    const sf_count_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? file.pos() : file.size();
    return file.seek(from + offset) ? file.pos() : -1;
}
sf_count_t Read(void* place, sf_count_t count, void* device)
{
    return std::max<sf_count_t>(DeviceOf(device).read(static_cast<char*>(place), count), 0);
}
sf_count_t Write(const void* place, sf_count_t count, void* device)
{
    return std::max<sf_count_t>(DeviceOf(device).write(static_cast<const char*>(place), count), 0);
}
sf_count_t Tell(void* device)
{
    return DeviceOf(device).pos();
}
SF_VIRTUAL_IO kDevice = {GetLength, Seek, Read, Write, Tell};

struct t_Closing
{
    void operator()(SNDFILE* sound) const { sf_close(sound); }
};
using t_Sound = std::unique_ptr<SNDFILE, t_Closing>;

/** Fails where the file ends before the samples that its head promises: the library reads what
    there is. Lengths that were never filled in, as of pipes, promise nothing. */
void RequireWhole(const QString& fileName, QFile& file)
{
    constexpr qint64 kFirstChunk = 12;
    constexpr qint64 kHead = 8;
    constexpr quint32 kUnknown = 0xFFFFFFFFU;
    if (!file.peek(4).startsWith("RIFF"))
    {
        return;
    }
    for (qint64 at = kFirstChunk; file.seek(at);)
    {
        const QByteArray head = file.read(kHead);
        if (head.size() < kHead)
        {
            break;
        }
        const auto length = qFromLittleEndian<quint32>(head.constData() + 4);
        if (length != kUnknown && at + kHead + length > file.size())
        {
            throw BadWave(fileName,
                          QStringLiteral("byte %1: the file is cut off or damaged: a part of %2 "
                                         "bytes begins there, and %3 are left")
                              .arg(at)
                              .arg(length)
                              .arg(file.size() - at - kHead));
        }
        if (length == kUnknown || head.startsWith("data"))
        {
            break;
        }
        at += kHead + length + length % 2;
    }
    file.seek(0);
}

/** How samples are stored, as far as records can hold them. */
enum class eCODING
{
    Counts, ///< up to 16 bits
    Floats,
    Rounded, ///< more bits than a float has
    Other
};

eCODING CodingOf(int format)
{
    const int kind = format & SF_FORMAT_TYPEMASK;
    if (kind != SF_FORMAT_WAV && kind != SF_FORMAT_WAVEX && kind != SF_FORMAT_RF64)
    {
        return eCODING::Other;
    }
    switch (format & SF_FORMAT_SUBMASK)
    {
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_16:
        return eCODING::Counts;
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_FLOAT:
        return eCODING::Floats;
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_DOUBLE:
        return eCODING::Rounded;
    default:
        return eCODING::Other;
    }
}

sf_count_t ReadFrames(SNDFILE* sound, INT16* place, sf_count_t frames)
{
    return sf_readf_short(sound, place, frames);
}
sf_count_t ReadFrames(SNDFILE* sound, float* place, sf_count_t frames)
{
    return sf_readf_float(sound, place, frames);
}

/** Reads what is there, and takes memory for no more. */
template <class T>
std::vector<std::vector<T>> ReadChannels(const QString& fileName, SNDFILE* sound,
                                         const SF_INFO& info)
{
    const auto channels = static_cast<std::size_t>(info.channels);
    std::vector<std::vector<T>> points(channels);
    std::vector<T> piece(static_cast<std::size_t>(kPiece) * channels);
    for (sf_count_t got = kPiece; got == kPiece;)
    {
        got = ReadFrames(sound, piece.data(), kPiece);
        if ((points[0].size() + static_cast<std::size_t>(got)) * channels * sizeof(T) >
            eKW_RECORD_BYTES)
        {
            throw BadWave(fileName, QStringLiteral("it has more samples than a record may have"));
        }
        for (std::size_t i = 0; i < static_cast<std::size_t>(got); ++i)
        {
            for (std::size_t channel = 0; channel < channels; ++channel)
            {
                points[channel].push_back(piece[i * channels + channel]);
            }
        }
    }
    if (static_cast<sf_count_t>(points[0].size()) != info.frames)
    {
        throw BadWave(fileName, QStringLiteral("the file is damaged: it has %1 of %2 points")
                                    .arg(points[0].size())
                                    .arg(info.frames));
    }
    return points;
}

/** What the file says of its traces: who wrote them here left a text, others have numbers from −1
    to 1. */
t_SoundText DescribeSound(const QString& fileName, SNDFILE* sound, const SF_INFO& info,
                          QStringList& notes)
{
    t_SoundText text;
    const auto channels = static_cast<std::size_t>(info.channels);
    const char* const comment = sf_get_string(sound, SF_STR_COMMENT);
    bool isOurs = comment != nullptr && ParseSoundText(QByteArray(comment), text);
    if (isOurs && text.traces.size() != channels)
    {
        notes << QStringLiteral("%1: its comment tells of %2 traces, and there are %3; it is not "
                                "heeded")
                     .arg(fileName)
                     .arg(text.traces.size())
                     .arg(channels);
        isOurs = false;
    }
    if (!isOurs)
    {
        text = {};
        text.traces.resize(channels);
        for (std::size_t i = 0; i < channels; ++i)
        {
            text.traces[i].unit = eKW_UNIT_NONE;
            text.traces[i].channel =
                i <= eKW_ZEL_CHANNEL_C4 ? static_cast<KW_ZEL_CHANNEL>(i) : eKW_ZEL_CHANNEL_NONE;
        }
    }
    text.isOurs = isOurs;
    for (KW_TraceInfo& trace : text.traces)
    {
        // Who changed the rate of the file did not change the comment.
        if (!isOurs || RateOf(trace.interval) != info.samplerate)
        {
            trace.interval = 1.0 / info.samplerate;
        }
    }
    return text;
}

CKWRecord MakeRecord(const QString& fileName, SNDFILE* sound, const SF_INFO& info,
                     QStringList& notes)
{
    t_SoundText text = DescribeSound(fileName, sound, info, notes);
    t_WaveDraft draft;
    draft.info = text.info;
    const auto addFloats = [&](KW_TraceInfo trace, const std::vector<float>& points)
    {
        trace.format = eKW_SAMPLES_FLOAT;
        draft.Add(trace, points);
    };
    if (CodingOf(info.format) != eCODING::Counts)
    {
        const auto channels = ReadChannels<float>(fileName, sound, info);
        for (std::size_t i = 0; i < channels.size(); ++i)
        {
            addFloats(text.traces[i], channels[i]);
        }
        return draft.Make(fileName);
    }
    const auto channels = ReadChannels<INT16>(fileName, sound, info);
    for (std::size_t i = 0; i < channels.size(); ++i)
    {
        KW_TraceInfo trace = text.traces[i];
        constexpr INT16 kInvalid = std::numeric_limits<INT16>::min();
        if (!text.isOurs &&
            std::find(channels[i].begin(), channels[i].end(), kInvalid) != channels[i].end())
        {
            // Elsewhere the lowest count is one as all others.
            std::vector<float> points(channels[i].size());
            std::transform(channels[i].begin(), channels[i].end(), points.begin(),
                           [](INT16 count) { return static_cast<float>(count / kFullScale); });
            addFloats(trace, points);
            continue;
        }
        trace.format = eKW_SAMPLES_INT16;
        trace.scale /= kFullScale;
        draft.Add(trace, channels[i]);
    }
    return draft.Make(fileName);
}

/** Points of a trace for a file of floats, and what one of them is. */
class CSoundPoints
{
public:
    CSoundPoints(const CKWRecord& record, UINT32 trace)
        : m_samples(record.GetSamples(trace)),
          m_isFloat(record.GetTrace(trace).format == eKW_SAMPLES_FLOAT)
    {
    }
    float GetFloat(UINT32 point) const
    {
        if (m_isFloat)
        {
            float sample = 0;
            std::memcpy(&sample, m_samples.data() + point * sizeof(sample), sizeof(sample));
            return sample;
        }
        const INT16 count = GetCount(point);
        return count == std::numeric_limits<INT16>::min() ? std::numeric_limits<float>::quiet_NaN()
                                                          : static_cast<float>(count / kFullScale);
    }
    INT16 GetCount(UINT32 point) const
    {
        INT16 sample = 0;
        std::memcpy(&sample, m_samples.data() + point * sizeof(sample), sizeof(sample));
        return sample;
    }

private:
    std::span<const std::byte> m_samples;
    bool m_isFloat;
};

sf_count_t WriteFrames(SNDFILE* sound, const std::vector<float>& piece, sf_count_t frames)
{
    return sf_writef_float(sound, piece.data(), frames);
}
sf_count_t WriteFrames(SNDFILE* sound, const std::vector<INT16>& piece, sf_count_t frames)
{
    return sf_writef_short(sound, piece.data(), frames);
}

template <class T>
bool WritePoints(SNDFILE* sound, const std::vector<CSoundPoints>& traces, UINT32 count,
                 T (CSoundPoints::*get)(UINT32) const)
{
    std::vector<T> piece;
    for (UINT32 point = 0; point < count; ++point)
    {
        for (const CSoundPoints& trace : traces)
        {
            piece.push_back((trace.*get)(point));
        }
        const auto frames = static_cast<sf_count_t>(piece.size() / traces.size());
        if (frames == kPiece || point + 1 == count)
        {
            if (WriteFrames(sound, piece, frames) != frames)
            {
                return false;
            }
            piece.clear();
        }
    }
    return true;
}

/** What is written to, whole or not at all. */
class CSoundFile
{
public:
    CSoundFile(const QString& fileName, SF_INFO info, const QByteArray& comment)
        : m_fileName(fileName), m_file(fileName)
    {
        if (!m_file.open(QIODevice::WriteOnly))
        {
            throw UnwritableWave(fileName, m_file.errorString());
        }
        m_sound.reset(sf_open_virtual(&kDevice, SFM_WRITE, &info, &m_file));
        if (m_sound == nullptr)
        {
            throw UnwritableWave(fileName, QString::fromUtf8(sf_strerror(nullptr)));
        }
        // It holds the time of day: equal records make equal files.
        sf_command(m_sound.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
        sf_set_string(m_sound.get(), SF_STR_COMMENT, comment.constData());
    }
    SNDFILE* Get() const { return m_sound.get(); }
    void Finish(bool isWritten)
    {
        m_sound.reset();
        if (!isWritten || !m_file.commit())
        {
            throw UnwritableWave(m_fileName, m_file.errorString());
        }
    }

private:
    QString m_fileName;
    QSaveFile m_file;
    t_Sound m_sound;
};

void RequireSoundFormats(const CKWRecord& record, const t_TimeBase& base, const QString& fileName)
{
    for (const UINT32 trace : base.traces)
    {
        const KW_SAMPLE_FORMAT format = record.GetTrace(trace).format;
        if (format == eKW_SAMPLES_MINMAX || format == eKW_SAMPLES_LINES)
        {
            throw BadWave(fileName, QStringLiteral("%1 has %2, which a WAV file does not hold; "
                                                   "choose others by --channel, or write a .csv "
                                                   "or .rec")
                                        .arg(GetTraceName(record, trace),
                                             format == eKW_SAMPLES_LINES
                                                 ? QStringLiteral("digital lines")
                                                 : QStringLiteral("pairs of extremes")));
        }
    }
}

int RequireRate(const t_TimeBase& base, const QString& fileName, QStringList& notes)
{
    constexpr double kRounding = 1e-9;
    const int rate = RateOf(base.interval);
    const QString rateText = KW_FormatNumber(1.0 / base.interval, eKW_UNIT_FREQ_HZ);
    if (rate == 0)
    {
        throw BadWave(fileName, QStringLiteral("a WAV file has 1 to 2147483647 samples per second, "
                                               "not %1; write a .csv or .rec")
                                    .arg(rateText));
    }
    if (std::abs(rate * base.interval - 1.0) > kRounding)
    {
        notes << QStringLiteral("%1: %2 is no whole number of samples per second: other programs "
                                "take it for %3")
                     .arg(fileName, rateText)
                     .arg(rate);
    }
    return rate;
}
} // namespace

CKWRecord ReadSoundWave(const QString& fileName, QStringList& notes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
    {
        throw UnreadableWave(fileName, file.errorString());
    }
    RequireWhole(fileName, file);
    SF_INFO info{};
    const t_Sound sound(sf_open_virtual(&kDevice, SFM_READ, &info, &file));
    if (sound == nullptr)
    {
        throw BadWave(fileName, QStringLiteral("this can not be read as a WAV file: %1")
                                    .arg(QString::fromUtf8(sf_strerror(nullptr)).trimmed()));
    }
    const eCODING coding = CodingOf(info.format);
    if (coding == eCODING::Other)
    {
        throw BadWave(fileName,
                      QStringLiteral("its samples are compressed or of an unusual kind; "
                                     "PCM of 8 to 32 bits, float and double can be read"));
    }
    if (coding == eCODING::Rounded)
    {
        notes << QStringLiteral("%1: samples are rounded to the 24 bits of a float").arg(fileName);
    }
    if (info.channels > static_cast<int>(eKW_RECORD_TRACES) || info.channels < 1 ||
        info.samplerate < 1 || info.frames < 1)
    {
        throw BadWave(fileName, QStringLiteral("%1 channels of %2 points at %3 samples per second "
                                               "make no record; it has 1 to %4 traces with points")
                                    .arg(info.channels)
                                    .arg(info.frames)
                                    .arg(info.samplerate)
                                    .arg(UINT32{eKW_RECORD_TRACES}));
    }
    return MakeRecord(fileName, sound.get(), info, notes);
}

void WriteSoundWave(const QString& fileName, const CKWRecord& record, QStringList& notes)
{
    const t_TimeBase base = RequireTimeBase(record, fileName, false);
    RequireSoundFormats(record, base, fileName);
    t_SoundText text;
    text.info = record.GetInfo();
    std::vector<CSoundPoints> points;
    bool hasFloats = false;
    for (const UINT32 trace : base.traces)
    {
        KW_TraceInfo info = record.GetTrace(trace);
        hasFloats = hasFloats || info.format == eKW_SAMPLES_FLOAT;
        // A comment holds when another program changes how samples are stored.
        info.scale *= info.format == eKW_SAMPLES_INT16 ? kFullScale : 1.0;
        text.traces.push_back(info);
        points.emplace_back(record, trace);
    }
    SF_INFO info{};
    info.samplerate = RequireRate(base, fileName, notes);
    info.channels = static_cast<int>(base.traces.size());
    info.format = SF_FORMAT_WAV | (hasFloats ? SF_FORMAT_FLOAT : SF_FORMAT_PCM_16);
    CSoundFile file(fileName, info, MakeSoundText(text));
    file.Finish(hasFloats ? WritePoints(file.Get(), points, base.count, &CSoundPoints::GetFloat)
                          : WritePoints(file.Get(), points, base.count, &CSoundPoints::GetCount));
}
#else
CKWRecord ReadSoundWave(const QString& fileName, QStringList&)
{
    throw UnreadableWave(fileName, QStringLiteral("this zelctl was built without libsndfile"));
}

void WriteSoundWave(const QString& fileName, const CKWRecord&, QStringList&)
{
    throw UnwritableWave(fileName, QStringLiteral("this zelctl was built without libsndfile"));
}
#endif
