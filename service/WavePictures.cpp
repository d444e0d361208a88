// SPDX-License-Identifier: MIT
#include "WavePictures.h"

#include "IKWFunctionChannel.h"
#include "IKWFunctionHorizontal.h"
#include "IKWFunctionSampleCounter.h"
#include "IKWFunctionSpectrum.h"
#include "IKWFunctionVertical.h"
#include "IKWFunctionZEL.h"
#include "JsonWriter.h"
#include "KWBrackets.h"
#include "KWTexts.h"
#include "Masks/MaskTree.h"
#include "Mathematics/MathematicsTree.h"

#include <QtEndian>
#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace
{
constexpr float kNone = std::numeric_limits<float>::quiet_NaN();
constexpr int kDivisions = 10;

QString NameOf(KW_ZEL_CHANNEL channel)
{
    return GetStaticEnumNameInfo<KW_ZEL_CHANNEL>().GetName(channel);
}

const char* NameOf(KW_MASK_RESULT result)
{
    return result == eKW_MASK_PASSED   ? "passed"
           : result == eKW_MASK_FAILED ? "failed"
                                       : "not tested";
}

void AddPair(QByteArray& body, float minimum, float maximum)
{
    const std::array<quint32, 2> pair{qToLittleEndian(std::bit_cast<quint32>(minimum)),
                                      qToLittleEndian(std::bit_cast<quint32>(maximum))};
    body.append(reinterpret_cast<const char*>(pair.data()), sizeof pair);
}

/** Columns of a trace; nothing of settling points. False where it can not be drawn. */
bool AddColumns(QByteArray& body, const CKWRecord& record, UINT32 place, const t_WaveWindow& window,
                KW_ZEL_INTERPOLATION_MODE interpolation)
{
    const KW_TraceInfo trace = record.GetTrace(place);
    const auto count = static_cast<std::size_t>(window.columns);
    const double first = (window.from - trace.start) / trace.interval;
    const double points = (window.to - window.from) / trace.interval;
    const auto isSettled = [&](std::size_t column)
    {
        const double end =
            first + points * static_cast<double>(column + 1) / static_cast<double>(count);
        return end > trace.settlingPoints;
    };
    if (trace.format == eKW_SAMPLES_LINES)
    {
        std::vector<KW_LineStates> columns(count);
        if (!KW_IsAccepted(record.GetLines(place, first, points, columns)))
        {
            return false;
        }
        for (std::size_t i = 0; i < count; ++i)
        {
            const bool isThere = columns[i].once != 0 || columns[i].always == 0;
            isThere&& isSettled(i) ? AddPair(body, columns[i].always, columns[i].once)
                                   : AddPair(body, kNone, kNone);
        }
        return true;
    }
    std::vector<KW_MinMax> columns(count);
    if (!KW_IsAccepted(record.GetColumns(place, first, points, columns, interpolation)))
    {
        return false;
    }
    for (std::size_t i = 0; i < count; ++i)
    {
        isSettled(i) ? AddPair(body, static_cast<float>(columns[i].minimum),
                               static_cast<float>(columns[i].maximum))
                     : AddPair(body, kNone, kNone);
    }
    return true;
}

bool IsSame(const CKWRecord& one, const CKWRecord& other)
{
    const auto points = [](const CKWRecord& record)
    {
        UINT64 sum = 0;
        for (UINT32 i = 0; i < record.GetTraceCount(); ++i)
        {
            sum += record.GetTrace(i).count;
        }
        return sum;
    };
    return bool(one) == bool(other) && one.GetInfo().number == other.GetInfo().number &&
           one.GetInfo().triggerTime == other.GetInfo().triggerTime && points(one) == points(other);
}

void AddWindow(CJsonWriter& json, const t_WaveWindow& window)
{
    json.Key("from").Number(window.from);
    json.Key("to").Number(window.to);
    json.Key("columns").Whole(window.columns);
}

t_WaveWindow Complete(t_WaveWindow window, double from, double to)
{
    window.from = window.isOwn ? window.from : from;
    window.to = window.isOwn ? window.to : to;
    return window;
}

/** A line as pieces without gaps, each a list of [time, level]. */
void AddMaskLine(CJsonWriter& json, const KW_MaskLine& line, const KW_MaskFrame& frame)
{
    json.BeginArray();
    bool isOpen = false;
    for (const KW_MaskPoint& point : line)
    {
        if (!std::exchange(isOpen, true))
        {
            json.BeginArray();
        }
        json.BeginArray();
        json.Number(frame.left + point.x * frame.timeScale);
        json.Number(frame.middle + point.y * frame.levelScale);
        json.EndArray();
        if (point.isEnd)
        {
            json.EndArray();
            isOpen = false;
        }
    }
    if (isOpen)
    {
        json.EndArray();
    }
    json.EndArray();
}
} // namespace

bool CWavePictures::t_Screen::operator==(const t_Screen& other) const
{
    const auto isSame = [](const KW_MinMax& one, const KW_MinMax& two)
    { return one.minimum == two.minimum && one.maximum == two.maximum; };
    return left == other.left && width == other.width && interpolation == other.interpolation &&
           std::equal(levels.begin(), levels.end(), other.levels.begin(), isSame) &&
           isSame(frequencies, other.frequencies) && isSame(magnitudes, other.magnitudes);
}

CWavePictures::CWavePictures(const std::shared_ptr<IKWFunctionRootBase>& root,
                             t_WaveSources sources)
    : m_root(std::dynamic_pointer_cast<IKWFunctionZEL>(root)), m_sources(std::move(sources))
{
    if (m_root && m_sources.acquisition)
    {
        m_reader = m_sources.acquisition->GetStream()->MakeReader();
        m_masks = KW_MakeMaskRun(m_root);
        m_mathematics = KW_MakeMathematicsCurve(m_root);
    }
    if (m_root && m_sources.spectra)
    {
        m_spectra = m_sources.spectra->MakeReader();
    }
}

CWavePictures::~CWavePictures() = default;

void CWavePictures::Rest()
{
    m_shown = {};
    m_curve = {};
    m_reference = {};
    m_spectrum = {};
    m_made.clear();
}

CWavePictures::t_Screen CWavePictures::ReadScreen() const
{
    const CKWReadBracket together(m_root);
    t_Screen screen;
    const auto time = m_root->GetPgHorizontal();
    screen.left = time->GetPrLeft()->Get();
    screen.width = time->GetPrAcquisitionTime()->Get();
    screen.interpolation = time->GetPgSampleCounter()->GetPrInterpolationMode()->Get();
    const auto channels = m_root->GetPgVertical()->GetPgChannel();
    for (std::size_t i = 0; i < screen.levels.size(); ++i)
    {
        const auto channel = channels->GetItem(static_cast<INT32>(i));
        screen.levels[i] = {channel->GetPrBottom()->Get(), channel->GetPrTop()->Get()};
    }
    const auto spectrum = m_root->GetPgSpectrum();
    screen.frequencies = {spectrum->GetPrHorizontalStart()->Get(),
                          spectrum->GetPrHorizontalStop()->Get()};
    screen.magnitudes = {spectrum->GetPrVerticalStart()->Get(),
                         spectrum->GetPrVerticalStop()->Get()};
    return screen;
}

bool CWavePictures::Look()
{
    bool isOther = false;
    if (m_root->HasChanged(m_counter))
    {
        const t_Screen screen = ReadScreen();
        isOther = screen != std::exchange(m_screen, screen);
    }
    if (m_reader)
    {
        CKWRecord shown = m_sources.acquisition->GetShown(*m_reader);
        const CKWRecord reference = m_sources.acquisition->GetReference();
        const bool isNew = !IsSame(shown, m_shown) || !IsSame(reference, m_reference);
        m_shown = std::move(shown);
        m_reference = reference;
        if (isNew || m_mathematics->HasChanged())
        {
            const bool hadCurve = bool(std::exchange(m_curve, {}));
            m_mathematics->Compute(m_shown, m_curve, m_reference); // none where it is refused
            isOther = isOther || isNew || hadCurve || m_curve;
        }
    }
    if (m_spectra && m_spectra->HasNew())
    {
        m_spectrum = m_spectra->GetLatest();
        isOther = true;
    }
    return isOther;
}

std::vector<CWavePictures::t_Message> CWavePictures::Make(const std::vector<t_WaveWish>& wishes)
{
    std::vector<t_Message> messages(wishes.size());
    if (!HasTraces() && !HasSpectrum())
    {
        return messages;
    }
    const std::vector<t_Made> before = Look() ? std::vector<t_Made>() : std::exchange(m_made, {});
    m_made.clear();
    for (std::size_t i = 0; i < wishes.size(); ++i)
    {
        const auto isIt = [&wish = wishes[i]](const t_Made& made) { return made.wish == wish; };
        const auto found = std::find_if(before.begin(), before.end(), isIt);
        messages[i] = found != before.end() ? found->message : MakeOne(wishes[i]);
        m_made.push_back({wishes[i], messages[i]});
    }
    return messages;
}

/** Of inputs what the settings say; of what is computed or stored what its samples mean. */
KW_MinMax CWavePictures::LevelsOf(const KW_TraceInfo& trace) const
{
    const auto input = static_cast<std::size_t>(trace.channel - eKW_ZEL_CHANNEL_C1);
    if (trace.channel >= eKW_ZEL_CHANNEL_C1 && input < m_screen.levels.size())
    {
        return m_screen.levels[input];
    }
    const double half = 4.0 * KW_COUNTS_PER_DIVISION * std::fabs(trace.scale);
    return {trace.offset - half, trace.offset + half};
}

void CWavePictures::AddTraces(CJsonWriter& head, QByteArray& body, const CKWRecord& record,
                              const t_WaveWindow& window) const
{
    for (UINT32 place = 0; place < record.GetTraceCount(); ++place)
    {
        const KW_TraceInfo trace = record.GetTrace(place);
        const auto begin = static_cast<INT64>(body.size()) / 4;
        if (trace.count == 0 || trace.format == eKW_SAMPLES_FRAMES ||
            !AddColumns(body, record, place, window, m_screen.interpolation))
        {
            continue;
        }
        head.BeginObject();
        head.Key("name").Text(NameOf(trace.channel));
        const bool isLines = trace.format == eKW_SAMPLES_LINES;
        head.Key("kind").Text(isLines ? QStringLiteral("lines") : QStringLiteral("curve"));
        head.Key("begin").Whole(begin);
        if (!isLines)
        {
            const KW_MinMax levels = LevelsOf(trace);
            head.Key("unit").Text(KW_GetUnitText(trace.unit));
            head.Key("bottom").Number(levels.minimum);
            head.Key("top").Number(levels.maximum);
            head.Key("above").Bool((trace.flags & eKW_TRACE_ABOVE_RANGE) != 0);
            head.Key("below").Bool((trace.flags & eKW_TRACE_BELOW_RANGE) != 0);
        }
        head.EndObject();
    }
}

void CWavePictures::AddRecord(CJsonWriter& head, QByteArray& body, const t_WaveWindow& wish) const
{
    const double right = m_screen.left + m_screen.width;
    const t_WaveWindow window = Complete(wish, m_screen.left, right);
    head.Key("record").BeginObject();
    AddWindow(head, window);
    head.Key("left").Number(m_screen.left);
    head.Key("right").Number(right);
    head.Key("divisions").Whole(kDivisions);
    const KW_RecordInfo info = m_shown.GetInfo();
    head.Key("number").Whole(static_cast<INT64>(info.number));
    head.Key("time").Text(QString::number(info.triggerTime));
    head.Key("mask").Text(QLatin1String(NameOf(info.maskResult)));
    head.Key("traces").BeginArray();
    AddTraces(head, body, m_shown, window);
    AddTraces(head, body, m_curve, window);
    AddTraces(head, body, m_reference, window);
    head.EndArray();
    head.EndObject();
}

void CWavePictures::AddSpectrum(CJsonWriter& head, QByteArray& body, const t_WaveWindow& wish) const
{
    const t_WaveWindow window =
        Complete(wish, m_screen.frequencies.minimum, m_screen.frequencies.maximum);
    head.Key("spectrum").BeginObject();
    AddWindow(head, window);
    head.Key("left").Number(m_screen.frequencies.minimum);
    head.Key("right").Number(m_screen.frequencies.maximum);
    head.Key("bottom").Number(m_screen.magnitudes.minimum);
    head.Key("top").Number(m_screen.magnitudes.maximum);
    head.Key("traces").BeginArray();
    for (UINT32 place = 0; place < m_spectrum.GetTraceCount(); ++place)
    {
        const KW_TraceInfo trace = m_spectrum.GetTrace(place);
        const auto begin = static_cast<INT64>(body.size()) / 4;
        if (trace.count > 0 && KW_IsCurve(trace.format) &&
            AddColumns(body, m_spectrum, place, window, eKW_ZEL_INTERPOLATION_MODE_LINEAR))
        {
            head.BeginObject();
            head.Key("name").Text(NameOf(trace.channel));
            head.Key("unit").Text(KW_GetUnitText(trace.unit));
            head.Key("begin").Whole(begin);
            head.EndObject();
        }
    }
    head.EndArray();
    head.EndObject();
}

CWavePictures::t_Message CWavePictures::MakeOne(const t_WaveWish& wish) const
{
    CJsonWriter head;
    QByteArray body;
    body.reserve((wish.traces.columns * 6 + wish.spectrum.columns) * 8);
    head.BeginObject();
    if (wish.traces.columns > 0 && HasTraces())
    {
        AddRecord(head, body, wish.traces);
    }
    if (wish.spectrum.columns > 0 && HasSpectrum())
    {
        AddSpectrum(head, body, wish.spectrum);
    }
    head.EndObject();
    QByteArray text = head.GetText();
    text.append(QByteArray((4 - text.size() % 4) % 4, ' '));
    const quint32 length = qToLittleEndian(static_cast<quint32>(text.size()));
    QByteArray message(reinterpret_cast<const char*>(&length), sizeof length);
    return std::make_shared<const QByteArray>(message + text + body);
}

CWavePictures::t_Message CWavePictures::MakeMasks()
{
    if (!m_masks || m_masks->GetMasks() == m_maskSet)
    {
        return m_maskMessage;
    }
    m_maskSet = m_masks->GetMasks();
    CJsonWriter json;
    json.BeginObject();
    json.Key("masks").BeginArray();
    for (std::size_t i = 0; i < m_maskSet->channels.size(); ++i)
    {
        const KW_PlacedMask& placed = m_maskSet->channels[i];
        if (placed.isVisible && !placed.mask.IsEmpty())
        {
            json.BeginObject();
            json.Key("name").Text(NameOf(static_cast<KW_ZEL_CHANNEL>(eKW_ZEL_CHANNEL_C1 + i)));
            json.Key("tested").Bool(placed.isTested);
            AddMaskLine(json.Key("upper"), placed.mask.upper, placed.mask.frame);
            AddMaskLine(json.Key("lower"), placed.mask.lower, placed.mask.frame);
            json.EndObject();
        }
    }
    json.EndArray();
    json.EndObject();
    m_maskMessage = std::make_shared<const QByteArray>(json.GetText());
    return m_maskMessage;
}
