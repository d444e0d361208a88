// SPDX-License-Identifier: MIT
#pragma once

#include "JsonWaveWish.h"
#include "Streams/Acquisition.h"

#include <memory>
#include <vector>

class CJsonWriter;
class IKWFunctionRootBase;
class IKWFunctionZEL;
class IKWMaskRun;
class IKWMathematicsCurve;
struct KW_MaskSet;

/** Where pictures come from; either may be null. */
struct t_WaveSources
{
    std::shared_ptr<IKWAcquisition> acquisition;
    std::shared_ptr<IKWStream> spectra; ///< interval and start of whose traces are Hz
};

/**
 * Pictures of what the instrument's screen shows: columns of the record that is shown, of the
 * mathematics channel and the reference curve, the spectrum, and masks.
 *
 * A picture is the length of its head as a 32-bit number, the head in JSON, filled up with blanks
 * so that what follows lies at a multiple of 4 bytes, and pairs of 32-bit floats, lowest and
 * highest value of each column, NaN where there is none; of digital lines the bits that are high
 * throughout the column, and those that are high at some time. Little endian.
 *
 * Takes the tree's lock for moments. To be used by one thread at a time.
 */
class CWavePictures
{
public:
    using t_Message = std::shared_ptr<const QByteArray>;

    /** Nothing is drawn of another root than the instrument's. */
    CWavePictures(const std::shared_ptr<IKWFunctionRootBase>& root, t_WaveSources sources);
    ~CWavePictures();

    bool HasTraces() const { return m_reader != nullptr; }
    bool HasSpectrum() const { return m_spectra != nullptr; }

    /** The picture of each wish, the same one as before where nothing has changed. */
    std::vector<t_Message> Make(const std::vector<t_WaveWish>& wishes);
    /** Lines of the masks that are to be drawn, in JSON: another message only when one of them is
        another one; null without traces. */
    t_Message MakeMasks();
    /** Lets go what records it holds. */
    void Rest();

private:
    /** What the settings say about the picture. */
    struct t_Screen
    {
        double left = 0.0;  ///< s against the trigger
        double width = 1.0; ///< s
        std::array<KW_MinMax, 4> levels{};
        KW_ZEL_INTERPOLATION_MODE interpolation = eKW_ZEL_INTERPOLATION_MODE_LINEAR;
        KW_MinMax frequencies{0.0, 1.0}; ///< Hz
        KW_MinMax magnitudes{0.0, 1.0};  ///< in the unit of the spectrum

        bool operator==(const t_Screen& other) const;
    };
    struct t_Made
    {
        t_WaveWish wish;
        t_Message message;
    };

    /** Fetches what is to be shown; whether it is another picture. */
    bool Look();
    t_Screen ReadScreen() const;
    t_Message MakeOne(const t_WaveWish& wish) const;
    void AddTraces(CJsonWriter& head, QByteArray& body, const CKWRecord& record,
                   const t_WaveWindow& window) const;
    void AddRecord(CJsonWriter& head, QByteArray& body, const t_WaveWindow& wish) const;
    void AddSpectrum(CJsonWriter& head, QByteArray& body, const t_WaveWindow& wish) const;
    KW_MinMax LevelsOf(const KW_TraceInfo& trace) const;

    const std::shared_ptr<IKWFunctionZEL> m_root;
    const t_WaveSources m_sources;
    std::unique_ptr<IKWStreamReader> m_reader;
    std::unique_ptr<IKWStreamReader> m_spectra;
    std::shared_ptr<IKWMaskRun> m_masks;
    std::shared_ptr<IKWMathematicsCurve> m_mathematics;

    long long m_counter = -1; ///< of the tree, that the screen was read at
    t_Screen m_screen;
    CKWRecord m_shown;
    CKWRecord m_curve;     ///< of mathematics
    CKWRecord m_reference; ///< R1
    CKWRecord m_spectrum;
    std::vector<t_Made> m_made;
    std::shared_ptr<const KW_MaskSet> m_maskSet;
    t_Message m_maskMessage;
};
