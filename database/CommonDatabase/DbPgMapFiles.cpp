// SPDX-License-Identifier: MIT
#include "DbPgMap.h"
#include "DbSettings.h"
#include "KWAcceptance.h"

namespace
{
const QString kMapItemElement = QStringLiteral("MapItem");
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

void CDbPgMapBase::DeSerialize(const CDbSettingsElement& element, CDbRecall& recall)
{
    RemoveAllItems();
    for (auto child = element.FirstChild(); !child.IsNull(); child = child.Next())
    {
        if (child.Kind() == kMapItemElement)
        {
            DeSerializeItem(child, recall);
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

void CDbPgMapBase::DeSerializeItem(const CDbSettingsElement& element, CDbRecall& recall)
{
    const QString name = element.Name().toString();
    bool isNumber = false;
    const INT32 key = element.Attribute(KW_SETTINGS_KEY).toInt(&isNumber);
    const KW_ACCEPTANCE code =
        InsertInternal(name, element.Attribute(KW_SETTINGS_DISPLAY_NAME).toString(),
                       isNumber ? key : -1, false, false);
    if (code > eKW_ACC_WARNING)
    {
        recall.Skip(
            *this,
            QStringLiteral("Item \"%1\" skipped (%2)").arg(name, KW_GetAcceptanceText(code)));
        return;
    }
    ItemByName(name)->DeSerialize(element, recall);
}
