// SPDX-License-Identifier: MIT
#include "Masks/MaskFile.h"

#include "EnumNameInfo.h"
#include "KWEnumerationsUnits.h"
#include "LabelList/LabelHead.h"
#include "LabelList/LabelTexts.h"
#include "LabelList/LabelXmlTokens.h"
#include "WholeFile.h"
#include "XmlTags.h"

#include <QCryptographicHash>
#include <optional>

namespace
{
constexpr qint64 kMaxFileSize = qint64{4} << 20U; ///< bytes
constexpr int kMaxXmlAttributes = 64;             ///< of one tag
constexpr const char kDigestBegin[] = "    <Digest Value=\"";

/** Of everything before its element. It shows damage, not who made it. */
std::string DigestOf(const QByteArray& text, int length)
{
    const auto covered = QByteArray::fromRawData(text.constData(), length);
    return QCryptographicHash::hash(covered, QCryptographicHash::Sha1).toHex().toStdString();
}

/** A number of the head, by its attribute. */
struct t_FrameNumber
{
    const char* name;
    double KW_MaskFrame::*value;
};

constexpr t_FrameNumber kFrameNumbers[] = {{"Left", &KW_MaskFrame::left},
                                           {"TimeScale", &KW_MaskFrame::timeScale},
                                           {"Middle", &KW_MaskFrame::middle},
                                           {"LevelScale", &KW_MaskFrame::levelScale}};

/** Reads elements into a mask. Members are named after the elements that they read; each is called
    with the element open, and ends with it. */
class CMaskReader
{
public:
    CMaskReader(const QByteArray& text, CLabelReports& reports)
        : m_text(text), m_reports(reports), m_xml(text, reports)
    {
    }

    std::optional<KW_Mask> Read()
    {
        if (m_xml.Next() && Head())
        {
            m_xml.WarnOfRest();
            while (m_xml.Next())
            {
                Child();
            }
            m_xml.Next(); // what follows has to be well-formed, too
        }
        // Whatever a warning was about, an error refuses.
        return m_xml.IsBroken() || m_reports.ErrorCount() > 0 ? std::nullopt
                                                              : std::optional(std::move(m_mask));
    }

private:
    bool Head()
    {
        if (m_xml.Name() != "Mask")
        {
            return Refuse("no mask: its element is ", m_xml.Name());
        }
        const auto* const version = m_xml.Take("Version");
        if (version == nullptr)
        {
            return Refuse("Version is missing");
        }
        if (const QString error = NLabelHead::ReadVersion(version->text); !error.isEmpty())
        {
            m_reports.Error(version->place, error);
            m_xml.BreakOff();
            return false;
        }
        ReadUnit();
        for (const t_FrameNumber& number : kFrameNumbers)
        {
            m_mask.frame.*number.value = Number(number.name).value_or(1.0);
        }
        if (!KW_IsMaskFrame(m_mask.frame))
        {
            Wrong(m_xml.Place(), "TimeScale and LevelScale have to be "
                                 "above 0");
        }
        return true;
    }

    void ReadUnit()
    {
        const auto* const unit = m_xml.Take("Unit");
        if (unit == nullptr)
        {
            return Wrong(m_xml.Place(), "Unit is missing");
        }
        const QString text = QString::fromStdString(unit->text);
        const auto found = GetStaticEnumNameInfo<KW_UNIT>().ConvertName(text);
        if (found.match != CEnumNameInfo::eMATCH::One)
        {
            return Wrong(unit->place, "Unit: \"", unit->text, "\" is none");
        }
        m_mask.frame.unit = static_cast<KW_UNIT>(found.value);
    }

    void Child()
    {
        if (m_isDigest)
        {
            Wrong(m_xml.Place(), "", m_xml.Name(), " follows the digest");
        }
        if (m_xml.Name() == "Upper")
        {
            Line(m_mask.upper, m_isUpper);
        }
        else if (m_xml.Name() == "Lower")
        {
            Line(m_mask.lower, m_isLower);
        }
        else if (m_xml.Name() == "Digest")
        {
            Digest();
        }
        else
        {
            m_xml.PassOver();
        }
    }

    void Line(KW_MaskLine& line, bool& isThere)
    {
        if (std::exchange(isThere, true))
        {
            Wrong(m_xml.Place(), "", m_xml.Name(), " stands here already");
        }
        m_xml.WarnOfRest();
        while (m_xml.Next())
        {
            if (m_xml.Name() == "Point")
            {
                Point(line);
            }
            else
            {
                m_xml.PassOver();
            }
        }
    }

    void Point(KW_MaskLine& line)
    {
        const t_TextPlace place = m_xml.Place();
        KW_MaskPoint point;
        const auto x = Number("X");
        const auto y = Number("Y");
        const auto* const gap = m_xml.Take("Gap");
        const auto isEnd = gap != nullptr ? NLabelTexts::ReadFlag(gap->text) : false;
        if (!isEnd)
        {
            Wrong(gap->place, "Gap is neither true nor false");
        }
        if (x && y && isEnd)
        {
            Add(line, {*x, *y, *isEnd}, place);
        }
        m_xml.EndLeaf();
    }

    void Add(KW_MaskLine& line, const KW_MaskPoint& point, t_TextPlace place)
    {
        // Points that stand here are in order: a new one has to be behind them.
        line.push_back(point);
        const std::size_t first = line.size() > 2 ? line.size() - 2 : 0;
        const KW_MaskLine last(line.begin() + static_cast<std::ptrdiff_t>(first), line.end());
        if (line.size() > eKW_MASK_POINTS)
        {
            Wrong(place, "more than 4096 points in a line");
            return m_xml.BreakOff();
        }
        switch (KW_CheckMaskLine(last))
        {
        case eKW_ACC_OUTSIDE_DECLARED:
            Wrong(place, "a point more than 1000000 divisions away");
            break;
        case eKW_ACC_LIMITS_CROSSED:
            Wrong(place, "a point to the left of the one before it");
            break;
        default:
            return;
        }
        line.pop_back();
    }

    void Digest()
    {
        m_isDigest = true;
        const auto* const value = m_xml.Take("Value");
        const auto at = static_cast<int>(m_text.lastIndexOf(kDigestBegin));
        if (value == nullptr || at < 0 || value->text != DigestOf(m_text, at))
        {
            Wrong(m_xml.Place(), "it is not what was saved: its digest "
                                 "does not fit");
        }
        m_xml.EndLeaf();
    }

    std::optional<double> Number(const char* name)
    {
        const auto* const attribute = m_xml.Take(name);
        if (attribute == nullptr)
        {
            Wrong(m_xml.Place(), name, {}, " is missing");
            return std::nullopt;
        }
        const auto value = NLabelTexts::ReadReal(attribute->text);
        const bool isOne = value && *value - *value == 0; // neither infinite nor NaN
        if (!isOne)
        {
            Wrong(attribute->place, (std::string(name) + ": \"").c_str(), attribute->text,
                  "\" is no number");
        }
        return isOne ? value : std::nullopt;
    }

    bool Refuse(const char* text, const std::string& what = {})
    {
        Wrong(m_xml.Place(), text, what);
        m_xml.BreakOff();
        return false;
    }

    void Wrong(t_TextPlace place, const char* text, const std::string& what = {},
               const char* rest = "")
    {
        m_reports.Error(place,
                        QLatin1String(text) + QString::fromStdString(what) + QLatin1String(rest));
    }

    const QByteArray& m_text;
    CLabelReports& m_reports;
    CLabelXmlTokens m_xml;
    KW_Mask m_mask;
    bool m_isUpper = false;
    bool m_isLower = false;
    bool m_isDigest = false;
};

void AppendNumber(QByteArray& text, const char* name, double value)
{
    text.append(name).append("=\"").append(NLabelTexts::TextOf(value).c_str()).append('"');
}

void AppendLine(QByteArray& text, const char* name, const KW_MaskLine& line)
{
    if (line.empty())
    {
        return;
    }
    text.append("    <").append(name).append(">\n");
    for (const KW_MaskPoint& point : line)
    {
        text.append("        <Point");
        AppendNumber(text, " X", point.x);
        AppendNumber(text, " Y", point.y);
        text.append(point.isEnd ? " Gap=\"true\"/>\n" : "/>\n");
    }
    text.append("    </").append(name).append(">\n");
}

KW_ACCEPTANCE Refuse(KW_ACCEPTANCE code, const QString& text, std::vector<KW_LabelReport>& reports)
{
    reports.push_back({e_KW_MESSAGE_TYPE_ERROR, 0, 0, text});
    return code;
}

/** What the reader of elements is not to see. */
bool IsReadable(const QByteArray& text, CLabelReports& reports)
{
    const std::string_view bytes(text.constData(), static_cast<std::size_t>(text.size()));
    if (const auto place = NLabelTexts::FindUnholdable(bytes))
    {
        reports.Error(*place, NLabelHead::NotText());
    }
    else if (KW_HasLongXmlTag(text, kMaxXmlAttributes))
    {
        reports.Error(
            {}, QStringLiteral("an element has more than %1 attributes").arg(kMaxXmlAttributes));
    }
    return reports.IsEmpty();
}
} // namespace

KW_ACCEPTANCE KW_ReadMaskText(const QByteArray& text, KW_Mask& mask,
                              std::vector<KW_LabelReport>& reports)
{
    if (text.size() > kMaxFileSize)
    {
        return Refuse(eKW_ACC_FILE_NOT_READABLE, QStringLiteral("longer than 4 MiB"), reports);
    }
    CLabelReports collected;
    std::optional<KW_Mask> read;
    if (IsReadable(text, collected))
    {
        read = CMaskReader(text, collected).Read();
    }
    const KW_ACCEPTANCE taken = collected.IsEmpty() ? eKW_ACC_OK : eKW_ACC_WARNING;
    collected.MoveTo(reports);
    if (!read)
    {
        return eKW_ACC_FILE_NOT_UNDERSTOOD;
    }
    mask = std::move(*read);
    return taken;
}

KW_ACCEPTANCE KW_ReadMaskFile(const QString& fileName, KW_Mask& mask,
                              std::vector<KW_LabelReport>& reports)
{
    QByteArray text;
    QString error;
    if (!KW_ReadWholeFile(fileName, kMaxFileSize, text, error))
    {
        return Refuse(eKW_ACC_FILE_NOT_READABLE, error, reports);
    }
    return KW_ReadMaskText(text, mask, reports);
}

KW_ACCEPTANCE KW_WriteMaskText(const KW_Mask& mask, QByteArray& text,
                               std::vector<KW_LabelReport>& reports)
{
    if (const KW_ACCEPTANCE code = KW_CheckMask(mask); !KW_IsAccepted(code))
    {
        return Refuse(code,
                      QStringLiteral("the mask can not be written: ") + KW_GetAcceptanceText(code),
                      reports);
    }
    const QString unit = GetStaticEnumNameInfo<KW_UNIT>().GetSerialName(mask.frame.unit);
    if (unit.isEmpty())
    {
        return Refuse(eKW_ACC_UNKNOWN_VALUE, QStringLiteral("the mask has an unknown unit"),
                      reports);
    }
    QByteArray written("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Mask Version=\"1.0\" Unit=\"");
    written.append(unit.toLatin1()).append('"');
    for (const t_FrameNumber& number : kFrameNumbers)
    {
        written.append(' ');
        AppendNumber(written, number.name, mask.frame.*number.value);
    }
    written.append(">\n");
    AppendLine(written, "Upper", mask.upper);
    AppendLine(written, "Lower", mask.lower);
    const std::string digest = DigestOf(written, static_cast<int>(written.size()));
    text = written.append(kDigestBegin).append(digest.c_str()).append("\"/>\n</Mask>\n");
    return eKW_ACC_OK;
}

KW_ACCEPTANCE KW_WriteMaskFile(const QString& fileName, const KW_Mask& mask,
                               std::vector<KW_LabelReport>& reports)
{
    QByteArray text;
    const KW_ACCEPTANCE code = KW_WriteMaskText(mask, text, reports);
    QString error;
    if (KW_IsAccepted(code) && !KW_WriteWholeFile(fileName, text, error))
    {
        return Refuse(eKW_ACC_FILE_NOT_WRITABLE, error, reports);
    }
    return code;
}
