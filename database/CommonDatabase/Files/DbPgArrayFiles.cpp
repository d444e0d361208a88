// SPDX-License-Identifier: MIT
#include "CommonDatabase/Containers/DbPgArray.h"
#include "DbSettings.h"

#include <algorithm>

namespace
{
const QString kArrayItemElement = QStringLiteral("ArrayItem");
} // namespace

void CDbPgArrayBase::SerializeContents(CDbSettingsWriter& writer, INT32 pattern) const
{
    writer.Attribute(KW_SETTINGS_COUNT, QString::number(m_items.size()));
    CDbContainerBase::SerializeContents(writer, pattern);
    for (const auto& item : m_items)
    {
        writer.StartElement(kArrayItemElement);
        item->SerializeBaseAttributes(writer);
        item->SerializeContents(writer, pattern);
        writer.EndElement();
    }
}

void CDbPgArrayBase::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    INT32 count = 0;
    for (auto child = element.FirstChild(); !child.IsNull(); child = child.Next())
    {
        count += child.Kind() == kArrayItemElement ? 1 : 0;
    }
    FitTo(count, recall);
    t_FileItems items{0, std::vector<bool>(m_items.size())};
    for (auto child = element.FirstChild(); !child.IsNull(); child = child.Next())
    {
        if (child.Kind() == kArrayItemElement)
        {
            DeSerializeItem(child, items, recall);
        }
        else
        {
            DeSerializeChild(child, recall);
        }
    }
}

void CDbPgArrayBase::FitTo(INT32 count, CDbRecall& recall)
{
    if (IsDynamic() && count < GetCount())
    {
        DbRemovePriv(count, GetCount() - count);
    }
    const auto added = static_cast<std::size_t>(std::max(count - GetCount(), 0));
    if (IsDynamic() && added > 0 && HasRoomFor(count) &&
        recall.MayCreate(added * GetNodesPerItem()))
    {
        DbSetSize(count);
    }
}

void CDbPgArrayBase::DeSerializeItem(const CDbSettingsElement& element, t_FileItems& items,
                                     CDbRecall& recall)
{
    // An item without a name, as one writes it by hand, follows the one before it.
    const QString name =
        element.Name().isNull() ? QString::number(items.next) : element.Name().toString();
    const INT32 index = IndexOf(name);
    if (index < 0)
    {
        ++items.next;
        recall.Skip(
            *this,
            QStringLiteral("Item %1 skipped: the array has %2 items").arg(name).arg(GetCount()));
        return;
    }
    items.next = index + 1;
    if (items.seen[index])
    {
        recall.Skip(*this, QStringLiteral("Item %1 skipped: the file names it twice").arg(name));
        return;
    }
    items.seen[index] = true;
    ItemAt(index)->DeSerialize(element, recall);
}

void CDbPgArrayBase::DeSerializeChild(const CDbSettingsElement& element, CDbRecall& recall)
{
    if (element.Kind() != QLatin1String("Prop"))
    {
        if (recall.CountSkipped())
        {
            ReportContainer(QStringLiteral("Unexpected item: ") +
                                CDbRecall::Shortened(element.Kind().toString()),
                            __LINE__, Q_FUNC_INFO);
        }
        return;
    }
    CDbContainerBase::DeSerializeChild(element, recall);
}
