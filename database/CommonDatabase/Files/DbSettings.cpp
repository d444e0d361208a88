// SPDX-License-Identifier: MIT
#include "DbSettings.h"

#include "CommonDatabase/Nodes/DbPropertyGroup.h"
#include "ErrorReport.h"

#include <algorithm>

namespace
{
constexpr char kSettingsSource[] = "CommonDatabase/Src/DbSettings";
} // namespace

QStringView CDbSettingsElement::Kind() const
{
    return m_document->View(m_document->m_elements[m_index].kind);
}

QStringView CDbSettingsElement::Attribute(const QString& key) const
{
    const auto& element = m_document->m_elements[m_index];
    for (int i = 0; i < element.attributeCount; ++i)
    {
        const auto& attribute = m_document->m_attributes[element.firstAttribute + i];
        if (m_document->View(attribute.key) == key)
        {
            return m_document->View(attribute.value);
        }
    }
    return {};
}

CDbSettingsElement CDbSettingsElement::FirstChild() const
{
    return {*m_document, m_document->m_elements[m_index].firstChild};
}

CDbSettingsElement CDbSettingsElement::Next() const
{
    return {*m_document, m_document->m_elements[m_index].next};
}

CDbSettingsDocument::t_Text CDbSettingsDocument::Keep(QStringView text)
{
    const t_Text kept{static_cast<int>(m_text.size()), static_cast<int>(text.size())};
    m_text.append(text);
    return kept;
}

bool CDbSettingsDocument::Fail(const QString& error)
{
    m_error = CDbRecall::Shortened(error);
    return false;
}

bool CDbSettingsDocument::Open(QStringView kind)
{
    if (m_open.size() >= NDbBounds::kMaxDepth)
    {
        return Fail(
            QStringLiteral("elements are nested deeper than %1 levels").arg(NDbBounds::kMaxDepth));
    }
    if (m_elements.size() >= NDbBounds::kMaxElements)
    {
        return Fail(QStringLiteral("there are more than %1 elements").arg(NDbBounds::kMaxElements));
    }
    const int index = static_cast<int>(m_elements.size());
    m_elements.push_back({Keep(kind), static_cast<int>(m_attributes.size()), 0, -1, -1});
    if (!m_open.empty())
    {
        t_Level& parent = m_open.back();
        (parent.lastChild < 0 ? m_elements[parent.element].firstChild
                              : m_elements[parent.lastChild].next) = index;
        parent.lastChild = index;
    }
    m_open.push_back({index, -1});
    return true;
}

void CDbSettingsDocument::AddAttribute(QStringView key, QStringView value)
{
    const t_Text keptKey = Keep(key);
    m_attributes.push_back({keptKey, Keep(value)});
    ++m_elements[m_open.back().element].attributeCount;
}

void CDbSettingsDocument::Close()
{
    m_open.pop_back();
}

bool CDbSettingsDocument::CheckDocument(const QString& kind)
{
    const CDbSettingsElement top = Top();
    if (top.IsNull() || top.Kind() != KW_SETTINGS_DOCUMENT)
    {
        return Fail(QStringLiteral("this is no settings file: the outermost element is not \"%1\"")
                        .arg(KW_SETTINGS_DOCUMENT));
    }
    if (!kind.isNull() && top.Attribute(KW_SETTINGS_KIND) != kind)
    {
        return Fail(QStringLiteral("these are settings of \"%1\", expected \"%2\"")
                        .arg(top.Attribute(KW_SETTINGS_KIND).toString(), kind));
    }
    return CheckVersion(top.Attribute(KW_SETTINGS_VERSION));
}

bool CDbSettingsDocument::CheckVersion(QStringView version)
{
    const auto point = version.indexOf(QLatin1Char('.'));
    bool isNumber = false;
    const int major = version.left(point < 0 ? version.size() : point).toInt(&isNumber);
    if (!isNumber || major < 1)
    {
        return Fail(
            QStringLiteral("the format version \"%1\" is no version").arg(version.toString()));
    }
    if (major > kSettingsMajorVersion)
    {
        return Fail(
            QStringLiteral("the format version %1 is newer than %2.%3; update this instrument")
                .arg(version.toString())
                .arg(kSettingsMajorVersion)
                .arg(kSettingsMinorVersion));
    }
    return true;
}

CDbRecall CDbRecall::Apply(CDbObject& node, const CDbSettingsDocument& document)
{
    return Apply(node, document.Top(), eSAVERECALL_ALL);
}

CDbRecall CDbRecall::Apply(CDbObject& node, const CDbSettingsElement& element, INT32 pattern)
{
    CDbRecall recall;
    recall.m_pattern = pattern;
    if (element.IsNull() || element.Kind() != node.GetXMLElementName())
    {
        recall.Skip(node, QStringLiteral("Unexpected element: ") +
                              (element.IsNull() ? QString() : element.Kind().toString()));
        return recall;
    }
    node.DeSerialize(element, recall);
    const auto deferred = std::move(recall.m_deferred);
    std::for_each(deferred.begin(), deferred.end(),
                  [&recall](const auto& apply) { apply(recall); });
    recall.ReportRest(node);
    return recall;
}

void CDbRecall::SettleTwins(CDbPropertyGroup& top)
{
    std::sort(m_taken.begin(), m_taken.end());
    top.VisitChildrenFirst(
        [this](CDbPropertyGroup& group)
        {
            for (const auto& [row, one, other] : group.GetTwins())
            {
                const bool isOneNamed = HasTaken(*one);
                const CDbPropBase* const named = isOneNamed ? one : other;
                if (isOneNamed == HasTaken(*other))
                {
                    continue;
                }
                CRowTrace::NoteStart(group, *row, named);
                if (named->GetParent()->RunRows(eCAUSE::On | eCAUSE::OnAny, *named, named) !=
                    eKW_ACC_OK)
                {
                    CountSkipped(); // reported by the rule
                }
            }
        });
}

bool CDbRecall::HasTaken(const CDbPropBase& property) const
{
    return std::binary_search(m_taken.begin(), m_taken.end(), &property);
}

bool CDbRecall::MayCreate(std::size_t nodes)
{
    const bool may = nodes <= NDbBounds::kMaxNewNodes - m_created;
    m_created += may ? nodes : 0;
    return may;
}

QString CDbRecall::Shortened(const QString& text)
{
    return text.size() <= NDbBounds::kMaxReportLength
               ? text
               : text.left(NDbBounds::kMaxReportLength) + QStringLiteral("…");
}

void CDbRecall::Skip(const CDbObject& node, const QString& what)
{
    if (!CountSkipped())
    {
        return;
    }
    const QString path = node.GetPath();
    KW_REPORT_ERROR(Shortened(what) + QStringLiteral(" in ") +
                        (path.isEmpty() ? node.GetNodeName() : path),
                    kSettingsSource);
}

void CDbRecall::ReportRest(const CDbObject& node) const
{
    if (m_skipped > NDbBounds::kMaxReports)
    {
        KW_REPORT_ERROR(QStringLiteral("%1 more entries of the file were skipped in %2")
                            .arg(m_skipped - NDbBounds::kMaxReports)
                            .arg(node.GetNodeName()),
                        kSettingsSource);
    }
}

CDbRecall* CDbPresentRecall::s_recall = nullptr;

void CDbPresentRecall::Skip(const CDbObject& node, const QString& what)
{
    CDbRecall alone;
    (s_recall != nullptr ? *s_recall : alone).Skip(node, what);
}
