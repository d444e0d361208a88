// SPDX-License-Identifier: MIT
#include "CommonDatabase/Containers/DbPgMap.h"
#include "DbSettings.h"
#include "KWAcceptance.h"

#include <algorithm>

namespace
{
const QString kMapItemElement = QStringLiteral("MapItem");

/** −1 where the file leaves the key open. */
INT32 KeyOf(const CDbSettingsElement& element)
{
    bool isNumber = false;
    const INT32 key = element.Attribute(KW_SETTINGS_KEY).toInt(&isNumber);
    return isNumber ? std::max(key, -1) : -1;
}
} // namespace

void CDbPgMapBase::SerializeContents(CDbSettingsWriter& writer, INT32 pattern) const
{
    CDbContainerBase::SerializeContents(writer, pattern);
    for (const auto& [key, name] : m_namesByKey)
    {
        const t_Item& item = m_items.at(name);
        writer.StartElement(kMapItemElement);
        item.group->SerializeBaseAttributes(writer);
        writer.Attribute(KW_SETTINGS_KEY, QString::number(key));
        writer.Attribute(KW_SETTINGS_DISPLAY_NAME, item.displayName);
        item.group->SerializeContents(writer, pattern);
        writer.EndElement();
    }
}

CDbPropertyGroup* CDbPgMapBase::KeptItem(const CDbSettingsElement& element) const
{
    CDbPropertyGroup* const item = ItemByName(element.Name());
    const INT32 key = KeyOf(element);
    return item != nullptr && (key < 0 || key == NumericKeyOf(*item)) ? item : nullptr;
}

void CDbPgMapBase::RemoveAllBut(const t_Kept& kept)
{
    const QStringList names = GetNames();
    for (auto name = names.crbegin(); name != names.crend(); ++name)
    {
        if (kept.count(ItemByName(*name)) == 0)
        {
            Take(*name, eWRITEKIND::Internal);
        }
    }
}

void CDbPgMapBase::RemoveAllItems()
{
    RemoveAllBut({});
}

void CDbPgMapBase::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    // An item that keeps its name and key keeps its node, and with it the handles of clients.
    t_Kept kept;
    for (auto child = element.FirstChild(); !child.IsNull(); child = child.Next())
    {
        if (child.Kind() == kMapItemElement)
        {
            kept.insert(KeptItem(child));
        }
    }
    RemoveAllBut(kept);
    for (auto child = element.FirstChild(); !child.IsNull(); child = child.Next())
    {
        if (child.Kind() == kMapItemElement)
        {
            DeSerializeItem(child, kept, recall);
        }
    }
    // The active key names an item, so it follows the items.
    for (auto child = element.FirstChild(); !child.IsNull(); child = child.Next())
    {
        if (child.Kind() != kMapItemElement)
        {
            DeSerializeChild(child, recall);
        }
    }
}

void CDbPgMapBase::DeSerializeItem(const CDbSettingsElement& element, t_Kept& kept,
                                   CDbRecall& recall)
{
    const QString name = element.Name().toString();
    const QString displayName = element.Attribute(KW_SETTINGS_DISPLAY_NAME).toString();
    CDbPropertyGroup* const present = KeptItem(element);
    KW_ACCEPTANCE code = eKW_ACC_OK;
    if (present != nullptr && kept.erase(present) > 0)
    {
        code = CheckDisplayName(displayName);
        ShowAs(present->NodeName(), code > eKW_ACC_WARNING ? QString() : displayName);
    }
    else
    {
        code = CheckNew(name, displayName, KeyOf(element));
        code = code > eKW_ACC_WARNING ? code
               : recall.MayCreate(GetNodesPerItem())
                   ? InsertInternal(name, displayName, KeyOf(element), false, false)
                   : KW_ACCEPTANCE{eKW_ACC_CONTAINER_FULL};
    }
    if (code > eKW_ACC_WARNING)
    {
        recall.Skip(
            *this,
            QStringLiteral("Item \"%1\" skipped (%2)").arg(name, KW_GetAcceptanceText(code)));
        return;
    }
    ItemByName(name)->DeSerialize(element, recall);
}

void CDbPgMapBase::ShowAs(const QString& name, const QString& displayName)
{
    t_Item item = m_items.at(name);
    if (displayName.isEmpty() || displayName == item.displayName)
    {
        return;
    }
    item.displayName = displayName;
    Move(name, name, item, eWRITEKIND::Undo);
}
